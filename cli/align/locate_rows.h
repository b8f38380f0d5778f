// A row of the result of `align locate`.
#ifndef VELMORA_CLI_ALIGN_LOCATE_ROWS_H_
#define VELMORA_CLI_ALIGN_LOCATE_ROWS_H_

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/output/csv_text.h"
#include "cli/output/records.h"
#include "velmora/alignment/station_text.h"
#include "velmora/lists/point_list.h"
#include "velmora/portability.h"
#include "velmora/text/fixed_digits.h"
#include "velmora/text/text_buffer.h"

namespace velmora::cli {

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
// Text, or an empty place.
struct Name {
  std::string_view text;
};
// One of our own texts, which CSV never quotes.
struct Word {
  std::string_view text;
};

// Calls row->Add(key, title, right, value) for each column in order; key and title as in Column. `placing`
// is ignored for a row that is not a point; `road` is a column with kRoad only.
template <bool kRoad, class Row>
void AddColumns(const ListedPoint& point, const Placing& placing, std::string_view road, bool km, Row* row) {
  const bool is_point = point.problem.empty();
  const bool found = is_point && HasPlace(placing.status);
  const Value offset{found, placing.offset};
  const Value profile{is_point && placing.profile_level, placing.profile_level.value_or(0)};
  const Value level{is_point && point.level, point.level.value_or(0)};
  row->Add("id", "id", false, point.id);
  row->Add("northing", "northing", true, Value{is_point, point.northing});
  row->Add("easting", "easting", true, Value{is_point, point.easting});
  if constexpr (kRoad) row->Add("road", "road", false, Name{is_point ? road : std::string_view()});
  row->Add("station", "station", true, Station{{found, placing.station}, km});
  row->Add("offset", "", false, offset);
  row->Add("side", "", false, Side{offset});
  row->Add("", "offset", true, OffsetAndSide{offset});
  row->Add("profile_level", "profile", true, profile);
  row->Add("level", "level", true, level);
  row->Add("difference", "diff", true, Value{profile.given && level.given, level.number - profile.number});
  if (is_point)
    row->Add("status", "status", false, Word{StatusText(placing.status)});
  else
    row->Add("status", "status", false,
             "unreadable row (line " + std::to_string(point.line) + "): " + point.problem);
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
  void Carry(std::string_view field) { cells.emplace_back(std::string(field)); }
  std::vector<Cell> cells;

 private:
  static Cell CellOf(std::string_view text) { return std::string(text); }
  static Cell CellOf(Word word) { return CellOf(word.text); }
  static Cell CellOf(Name name) { return name.text.empty() ? Cell() : CellOf(name.text); }
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
VELMORA_NEVER_INLINE inline char* PutNumber(double number, char decimal_sign, char* at) {
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
  void Put(Name name) { Put(name.text); }
  void Put(Word word) {
    at_ = text_->Room(word.text.size() + kNumbers, at_);
    at_ = std::copy(word.text.begin(), word.text.end(), at_);
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
  void Put(Side offset) { Put(Word{offset.given ? OffsetSide(offset.number) : std::string_view()}); }
  void Put(OffsetAndSide) {}

  const CsvDialect& dialect_;
  TextBuffer* text_;
  char* at_;
};

template <bool kRoad>
std::vector<Column> LocateColumns() {
  ColumnRow row;
  AddColumns<kRoad>({}, {}, {}, false, &row);
  for (Column& column : row.columns)
    if (column.key == "status") column.usual = StatusText(PlaceStatus::kOn);
  return std::move(row.columns);
}

inline std::optional<StationArea> AreaOf(const LocateOptions& options) {
  if (!options.area && !options.offsets) return std::nullopt;
  constexpr double kNoLimit = std::numeric_limits<double>::infinity();
  const Limits stations = options.area.value_or(Limits{-kNoLimit, kNoLimit});
  const Limits offsets = options.offsets.value_or(Limits{-kNoLimit, kNoLimit});
  return StationArea{stations.low, stations.high, offsets.low, offsets.high};
}

// Whether the result leaves the row out: a point that is not inside the area that was asked for.
inline bool IsLeftOut(const LocateOptions& options, const ListedPoint& point, const Placing& placing) {
  if (options.keep_outside || !(options.area || options.offsets) || !point.problem.empty()) return false;
  return placing.status == PlaceStatus::kOutsideArea || placing.status == PlaceStatus::kBeforeStart ||
         placing.status == PlaceStatus::kBeyondEnd || placing.status == PlaceStatus::kNothing;
}

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_LOCATE_ROWS_H_
