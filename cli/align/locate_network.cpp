#include "cli/align/commands.h"
#include "cli/align/locate_notes.h"
#include "cli/align/locate_rows.h"
#include "cli/align/network_input.h"
#include "cli/align/placing.h"
#include "cli/input/list_input.h"
#include "cli/input/ordered_workers.h"
#include "cli/output/ending.h"
#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/point_list.h"
#include "velmora/locator/network.h"

namespace velmora::cli {
namespace {

// A row of the result.
struct PlacedRow {
  size_t point;
  std::string_view road;  // its name; empty where there is none
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
      bounds_.Include(MeasurePlan(road.plan).bounds);
      plans.push_back(std::move(road.plan));
    }
    network_.emplace(plans, options.threads);
  }
  const BoundingBox& Bounds() const { return bounds_; }

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
        rows->push_back({i, one.name, placing});
      };
      if (!points[i].problem.empty() || road[i] < 0)
        rows->push_back({i, {}, {}});
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
  BoundingBox bounds_ = kEmptyBounds;
  std::optional<Network> network_;
};

struct NetworkBlock {
  NetworkBlock(const BoundingBox& bounds, const ListLayout& layout)
      : carried(layout.carried.size()), notes(bounds) {}

  RowBlock lines;
  std::uint64_t consumed = 0;  // bytes of the list, through this block
  std::vector<ListedPoint> points;
  CarriedFields carried;
  std::vector<PlacedRow> rows;
  TextBuffer csv;  // the rows' text, when CSV is wanted
  BlockNotes notes;
};

// Calls row_of() for a writer of each row that is listed, and end(row) after it.
template <class RowOf, class End>
void ListRows(const LocateOptions& options, const NetworkBlock& block, RowOf row_of, End end) {
  for (const PlacedRow& placed : block.rows) {
    const ListedPoint& point = block.points[placed.point];
    if (IsLeftOut(options, point, placed.placing)) continue;
    auto&& row = row_of();
    for (size_t column = 0; column < block.carried.Columns(); ++column)
      row.Carry(block.carried.Field(placed.point, column));
    AddColumns<true>(point, placed.placing, placed.road, options.output.km, &row);
    end(row);
  }
}

// Reads a block's points, places them and formats the rows of CSV; runs in any thread.
void PlaceOnNetwork(const LocateOptions& options, const PlacedNetwork& network, const ListLayout& layout,
                    const CsvDialect* csv, NetworkBlock* block) {
  PointsOfBlock(block->lines, layout, &block->points, &block->carried);
  network.Place(block->points, &block->rows, &block->notes.corrections);
  for (const ListedPoint& point : block->points)
    if (point.problem.empty()) block->notes.swapped.Add(point.line, point.northing, point.easting);
  for (const PlacedRow& row : block->rows) {
    if (block->points[row.point].problem.empty())
      block->notes.tally.Add(row.placing.status);
    else
      block->notes.tally.AddUnreadable();
  }
  if (csv == nullptr) return;
  CsvRows rows(*csv, &block->csv);
  ListRows(
      options, *block, [&]() -> CsvRows& { return rows; }, [](CsvRows& row) { row.EndRow(); });
  rows.Finish();
}

// Writes finished blocks.
class NetworkResults {
 public:
  NetworkResults(const LocateOptions& options, const std::vector<std::string>& roads,
                 const BoundingBox& bounds, const PointList& points)
      : options_(options),
        format_(options.output.Format()),
        output_(options.output.file, Inputs(options, roads)),
        records_(output_, format_, WithCarried(points.Layout(), LocateColumns<true>())),
        notes_(options, bounds),
        progress_("Placing points", points.Size()) {}

  // Null for other formats than CSV.
  const CsvDialect* Csv() const { return DialectOf(format_); }

  void Write(const NetworkBlock& block) {
    notes_.Add(block.points, block.notes);
    progress_.Update(block.consumed, notes_.Points());
    if (Csv() != nullptr)
      output_.Write(block.csv.Text());
    else
      ListRows(
          options_, block, [] { return CellRow(); }, [&](CellRow& row) { records_.Row(row.cells); });
  }

  void Finish(const Findings& of_list) {
    records_.Finish();
    if (format_ == OutputFormat::kTable) output_.Write("\n" + notes_.TallyText() + "\n");
    output_.Finish();
    progress_.Clear();
    notes_.Report(of_list);
  }

 private:
  static std::vector<std::string> Inputs(const LocateOptions& options, std::vector<std::string> files) {
    files.push_back(FileOfList(options.points));
    return files;
  }

  const LocateOptions& options_;
  OutputFormat format_;
  OutputFile output_;
  RecordWriter records_;
  LocateNotes notes_;
  Progress progress_;
};

void RefuseWhatNeedsOneRoad(const LocateOptions& options) {
  if (options.mode != 0)
    throw WrongUsage("--mode applies to one road; omit it with several roads and with --within");
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
    PlaceOnNetwork(options, network, layout, results.Csv(), block);
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
