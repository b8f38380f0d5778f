#include "velmora/exchange/ags.h"

#include <algorithm>
#include <array>

#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"

namespace velmora::exchange {
namespace {

constexpr size_t kNone = AgsLines::kNone;

constexpr std::array<std::string_view, 3> kFilled = {"LOCA_ALID", "LOCA_OFFS", "LOCA_CNGE"};
constexpr std::array<std::string_view, 3> kUnits = {"", "m", ""};
constexpr std::array<std::string_view, 3> kTypes = {"X", "2DP", "X"};

// UTF-8 in Windows-1252, with "_" for the characters that it lacks.
std::string InWindows1252(std::string_view utf8) {
  std::string bytes;
  while (!utf8.empty()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(utf8, &c);
    const auto byte = length > 0 && c <= 0xFFFF ? EncodeWindows1252(static_cast<wchar_t>(c)) : std::nullopt;
    bytes += static_cast<char>(byte.value_or('_'));
    utf8.remove_prefix(std::max<size_t>(length, 1));
  }
  return bytes;
}

class AgsWriter {
 public:
  AgsWriter(std::string alignment, const std::vector<AgsPlace>& places, const Sink& sink)
      : alignment_(std::move(alignment)), places_(places), out_(sink) {}

  void Write(std::string_view bytes) {
    AgsLines reader(bytes);
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
  void Arrange(const AgsLines& reader) {
    for (size_t i = 0; i < kFilled.size(); ++i) columns_[i] = reader.Find(kFilled[i]);
    insert_at_ = reader.Headings().size();
    // The standard's headings that follow LOCA_CNGE.
    for (const char* later : {"LOCA_TRAN", "FILE_FSET", "LOCA_NATD", "LOCA_ORID", "LOCA_ORJO", "LOCA_ORCO",
                              "LOCA_CHKG", "LOCA_APPG", "LOCA_PDAT"})
      insert_at_ = std::min(insert_at_, reader.Find(later));
  }

  void WriteData(const AgsLines& reader) {
    while (at_ < places_.size() && places_[at_].line < reader.Number()) ++at_;
    if (at_ >= places_.size() || places_[at_].line != reader.Number()) return WriteLine(reader, {}, false);
    const std::string offset = FormatFixed(places_[at_].offset, Decimals(1));
    const std::string station = FormatFixed(places_[at_].station, Decimals(2));
    WriteLine(reader, {alignment_, offset, station}, true);
  }

  // Of "2DP"; metres otherwise have three.
  int Decimals(size_t column) const {
    const std::string& type = types_[column];
    return type.size() == 3 && type.ends_with("DP") && type[0] >= '0' && type[0] <= '9' ? type[0] - '0' : 3;
  }

  // With `values` in the columns that are added, and in all three where `fill` is set.
  void WriteLine(const AgsLines& reader, const std::array<std::string_view, 3>& values, bool fill) {
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

  std::string alignment_;
  const std::vector<AgsPlace>& places_;
  TextSink out_;
  std::array<size_t, 3> columns_ = {kNone, kNone, kNone};
  std::array<std::string, 3> types_ = {std::string(kTypes[0]), std::string(kTypes[1]),
                                       std::string(kTypes[2])};
  size_t insert_at_ = 0;
  size_t at_ = 0;  // in places_
};

}  // namespace

bool AgsRows::Next() {
  while (problem_.text.empty() && lines_.Next()) {
    const bool heading = lines_.Is("HEADING");
    if (!heading && !lines_.Is("DATA")) continue;
    if (heading && has_heading_) return Refuse("this is a second group LOCA");
    if (!heading && !has_heading_) return Refuse("group LOCA has DATA before its HEADING");
    if (!lines_.Line().whole) return Refuse("a quote is not closed, or there are too many fields");
    has_heading_ = true;
    return true;
  }
  if (!has_heading_ && problem_.text.empty()) problem_ = {0, "has no group LOCA"};
  return false;
}

bool AgsRows::Refuse(std::string why) {
  problem_ = {lines_.Number(), std::move(why)};
  return false;
}

void WriteAgs(std::string_view bytes, const std::string& alignment, const std::vector<AgsPlace>& places,
              const Sink& sink) {
  AgsWriter(IsValidUtf8(bytes) ? alignment : InWindows1252(alignment), places, sink).Write(bytes);
}

}  // namespace velmora::exchange
