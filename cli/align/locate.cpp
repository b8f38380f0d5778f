#include "cli/align/ags_result.h"
#include "cli/align/commands.h"
#include "cli/align/locate_notes.h"
#include "cli/align/locate_rows.h"
#include "cli/align/placing.h"
#include "cli/input/list_input.h"
#include "cli/input/ordered_workers.h"
#include "cli/output/progress.h"
#include "velmora/alignment/measures.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/point_list.h"

namespace velmora::cli {
namespace {

// Some thousand rows, from reading to writing. Its memory is used again.
struct Block {
  Block(const BoundingBox& bounds, const ListLayout& layout)
      : carried(layout.carried.size()), notes(bounds) {}
  void Clear(const BoundingBox& bounds) {
    points.clear();
    carried.Clear();
    notes = BlockNotes(bounds);
  }

  RowBlock rows;
  std::uint64_t consumed = 0;  // bytes of the list, through this block
  std::vector<ListedPoint> points;
  CarriedFields carried;
  std::vector<Placing> placings;  // of each row, also of those that are not points
  TextBuffer csv;                 // the rows' text, when CSV is wanted
  BlockNotes notes;
};

// Reads a block's points, places them and formats the rows of CSV (`csv`, null for other formats); runs in
// any thread.
void PlaceBlock(const LocateOptions& options, const Placer& placer, const ListLayout& layout,
                const CsvDialect* csv, Block* block) {
  constexpr size_t kShortRow = 24;
  block->points.reserve(block->rows.bytes.size() / kShortRow);
  PointsOfBlock(block->rows, layout, &block->points, &block->carried);
  const size_t count = block->points.size();
  std::vector<double> northing(count);
  std::vector<double> easting(count);
  for (size_t i = 0; i < count; ++i) {
    northing[i] = block->points[i].northing;
    easting[i] = block->points[i].easting;
  }
  block->placings.resize(count);
  placer.Place(northing.data(), easting.data(), count, block->placings.data());
  std::optional<CsvRows> rows;
  if (csv != nullptr) rows.emplace(*csv, &block->csv);
  for (size_t i = 0; i < count; ++i) {
    const ListedPoint& point = block->points[i];
    const Placing& placing = block->placings[i];
    if (point.problem.empty()) {
      block->notes.swapped.Add(point.line, point.northing, point.easting);
      block->notes.tally.Add(placing.status);
      block->notes.corrections.Add(point.line, point.northing, point.easting, placing, &placer);
    } else {
      block->notes.tally.AddUnreadable();
    }
    if (!rows || IsLeftOut(options, point, placing)) continue;
    for (size_t column = 0; column < block->carried.Columns(); ++column)
      rows->Carry(block->carried.Field(i, column));
    AddColumns<false>(point, placing, {}, options.output.km, &*rows);
    rows->EndRow();
  }
  if (rows) rows->Finish();
}

// Writes finished blocks.
class Results {
 public:
  Results(const LocateOptions& options, const AlignmentInput& input, const BoundingBox& bounds,
          const PointList& points)
      : options_(options),
        ags_(AgsResult::IsWanted(options) ? std::optional<AgsResult>({options.points, input.Name()})
                                          : std::nullopt),
        format_(ags_ ? OutputFormat::kTable : options.output.Format()),
        output_(options.output.file, {options.file, FileOfList(options.points)}),
        records_(output_, format_, WithCarried(points.Layout(), LocateColumns<false>())),
        notes_(options, bounds),
        progress_("Placing points", points.Size()) {}

  // Null for other formats than CSV.
  const CsvDialect* Csv() const { return DialectOf(format_); }

  void Write(const Block& block) {
    notes_.Add(block.points, block.notes);
    progress_.Update(block.consumed, notes_.Points());
    if (Csv() != nullptr) {
      output_.Write(block.csv.Text());
      return;
    }
    for (size_t i = 0; i < block.points.size(); ++i) {
      const Placing& placing = block.placings[i];
      if (IsLeftOut(options_, block.points[i], placing)) continue;
      if (ags_) {
        if (block.points[i].problem.empty() && HasPlace(placing.status))
          ags_->Add({block.points[i].line, placing.station, placing.offset});
        continue;
      }
      CellRow row;
      for (size_t column = 0; column < block.carried.Columns(); ++column)
        row.Carry(block.carried.Field(i, column));
      AddColumns<false>(block.points[i], placing, {}, options_.output.km, &row);
      records_.Row(row.cells);
    }
  }

  void Finish(const Findings& of_list) {
    if (ags_) {
      ags_->Write(output_);
    } else {
      records_.Finish();
      if (format_ == OutputFormat::kTable) output_.Write("\n" + notes_.TallyText() + "\n");
    }
    output_.Finish();
    progress_.Clear();
    notes_.Report(of_list);
  }

 private:
  const LocateOptions& options_;
  std::optional<AgsResult> ags_;
  OutputFormat format_;  // without ags_
  OutputFile output_;
  RecordWriter records_;
  LocateNotes notes_;
  Progress progress_;
};

}  // namespace

void AlignLocate(const LocateOptions& options) {
  AlignmentInput input;
  RequireOneStandardInput(options.file, options.points, "--points");
  ReadPlan(options.file, &input);
  PointList points(options.points, options.list);
  WarnOf(options.points, points.TakeNotes());
  const BoundingBox bounds = MeasurePlan(input.plan).bounds;
  Results results(options, input, bounds, points);
  const Placer placer(&input, options.mode, AreaOf(options), options.max_offset);
  const ListLayout& layout = points.Layout();
  OrderedWorkers<Block> workers(placer.IsThreadSafe() ? options.threads : 1, [&](Block* block) {
    PlaceBlock(options, placer, layout, results.Csv(), block);
  });
  auto block = std::make_unique<Block>(bounds, layout);
  while (points.NextBlock(&block->rows)) {
    block->consumed = points.Consumed();
    workers.Put(std::move(block));
    if (workers.Full()) {
      block = workers.Take();
      results.Write(*block);
      block->Clear(bounds);
    } else {
      block = std::make_unique<Block>(bounds, layout);
    }
  }
  while (!workers.Empty()) results.Write(*workers.Take());
  results.Finish(points.TakeNotes());
}

}  // namespace velmora::cli
