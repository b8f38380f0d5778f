#include "velmora/exchange/ags.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"
#include "velmora/text/quoted.h"

namespace velmora::exchange {
namespace {

constexpr size_t kMostRows = 2'000'000;
constexpr size_t kMostFields = 10'000;         // of a line
constexpr size_t kMostOwnFields = 20'000'000;  // of all rows
constexpr size_t kNone = std::string_view::npos;

// One line: its fields as in the file, quotes included.
struct AgsLine {
  std::string_view bytes;  // with its line end
  std::string_view end;    // the line end
  std::vector<std::string_view> fields;
  bool whole = true;  // every quote is closed, and there are not too many fields
};

// Splits at the commas that are outside quotes.
void Split(std::string_view text, AgsLine* line) {
  bool quoted = false;
  size_t start = 0;
  for (size_t i = 0; i <= text.size() && line->fields.size() < kMostFields; ++i) {
    if (i < text.size() && text[i] == '"') quoted = !quoted;
    if (i < text.size() && (quoted || text[i] != ',')) continue;
    line->fields.push_back(text.substr(start, i - start));
    start = i + 1;
  }
  line->whole = !quoted && line->fields.size() < kMostFields;
}

std::string Value(std::string_view field) {
  const size_t first = field.find_first_not_of(" \t");
  if (first == kNone) return {};
  field = field.substr(first, field.find_last_not_of(" \t") + 1 - first);
  const bool quoted = field.size() >= 2 && field.front() == '"' && field.back() == '"';
  if (quoted) field = field.substr(1, field.size() - 2);
  std::string bytes;
  for (size_t i = 0; i < field.size(); ++i) {
    bytes += field[i];
    if (quoted && field[i] == '"' && i + 1 < field.size() && field[i + 1] == '"') ++i;
  }
  std::wstring text;
  AppendDecoded(bytes, TextEncoding::kUtf8, &text);
  return Utf8FromWide(text);
}

// Walks through the lines, telling those of group LOCA from all others.
class AgsReader {
 public:
  explicit AgsReader(std::string_view bytes) : rest_(bytes) {}

  bool Next() {
    if (rest_.empty()) return false;
    const size_t size = std::min(rest_.find('\n'), rest_.size() - 1) + 1;
    line_.bytes = rest_.substr(0, size);
    rest_.remove_prefix(size);
    const size_t length = line_.bytes.find_last_not_of("\r\n") + 1;  // 0 for an empty line
    line_.end = line_.bytes.substr(length);
    std::string_view text = line_.bytes.substr(0, length);
    if (number_++ == 0)
      text.remove_prefix(std::min(text.size(), ByteOrderMark(EncodingFromMark(text)).size()));
    line_.fields.clear();
    kind_.clear();
    // Rows of other groups are not looked at.
    if (!in_group_ && !text.starts_with("\"GROUP\"")) return true;
    Split(text, &line_);
    kind_ = Value(line_.fields[0]);
    if (kind_ == "GROUP") in_group_ = Field(1) == "LOCA";
    if (in_group_ && kind_ == "HEADING") {
      headings_.clear();
      for (const std::string_view field : line_.fields) headings_.push_back(Value(field));
    }
    return true;
  }

  const AgsLine& Line() const { return line_; }
  std::int64_t Number() const { return number_; }
  // Whether it is a line of LOCA of this kind.
  bool Is(std::string_view kind) const { return in_group_ && kind_ == kind; }
  const std::vector<std::string>& Headings() const { return headings_; }
  // The number of a heading's column, from 1; kNone without it.
  size_t Find(std::string_view heading) const {
    const auto found = std::find(headings_.begin(), headings_.end(), heading);
    return found == headings_.end() || found == headings_.begin()
               ? kNone
               : static_cast<size_t>(found - headings_.begin());
  }
  std::string Field(size_t column) const {
    return column < line_.fields.size() ? Value(line_.fields[column]) : std::string();
  }

 private:
  std::string_view rest_;
  AgsLine line_;
  std::int64_t number_ = 0;
  std::string kind_;  // of the line: "DATA"; empty outside LOCA
  bool in_group_ = false;
  std::vector<std::string> headings_;
};

// A number of the row, or the problem.
std::optional<double> NumberOf(const AgsReader& reader, size_t column, AgsRow* row) {
  const std::string text = reader.Field(column);
  const auto number = ParseWholeNumber(WideFromUtf8(text));
  if (!number && row->problem.empty())
    row->problem =
        reader.Headings()[column] + " " + (text.empty() ? "is empty" : Quoted(text) + " is not a number");
  return number;
}

constexpr std::array<std::string_view, 3> kFilled = {"LOCA_ALID", "LOCA_OFFS", "LOCA_CNGE"};
constexpr std::array<std::string_view, 3> kUnits = {"", "m", ""};
constexpr std::array<std::string_view, 3> kTypes = {"X", "2DP", "X"};

class AgsWriter {
 public:
  AgsWriter(const std::string& alignment, const std::vector<AgsRow>& rows, const Sink& sink)
      : alignment_(alignment), rows_(rows), out_(sink) {}

  void Write(std::string_view bytes) {
    AgsReader reader(bytes);
    while (reader.Next()) {
      if (reader.Is("HEADING")) {
        Arrange(reader);
        WriteLine(reader, kFilled, false);
      } else if (reader.Is("UNIT")) {
        WriteLine(reader, kUnits, false);
      } else if (reader.Is("TYPE")) {
        for (size_t i = 0; i < kFilled.size(); ++i)
          if (columns_[i] != kNone && reader.Line().whole) types_[i] = reader.Field(columns_[i]);
        WriteLine(reader, kTypes, false);
      } else if (reader.Is("DATA")) {
        WriteData(reader);
      } else {
        out_ << reader.Line().bytes;
      }
    }
    out_.Flush();
  }

 private:
  // Where the columns are, and where those that are missing come.
  void Arrange(const AgsReader& reader) {
    for (size_t i = 0; i < kFilled.size(); ++i) columns_[i] = reader.Find(kFilled[i]);
    insert_at_ = reader.Headings().size();
    // The standard's headings that follow LOCA_CNGE.
    for (const char* later : {"LOCA_TRAN", "FILE_FSET", "LOCA_NATD", "LOCA_ORID", "LOCA_ORJO", "LOCA_ORCO",
                              "LOCA_CHKG", "LOCA_APPG", "LOCA_PDAT"})
      insert_at_ = std::min(insert_at_, reader.Find(later));
  }

  void WriteData(const AgsReader& reader) {
    const AgsRow* row = at_ < rows_.size() ? &rows_[at_++] : nullptr;
    if (row == nullptr || !row->point.station || !row->point.offset) return WriteLine(reader, {}, false);
    const std::string offset = FormatFixed(*row->point.offset, Decimals(1));
    const std::string station = FormatFixed(*row->point.station, Decimals(2));
    WriteLine(reader, {alignment_, offset, station}, true);
  }

  // Of "2DP"; metres otherwise have three.
  int Decimals(size_t column) const {
    const std::string& type = types_[column];
    return type.size() == 3 && type.ends_with("DP") && type[0] >= '0' && type[0] <= '9' ? type[0] - '0' : 3;
  }

  // With `values` in the columns that are added, and in all three where `fill` is set.
  void WriteLine(const AgsReader& reader, const std::array<std::string_view, 3>& values, bool fill) {
    const std::vector<std::string_view>& fields = reader.Line().fields;
    const bool adds = std::find(columns_.begin(), columns_.end(), kNone) != columns_.end();
    if (!reader.Line().whole || !(adds || fill)) {
      out_ << reader.Line().bytes;
      return;
    }
    // What stands before the first field is a byte-order mark.
    out_ << reader.Line().bytes.substr(0, static_cast<size_t>(fields[0].data() - reader.Line().bytes.data()));
    for (size_t i = 0; i <= std::max(fields.size(), insert_at_); ++i) {
      if (i == insert_at_) {
        for (size_t k = 0; k < kFilled.size(); ++k)
          if (columns_[k] == kNone) WriteField(i, Quote(values[k]));
      }
      if (i >= std::max(fields.size(), insert_at_)) break;
      const auto filled = std::find(columns_.begin(), columns_.end(), i);
      if (fill && filled != columns_.end()) {
        WriteField(i, Quote(values[static_cast<size_t>(filled - columns_.begin())]));
      } else {
        // A short row gets the fields that it lacks.
        WriteField(i, i < fields.size() ? fields[i] : "\"\"");
      }
    }
    out_ << reader.Line().end;
  }

  void WriteField(size_t column, std::string_view text) {
    if (column > 0) out_ << ",";
    out_ << text;
  }

  static std::string Quote(std::string_view value) {
    std::string quoted = "\"";
    for (const char c : value) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
  }

  const std::string& alignment_;
  const std::vector<AgsRow>& rows_;
  TextSink out_;
  std::array<size_t, 3> columns_ = {kNone, kNone, kNone};
  std::array<std::string, 3> types_ = {std::string(kTypes[0]), std::string(kTypes[1]),
                                       std::string(kTypes[2])};
  size_t insert_at_ = 0;
  size_t at_ = 0;  // in rows_
};

}  // namespace

AgsList ReadAgs(std::string_view bytes, const AgsColumns& columns) {
  AgsList list;
  const auto refused = [](std::int64_t line, std::string why) {
    return AgsList{{}, {}, {line, std::move(why)}};
  };
  AgsReader reader(bytes);
  size_t id = kNone;
  size_t easting = kNone;
  size_t northing = kNone;
  size_t level = kNone;
  std::vector<size_t> own;
  size_t own_fields = 0;
  while (reader.Next()) {
    if (reader.Is("HEADING")) {
      if (easting != kNone) return refused(reader.Number(), "this is a second group LOCA");
      if (!reader.Line().whole)
        return refused(reader.Number(), "a quote is not closed, or there are too many fields");
      id = reader.Find("LOCA_ID");
      easting = reader.Find(columns.easting);
      northing = reader.Find(columns.northing);
      level = reader.Find(columns.level);
      if (easting == kNone || northing == kNone) {
        std::string text = "group LOCA has no " + columns.easting + " and " + columns.northing;
        if (reader.Find("LOCA_LOCX") != kNone)
          text += "; if its local grid is that of the road, choose LOCA_LOCX and LOCA_LOCY with --columns";
        return refused(reader.Number(), text);
      }
      for (size_t i = 1; i < reader.Headings().size(); ++i) {
        if (i == id || i == easting || i == northing || i == level) continue;
        own.push_back(i);
        list.own_titles.push_back(reader.Headings()[i]);
      }
    }
    if (!reader.Is("DATA")) continue;
    if (easting == kNone) return refused(reader.Number(), "group LOCA has DATA before its HEADING");
    AgsRow& row = list.rows.emplace_back();
    row.line = reader.Number();
    if (!reader.Line().whole) row.problem = "a quote is not closed, or there are too many fields";
    row.point.id = reader.Field(id);
    row.point.easting = NumberOf(reader, easting, &row).value_or(0);
    row.point.northing = NumberOf(reader, northing, &row).value_or(0);
    if (!reader.Field(level).empty()) row.point.level = NumberOf(reader, level, &row);
    for (const size_t column : own)
      if (column < reader.Line().fields.size()) row.point.own.push_back(reader.Field(column));
    own_fields += row.point.own.size();
    if (list.rows.size() > kMostRows || own_fields > kMostOwnFields)
      return refused(reader.Number(), "has more points than can be read");
  }
  if (easting == kNone) list.problem = {0, "has no group LOCA"};
  return list;
}

void WriteAgs(std::string_view bytes, const std::string& alignment, const std::vector<AgsRow>& rows,
              const Sink& sink) {
  AgsWriter(alignment, rows, sink).Write(bytes);
}

}  // namespace velmora::exchange
