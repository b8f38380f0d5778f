#include <array>
#include <limits>

#include "cli/align/axis_check.h"
#include "cli/align/commands.h"
#include "cli/align/locate_rows.h"
#include "cli/output/progress.h"
#include "cli/parallel/ordered_workers.h"
#include "cli/terminal/error.h"

namespace velmora::cli {
namespace {

// How the rows turned out, for the line at the end.
class Tally {
 public:
  void Add(PlaceStatus status) { ++placed_[static_cast<size_t>(status)]; }
  void AddUnreadable() { ++unreadable_; }
  void Add(const Tally& other) {
    for (size_t i = 0; i < placed_.size(); ++i) placed_[i] += other.placed_[i];
    unreadable_ += other.unreadable_;
  }
  std::int64_t Unreadable() const { return unreadable_; }

  std::string Text() const {
    std::int64_t rows = unreadable_;
    std::string parts;
    for (size_t i = 0; i < placed_.size(); ++i) {
      rows += placed_[i];
      if (placed_[i] > 0)
        parts += ", " + std::to_string(placed_[i]) + " " + StatusText(static_cast<PlaceStatus>(i));
    }
    if (unreadable_ > 0) parts += ", " + std::to_string(unreadable_) + " unreadable";
    return std::to_string(rows) + (rows == 1 ? " point" : " points") +
           (parts.empty() ? "" : ": " + parts.substr(2));
  }

 private:
  std::array<std::int64_t, 5> placed_{};
  std::int64_t unreadable_ = 0;
};

std::optional<StationArea> AreaOf(const LocateOptions& options) {
  if (!options.area && !options.offsets) return std::nullopt;
  constexpr double kNoLimit = std::numeric_limits<double>::infinity();
  const Range stations = options.area.value_or(Range{-kNoLimit, kNoLimit});
  const Range offsets = options.offsets.value_or(Range{-kNoLimit, kNoLimit});
  return StationArea{stations.low, stations.high, offsets.low, offsets.high};
}

// Some thousand rows on their way through.
struct Block {
  explicit Block(const Box& box) : axes(box) {}

  RowBlock rows;
  std::uint64_t consumed = 0;  // bytes of the list, through this block
  std::vector<ListedPoint> points;
  std::vector<Placing> placings;  // of each point, also of rows that are none
  std::string csv;                // the rows' text, when CSV is wanted
  AxisCheck axes;
  Tally tally;
};

constexpr size_t kUsualResult = 128;  // bytes of a row

// Everything of a block that needs no other block.
void WorkOut(const Placer& placer, const RowLayout& layout, bool csv, bool km, Block* block) {
  constexpr size_t kShortRow = 24;
  block->points.reserve(block->rows.bytes.size() / kShortRow);
  PointsOfBlock(block->rows, layout, &block->points);
  block->rows = {};
  const size_t count = block->points.size();
  std::vector<double> northing(count);
  std::vector<double> easting(count);
  for (size_t i = 0; i < count; ++i) {
    northing[i] = block->points[i].northing;
    easting[i] = block->points[i].easting;
  }
  block->placings.resize(count);
  if (csv) block->csv.reserve(count * kUsualResult);
  placer.Place(northing.data(), easting.data(), count, block->placings.data());
  for (size_t i = 0; i < count; ++i) {
    const ListedPoint& point = block->points[i];
    if (point.problem.empty()) {
      block->axes.Add(point.northing, point.easting);
      block->tally.Add(block->placings[i].status);
    } else {
      block->tally.AddUnreadable();
    }
    if (csv) AppendLocateCsv(point, block->placings[i], km, &block->csv);
  }
}

// Writes finished blocks and keeps what is said at the end.
class Results {
 public:
  Results(const LocateOptions& options, const Box& box, std::uint64_t size)
      : options_(options),
        format_(options.output.Format()),
        sink_(options.output.file, {options.file, options.points}),
        records_(sink_, format_, LocateColumns()),
        axes_(box),
        progress_("Placing points", size) {}

  bool IsCsv() const { return format_ == OutputFormat::kCsv; }

  void Write(const Block& block) {
    rows_ += block.points.size();
    progress_.Update(block.consumed, rows_);
    axes_.Add(block.axes);
    if (tally_.Unreadable() == 0 && block.tally.Unreadable() > 0)
      for (const ListedPoint& point : block.points)
        if (!point.problem.empty()) {
          first_problem_ = point;
          break;
        }
    tally_.Add(block.tally);
    if (IsCsv()) {
      sink_.Write(block.csv);
      return;
    }
    for (size_t i = 0; i < block.points.size(); ++i)
      records_.Row(LocateCells(block.points[i], block.placings[i], options_.output.km));
  }

  void Finish() {
    records_.Finish();
    if (format_ == OutputFormat::kTable) sink_.Write("\n" + tally_.Text() + "\n");
    sink_.Finish();
    if (axes_.LooksSwapped())
      Warn(At(options_.points, "northing and easting look swapped: " + std::to_string(axes_.NearSwapped()) +
                                   " points lie near the road when swapped, " + std::to_string(axes_.Near()) +
                                   " as given; check the titles or the order of the columns"));
    if (tally_.Unreadable() == 0) return;
    Warn(At(options_.points, first_problem_.line,
            first_problem_.problem + "; " + std::to_string(tally_.Unreadable()) +
                (tally_.Unreadable() == 1 ? " row was" : " rows were") + " not placed"));
    throw ExitWith{1};
  }

 private:
  const LocateOptions& options_;
  OutputFormat format_;
  OutputFile sink_;
  RecordWriter records_;
  AxisCheck axes_;
  Tally tally_;
  ListedPoint first_problem_;
  Progress progress_;
  std::uint64_t rows_ = 0;
};

}  // namespace

void AlignLocate(const LocateOptions& options) {
  AlignmentInput input;
  if (options.file == "-" && options.points == "-")
    throw Refusal("only one of FILE and --points can be standard input");
  ReadAlignment(options.file, &input);
  RequirePlan(input);
  PointList points(options.points);
  const Box box = MeasurePlan(input.plan).box;
  Results results(options, box, points.Rows().Size());
  const Placer placer(&input, options.mode, AreaOf(options));
  const RowLayout layout = points.Layout();
  OrderedWorkers<Block> workers(placer.IsThreadSafe() ? options.threads : 1, [&](Block* block) {
    WorkOut(placer, layout, results.IsCsv(), options.output.km, block);
  });
  const auto put = [&](std::unique_ptr<Block> block) {
    block->consumed = points.Rows().Consumed();
    if (workers.Full()) results.Write(*workers.Take());
    workers.Put(std::move(block));
  };

  auto block = std::make_unique<Block>(box);
  // The row that told the columns apart may be a point itself.
  if (ListedPoint first; points.TakeFirst(&first)) {
    block->points.push_back(std::move(first));
    put(std::move(block));
    block = std::make_unique<Block>(box);
  }
  while (points.NextBlock(&block->rows)) {
    put(std::move(block));
    block = std::make_unique<Block>(box);
  }
  while (!workers.Empty()) results.Write(*workers.Take());
  results.Finish();
}

}  // namespace velmora::cli
