#include "velmora/exchange/ags_lines.h"

#include <algorithm>

#include "velmora/text/codepage.h"

namespace velmora::exchange {
namespace {

constexpr size_t kMostFields = 10'000;  // of a line

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
  if (first == std::string_view::npos) return {};
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

}  // namespace

bool AgsLines::Next() {
  if (rest_.empty()) return false;
  const size_t size = std::min(rest_.find('\n'), rest_.size() - 1) + 1;
  line_.bytes = rest_.substr(0, size);
  rest_.remove_prefix(size);
  const size_t length = line_.bytes.find_last_not_of("\r\n") + 1;  // 0 for an empty line
  line_.end = line_.bytes.substr(length);
  std::string_view text = line_.bytes.substr(0, length);
  if (number_++ == 0) text.remove_prefix(std::min(text.size(), ByteOrderMark(EncodingFromMark(text)).size()));
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

size_t AgsLines::Find(std::string_view heading) const {
  const auto found = std::find(headings_.begin(), headings_.end(), heading);
  return found == headings_.end() || found == headings_.begin()
             ? kNone
             : static_cast<size_t>(found - headings_.begin());
}

std::string AgsLines::Field(size_t column) const {
  return column < line_.fields.size() ? Value(line_.fields[column]) : std::string();
}

}  // namespace velmora::exchange
