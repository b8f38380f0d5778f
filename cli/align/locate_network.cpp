#include <array>
#include <limits>

#include "cli/align/commands.h"
#include "cli/align/network_input.h"
#include "cli/align/placing.h"
#include "cli/align/swapped_points.h"
#include "cli/input/carried_columns.h"
#include "cli/input/list_notes.h"
#include "cli/output/ending.h"
#include "cli/output/progress.h"
#include "cli/parallel/ordered_workers.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/point_list.h"
#include "velmora/lists/repeated_ids.h"
#include "velmora/locator/network.h"

namespace velmora::cli {
namespace {

const std::vector<Column> kColumns = {
    {"id", "id"},
    {"northing", "northing", true},
    {"easting", "easting", true},
    {"road", "road"},
    {"station", "station", true},
    {"offset", ""},
    {"side", ""},
    {"", "offset", true},
    {"profile_level", "profile", true},
    {"level", "level", true},
    {"difference", "diff", true},
    {"status", "status", false, StatusText(PlaceStatus::kOn)},
    {"line", ""},
};

Cell NumberOrNothing(bool given, double value) { return given ? Cell(Number{value}) : Cell(); }

void AddCells(const ListedPoint& point, const Placing& placing, const std::string* road, bool km,
              std::vector<Cell>* cells) {
  const bool is_point = point.problem.empty();
  const bool found = is_point && HasPlace(placing.status);
  const double profile = placing.profile_level.value_or(0);
  const double level = point.level.value_or(0);
  const bool has_level = is_point && point.level;
  cells->insert(
      cells->end(),
      {point.id, NumberOrNothing(is_point, point.northing), NumberOrNothing(is_point, point.easting),
       road != nullptr ? Cell(*road) : Cell(), found ? StationCell(placing.station, km) : Cell(),
       NumberOrNothing(found, placing.offset), found ? Cell(std::string(OffsetSide(placing.offset))) : Cell(),
       found ? Cell(OffsetText(placing.offset)) : Cell(),
       NumberOrNothing(placing.profile_level.has_value(), profile), NumberOrNothing(has_level, level),
       NumberOrNothing(has_level && placing.profile_level, level - profile),
       is_point ? std::string(StatusText(placing.status))
                : "unreadable row (line " + std::to_string(point.line) + "): " + point.problem,
       point.line});
}

// --- placing

// A row of the result.
struct PlacedRow {
  size_t point;
  const std::string* road = nullptr;  // its name; null where there is none
  Placing placing;
};

// The roads of a run, searched together; for any number of threads.
class PlacedNetwork {
 public:
  PlacedNetwork(std::vector<NamedRoad> roads, const LocateOptions& options) : within_(options.within) {
    std::vector<std::vector<kovltype>> plans;
    for (NamedRoad& road : roads) {
      roads_.push_back({std::move(road.name), Placer(road.plan, road.profile, AreaOf(options),
                                                     within_.value_or(options.max_offset))});
      const PlanBounds bounds = MeasurePlan(road.plan).bounds;
      bounds_ = plans.empty() ? bounds
                              : PlanBounds{std::min(bounds_.min_northing, bounds.min_northing),
                                           std::max(bounds_.max_northing, bounds.max_northing),
                                           std::min(bounds_.min_easting, bounds.min_easting),
                                           std::max(bounds_.max_easting, bounds.max_easting)};
      plans.push_back(std::move(road.plan));
    }
    network_.emplace(plans, options.threads);
  }
  const PlanBounds& Bounds() const { return bounds_; }

  // Appends the rows of the points, in their order.
  void Place(const std::vector<ListedPoint>& points, std::vector<PlacedRow>* rows,
             Corrections* corrections) const {
    const size_t count = points.size();
    std::vector<double> x(count), y(count), station(count), offset(count);
    std::vector<int> road(count);
    for (size_t i = 0; i < count; ++i) {
      x[i] = points[i].northing;
      y[i] = points[i].easting;
    }
    network_->Vagstv(x.data(), y.data(), count, road.data(), station.data(), offset.data());
    for (size_t i = 0; i < count; ++i) {
      const auto add = [&](int number, double sek, double avst) {
        const Road& one = roads_[static_cast<size_t>(number)];
        const Placing placing = one.placer.PlaceFound(x[i], y[i], sek, avst);
        corrections->Add(points[i].line, x[i], y[i], placing, &one.placer);
        rows->push_back({i, &one.name, placing});
      };
      if (!points[i].problem.empty() || road[i] < 0)
        rows->push_back({i, nullptr, {}});
      else if (!within_ || std::fabs(offset[i]) > *within_)
        add(road[i], station[i], offset[i]);
      else
        for (const NetworkPlace& place : network_->Within(x[i], y[i], *within_))
          add(place.road, place.sek, place.avst);
    }
  }

 private:
  struct Road {
    std::string name;
    Placer placer;
  };
  std::optional<double> within_;
  std::vector<Road> roads_;
  PlanBounds bounds_{};
  std::optional<Network> network_;
};

// --- the command

struct NetworkBlock {
  NetworkBlock(const PlanBounds& bounds, const ListLayout& layout)
      : carried(layout.carried.size()), swapped(bounds) {}

  RowBlock lines;
  std::uint64_t consumed = 0;  // bytes of the list, through this block
  std::vector<ListedPoint> points;
  CarriedFields carried;
  std::vector<PlacedRow> rows;
  SwappedPoints swapped;
  Corrections corrections;
};

// Writes finished blocks and collects the notes for the end.
class NetworkResults {
 public:
  NetworkResults(const LocateOptions& options, const std::vector<std::string>& roads,
                 const PlanBounds& bounds, const PointList& points)
      : options_(options),
        format_(options.output.Format()),
        output_(options.output.file, Inputs(options, roads)),
        records_(output_, format_, WithCarried(points.Layout(), kColumns)),
        swapped_(bounds),
        progress_("Placing points", points.Size()) {}

  void Write(const NetworkBlock& block) {
    points_ += block.points.size();
    progress_.Update(block.consumed, points_);
    swapped_.Add(block.swapped);
    corrections_.Add(block.corrections);
    if (!ids_.IsFull())
      for (const ListedPoint& point : block.points) ids_.Add(point.id, point.line);
    for (const PlacedRow& row : block.rows) {
      const ListedPoint& point = block.points[row.point];
      if (!point.problem.empty()) {
        if (unreadable_++ == 0) first_problem_ = point;
      } else {
        ++placed_[static_cast<size_t>(row.placing.status)];
        if (IsLeftOut(row.placing.status)) continue;
      }
      std::vector<Cell> cells;
      for (size_t column = 0; column < block.carried.Columns(); ++column)
        cells.emplace_back(std::string(block.carried.Field(row.point, column)));
      AddCells(point, row.placing, row.road, options_.output.km, &cells);
      records_.Row(cells);
    }
  }

  // `notes` are on the list as a whole.
  void Finish(const Findings& notes) {
    records_.Finish();
    if (format_ == OutputFormat::kTable) output_.Write("\n" + Counts() + "\n");
    output_.Finish();
    progress_.Clear();
    WarnOf(options_.points, notes);
    WarnOf(options_.points, ids_.Note());
    if (const auto note = corrections_.Note(options_.points, options_.output.km)) Warn(*note);
    swapped_.Report(options_.points, options_.list);
    if (unreadable_ == 0 && swapped_.AreMost()) throw ExitWith{1};
    if (unreadable_ == 0) return;
    PrintError(At(options_.points, first_problem_.line,
                  first_problem_.problem + "; " + std::to_string(unreadable_) +
                      (unreadable_ == 1 ? " row was" : " rows were") +
                      " not placed; correct the list and run again"));
    throw ExitWith{1};
  }

 private:
  static std::vector<std::string> Inputs(const LocateOptions& options, std::vector<std::string> files) {
    files.push_back(FileOfList(options.points));
    return files;
  }
  // A point that is not inside the area that was asked for.
  bool IsLeftOut(PlaceStatus status) const {
    return !options_.keep_outside && (options_.area || options_.offsets) &&
           (status == PlaceStatus::kOutsideArea || !HasPlace(status));
  }
  std::string Counts() const {
    std::string parts;
    for (size_t i = 0; i < placed_.size(); ++i)
      if (placed_[i] > 0)
        parts += ", " + std::to_string(placed_[i]) + " " + StatusText(static_cast<PlaceStatus>(i));
    if (unreadable_ > 0) parts += ", " + std::to_string(unreadable_) + " unreadable";
    return std::to_string(points_) + (points_ == 1 ? " point" : " points") +
           (parts.empty() ? "" : ": " + parts.substr(2));
  }

  const LocateOptions& options_;
  OutputFormat format_;
  OutputFile output_;
  RecordWriter records_;
  SwappedPoints swapped_;
  RepeatedIds ids_;
  Corrections corrections_;
  std::array<std::int64_t, kPlaceStatuses> placed_{};
  std::int64_t unreadable_ = 0;
  ListedPoint first_problem_;
  Progress progress_;
  std::uint64_t points_ = 0;
};

void RefuseWhatNeedsOneRoad(const LocateOptions& options) {
  if (options.mode != 0)
    throw WrongUsage("--mode is about one road; omit it with several roads and with --within");
  if (EndingOf(options.output.file) == ".ags")
    throw Refusal(At(options.output.file,
                     "an AGS file gets the places on one road; place the points on one road, or write .csv"));
}

}  // namespace

void AlignLocateNetwork(const LocateOptions& options) {
  RefuseWhatNeedsOneRoad(options);
  NetworkInput input = ReadNetwork(options.roads, options.threads);
  PointList points(options.points, options.list);
  WarnOf(options.points, points.TakeNotes());
  const PlacedNetwork network(std::move(input.roads), options);
  NetworkResults results(options, input.files, network.Bounds(), points);
  const ListLayout& layout = points.Layout();
  OrderedWorkers<NetworkBlock> workers(options.threads, [&](NetworkBlock* block) {
    PointsOfBlock(block->lines, layout, &block->points, &block->carried);
    block->lines = {};
    network.Place(block->points, &block->rows, &block->corrections);
    for (const ListedPoint& point : block->points)
      if (point.problem.empty()) block->swapped.Add(point.line, point.northing, point.easting);
  });
  auto block = std::make_unique<NetworkBlock>(network.Bounds(), layout);
  while (points.NextBlock(&block->lines)) {
    block->consumed = points.Consumed();
    if (workers.Full()) results.Write(*workers.Take());
    workers.Put(std::move(block));
    block = std::make_unique<NetworkBlock>(network.Bounds(), layout);
  }
  while (!workers.Empty()) results.Write(*workers.Take());
  results.Finish(points.TakeNotes());
}

}  // namespace velmora::cli
