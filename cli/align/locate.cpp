#include <array>
#include <limits>
#include <numeric>

#include "cli/align/ags_result.h"
#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/align/swapped_points.h"
#include "cli/input/carried_columns.h"
#include "cli/input/list_notes.h"
#include "cli/output/csv_text.h"
#include "cli/output/progress.h"
#include "cli/output/text_buffer.h"
#include "cli/parallel/ordered_workers.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/point_list.h"
#include "velmora/lists/repeated_ids.h"
#include "velmora/portability.h"
#include "velmora/text/fixed_digits.h"

namespace velmora::cli {
namespace {

// --- a row of the result

// A number, or an empty place.
struct Value {
  bool given;
  double number;
};
struct Station : Value {
  bool km;
};
// The side of an offset.
struct Side : Value {};
// An offset with its side, in the table alone.
struct OffsetAndSide : Value {};

// Calls row->Add(key, title, right, value) for each column in order; key and title as in Column. `placing`
// is ignored for a row that is not a point.
template <class Row>
void AddColumns(const ListedPoint& point, const Placing& placing, bool km, Row* row) {
  const bool is_point = point.problem.empty();
  const bool found = is_point && HasPlace(placing.status);
  const Value offset{found, placing.offset};
  const Value profile{is_point && placing.profile_level, placing.profile_level.value_or(0)};
  const Value level{is_point && point.level, point.level.value_or(0)};
  std::string unreadable;
  if (!is_point) unreadable = "unreadable row (line " + std::to_string(point.line) + "): " + point.problem;
  row->Add("id", "id", false, point.id);
  row->Add("northing", "northing", true, Value{is_point, point.northing});
  row->Add("easting", "easting", true, Value{is_point, point.easting});
  row->Add("station", "station", true, Station{{found, placing.station}, km});
  row->Add("offset", "", false, offset);
  row->Add("side", "", false, Side{offset});
  row->Add("", "offset", true, OffsetAndSide{offset});
  row->Add("profile_level", "profile", true, profile);
  row->Add("level", "level", true, level);
  row->Add("difference", "diff", true, Value{profile.given && level.given, level.number - profile.number});
  row->Add("status", "status", false, is_point ? std::string_view(StatusText(placing.status)) : unreadable);
  row->Add("line", "", false, point.line);
}

// The columns alone.
struct ColumnRow {
  template <class AnyValue>
  void Add(const char* key, const char* title, bool right, const AnyValue&) {
    columns.push_back({key, title, right});
  }
  std::vector<Column> columns;
};

// The values as cells.
class CellRow {
 public:
  template <class AnyValue>
  void Add(const char*, const char*, bool, const AnyValue& value) {
    cells.push_back(CellOf(value));
  }
  std::vector<Cell> cells;

 private:
  static Cell CellOf(std::string_view text) { return std::string(text); }
  static Cell CellOf(std::int64_t integer) { return integer; }
  static Cell CellOf(Value value) { return value.given ? Cell(Number{value.number}) : Cell(); }
  static Cell CellOf(Station station) {
    return station.given ? StationCell(station.number, station.km) : Cell();
  }
  static Cell CellOf(Side offset) {
    return offset.given ? Cell(std::string(OffsetSide(offset.number))) : Cell();
  }
  static Cell CellOf(OffsetAndSide offset) { return offset.given ? Cell(OffsetText(offset.number)) : Cell(); }
};

// With four decimals. One function for all columns, so that it stays in the first cache.
VELMORA_NEVER_INLINE char* PutNumber(double number, char decimal_sign, char* at) {
  return PutCsvNumber(number, 3, decimal_sign, at);
}

// The values as lines of CSV, without cells in between: most of the time of a large list is spent here.
class CsvRows {
 public:
  CsvRows(const CsvDialect& dialect, TextBuffer* text) : dialect_(dialect), text_(text), at_(text->Begin()) {}
  void Carry(std::string_view field) { Put(field); }
  template <class AnyValue>
  void Add(const char*, const char*, bool, const AnyValue& value) {
    Put(value);
  }
  void EndRow() {
    --at_;
    at_ = std::copy(dialect_.line_end.begin(), dialect_.line_end.end(), at_);
  }
  void Finish() { text_->Finish(at_); }

 private:
  // Room for all numbers of a row, which each text leaves behind it: a row begins with its id.
  static constexpr size_t kNumbers = 8 * (kLongestCsvNumber + 1);

  void End() { *at_++ = dialect_.separator; }
  void Put(std::string_view text) {
    at_ = text_->Room(LongestCsvText(text) + kNumbers, at_);
    at_ = PutCsvText(text, dialect_, at_);
    End();
  }
  void Put(std::int64_t integer) {
    at_ += fixed_digits::WriteInteger(static_cast<std::uint64_t>(integer), at_);
    End();
  }
  void Put(Value value) {
    if (value.given) at_ = PutNumber(value.number, dialect_.decimal_sign, at_);
    End();
  }
  void Put(Station station) {
    if (station.given && station.km)
      Put(StationText(station.number, true));
    else
      Put(static_cast<Value>(station));
  }
  void Put(Side offset) { Put(offset.given ? OffsetSide(offset.number) : std::string_view()); }
  void Put(OffsetAndSide) {}

  const CsvDialect& dialect_;
  TextBuffer* text_;
  char* at_;
};

std::vector<Column> LocateColumns() {
  ColumnRow row;
  AddColumns({}, {}, false, &row);
  for (Column& column : row.columns)
    if (column.key == "status") column.usual = StatusText(PlaceStatus::kOn);
  return std::move(row.columns);
}

// --- the command

// The number of rows of each status, for the line at the end.
class Tally {
 public:
  void Add(PlaceStatus status) { ++placed_[static_cast<size_t>(status)]; }
  void AddUnreadable() { ++unreadable_; }
  void Add(const Tally& other) {
    for (size_t i = 0; i < placed_.size(); ++i) placed_[i] += other.placed_[i];
    unreadable_ += other.unreadable_;
  }
  std::int64_t Unreadable() const { return unreadable_; }
  std::int64_t Points() const { return std::accumulate(placed_.begin(), placed_.end(), std::int64_t{0}); }

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
  std::array<std::int64_t, kPlaceStatuses> placed_{};
  std::int64_t unreadable_ = 0;
};

// Some thousand rows, from reading to writing. Its memory is used again.
struct Block {
  Block(const PlanBounds& bounds, const ListLayout& layout)
      : carried(layout.carried.size()), swapped(bounds) {}
  void Clear(const PlanBounds& bounds) {
    points.clear();
    carried.Clear();
    swapped = SwappedPoints(bounds);
    tally = {};
    corrections = {};
  }

  RowBlock rows;
  std::uint64_t consumed = 0;  // bytes of the list, through this block
  std::vector<ListedPoint> points;
  CarriedFields carried;
  std::vector<Placing> placings;  // of each row, also of those that are not points
  TextBuffer csv;                 // the rows' text, when CSV is wanted
  SwappedPoints swapped;
  Tally tally;
  Corrections corrections;
};

// Whether the result leaves the row out: a point that is not inside the area that was asked for.
bool IsLeftOut(const LocateOptions& options, const ListedPoint& point, const Placing& placing) {
  if (options.keep_outside || !(options.area || options.offsets) || !point.problem.empty()) return false;
  return placing.status == PlaceStatus::kOutsideArea || placing.status == PlaceStatus::kBeforeStart ||
         placing.status == PlaceStatus::kBeyondEnd || placing.status == PlaceStatus::kNothing;
}

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
      block->swapped.Add(point.line, point.northing, point.easting);
      block->tally.Add(placing.status);
      block->corrections.Add(point.line, point.northing, point.easting, placing, &placer);
    } else {
      block->tally.AddUnreadable();
    }
    if (!rows || IsLeftOut(options, point, placing)) continue;
    for (size_t column = 0; column < block->carried.Columns(); ++column)
      rows->Carry(block->carried.Field(i, column));
    AddColumns(point, placing, options.output.km, &*rows);
    rows->EndRow();
  }
  if (rows) rows->Finish();
}

// Writes finished blocks and collects the notes for the end.
class Results {
 public:
  Results(const LocateOptions& options, const AlignmentInput& input, const PlanBounds& bounds,
          const PointList& points)
      : options_(options),
        ags_(AgsResult::IsWanted(options) ? std::optional<AgsResult>({options.points, input.Name()})
                                          : std::nullopt),
        format_(ags_ ? OutputFormat::kTable : options.output.Format()),
        output_(options.output.file, {options.file, FileOfList(options.points)}),
        records_(output_, format_, WithCarried(points.Layout(), LocateColumns())),
        swapped_(bounds),
        progress_("Placing points", points.Size()) {}

  // Null for other formats than CSV.
  const CsvDialect* Csv() const { return DialectOf(format_); }

  void Write(const Block& block) {
    rows_ += block.points.size();
    progress_.Update(block.consumed, rows_);
    swapped_.Add(block.swapped);
    corrections_.Add(block.corrections);
    if (!ids_.IsFull())
      for (const ListedPoint& point : block.points) ids_.Add(point.id, point.line);
    if (tally_.Unreadable() == 0 && block.tally.Unreadable() > 0)
      for (const ListedPoint& point : block.points)
        if (!point.problem.empty()) {
          first_problem_ = point;
          break;
        }
    tally_.Add(block.tally);
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
        row.cells.emplace_back(std::string(block.carried.Field(i, column)));
      AddColumns(block.points[i], placing, options_.output.km, &row);
      records_.Row(row.cells);
    }
  }

  // `notes` are on the list as a whole.
  void Finish(const Findings& notes) {
    if (ags_) {
      ags_->Write(output_);
    } else {
      records_.Finish();
      if (format_ == OutputFormat::kTable) output_.Write("\n" + tally_.Text() + "\n");
    }
    output_.Finish();
    progress_.Clear();
    WarnOf(options_.points, notes);
    WarnOf(options_.points, ids_.Note());
    if (const auto note = corrections_.Note(options_.points, options_.output.km)) Warn(*note);
    swapped_.Report(options_.points, options_.list);
    if (tally_.Unreadable() == 0 && swapped_.AreMost()) throw ExitWith{1};
    if (tally_.Unreadable() == 0) return;
    PrintError(At(options_.points, first_problem_.line,
                  first_problem_.problem + "; " + std::to_string(tally_.Unreadable()) +
                      (tally_.Unreadable() == 1 ? " row was" : " rows were") +
                      " not placed; correct the list and run again"));
    throw ExitWith{1};
  }

 private:
  const LocateOptions& options_;
  std::optional<AgsResult> ags_;
  OutputFormat format_;  // without ags_
  OutputFile output_;
  RecordWriter records_;
  SwappedPoints swapped_;
  RepeatedIds ids_;
  Tally tally_;
  Corrections corrections_;
  ListedPoint first_problem_;
  Progress progress_;
  std::uint64_t rows_ = 0;
};

}  // namespace

std::optional<StationArea> AreaOf(const LocateOptions& options) {
  if (!options.area && !options.offsets) return std::nullopt;
  constexpr double kNoLimit = std::numeric_limits<double>::infinity();
  const Limits stations = options.area.value_or(Limits{-kNoLimit, kNoLimit});
  const Limits offsets = options.offsets.value_or(Limits{-kNoLimit, kNoLimit});
  return StationArea{stations.low, stations.high, offsets.low, offsets.high};
}

void AlignLocate(const LocateOptions& options) {
  AlignmentInput input;
  if (options.file == "-" && options.points == "-")
    throw WrongUsage("only one of FILE and --points can be standard input");
  ReadAlignment(options.file, &input);
  RequirePlan(input);
  PointList points(options.points, options.list);
  WarnOf(options.points, points.TakeNotes());
  const PlanBounds bounds = MeasurePlan(input.plan).bounds;
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
