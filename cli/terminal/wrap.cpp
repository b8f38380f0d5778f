#include "cli/terminal/wrap.h"

#include <algorithm>

#include "velmora/text/codepage.h"

namespace velmora::cli {
namespace {

constexpr size_t kNarrowest = 20;  // of a column that is wrapped

// Characters that take no column of their own, and those that take two.
struct CharacterRange {
  char32_t first;
  char32_t last;
  size_t columns;
};
constexpr CharacterRange kUnusualWidths[] = {
    {0x0300, 0x036F, 0},   {0x0483, 0x0489, 0},   {0x0591, 0x05BD, 0},   {0x064B, 0x065F, 0},
    {0x1100, 0x115F, 2},   {0x1AB0, 0x1AFF, 0},   {0x1DC0, 0x1DFF, 0},   {0x200B, 0x200F, 0},
    {0x20D0, 0x20FF, 0},   {0x2E80, 0x303E, 2},   {0x3041, 0xA4CF, 2},   {0xA960, 0xA97F, 2},
    {0xAC00, 0xD7A3, 2},   {0xF900, 0xFAFF, 2},   {0xFE00, 0xFE0F, 0},   {0xFE20, 0xFE2F, 0},
    {0xFE30, 0xFE6F, 2},   {0xFEFF, 0xFEFF, 0},   {0xFF00, 0xFF60, 2},   {0xFFE0, 0xFFE6, 2},
    {0x1F300, 0x1F64F, 2}, {0x1F680, 0x1F6FF, 2}, {0x1F900, 0x1F9FF, 2}, {0x20000, 0x3FFFD, 2},
};

size_t ColumnsOf(char32_t c) {
  if (c < kUnusualWidths[0].first) return 1;
  for (const CharacterRange& range : kUnusualWidths)
    if (c >= range.first && c <= range.last) return range.columns;
  return 1;
}

// The bytes of the characters that fit into `width` columns, and the columns that they take.
struct Fitting {
  size_t bytes = 0;
  size_t columns = 0;
};
Fitting FittingInto(std::string_view text, size_t width) {
  Fitting fitting;
  while (fitting.bytes < text.size()) {
    char32_t c = 0;
    const size_t length = std::max<size_t>(DecodeUtf8Sequence(text.substr(fitting.bytes), &c), 1);
    const size_t columns = ColumnsOf(c);
    if (fitting.columns + columns > width) break;
    fitting.bytes += length;
    fitting.columns += columns;
  }
  return fitting;
}

// Where the last column of a line of help starts.
size_t HangingIndent(std::string_view line) {
  const size_t first = std::min(line.find_first_not_of(' '), line.size());
  if (line.substr(first).starts_with("- ")) return first + 2;
  const size_t gap = line.find("  ", first);
  if (first == 0 || gap == std::string_view::npos) return first;
  return std::min(line.find_first_not_of(' ', gap), line.size());
}

}  // namespace

size_t DisplayWidth(std::string_view text) {
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  const bool plain = static_cast<size_t>(std::count_if(text.begin(), text.end(), is_ascii)) == text.size();
  return plain ? text.size() : FittingInto(text, std::string_view::npos).columns;
}

std::vector<std::string> Wrapped(std::string_view text, size_t width) {
  std::vector<std::string> pieces;
  width = std::max<size_t>(width, 2);  // a character at least
  const auto fitting = [&] { return FittingInto(text, width).bytes; };
  for (size_t most = fitting(); most < text.size(); most = fitting()) {
    const size_t blank = text.rfind(' ', most);
    const bool at_blank = blank != std::string_view::npos && blank > 0;
    const size_t end = at_blank ? blank : most;
    pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(at_blank ? std::min(text.find_first_not_of(' ', end), text.size()) : end);
  }
  pieces.emplace_back(text);
  return pieces;
}

std::string Cut(const std::string& text, size_t width) {
  if (DisplayWidth(text) <= width) return text;
  return text.substr(0, FittingInto(text, width - 1).bytes) + "…";
}

std::string WrapLines(const std::string& text, size_t width) {
  if (width == 0) return text;
  std::string wrapped;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size());
    const std::string_view line = std::string_view(text).substr(at, end - at);
    at = end + 1;
    size_t indent = HangingIndent(line);
    std::string start(line.substr(0, indent));
    std::string_view rest = line.substr(indent);
    if (indent + kNarrowest > width) {  // no room for two columns
      rest = line.substr(std::min(line.find_first_not_of(' '), line.size()));
      indent = std::min<size_t>(line.size() - rest.size(), 2);
      start.assign(indent, ' ');
    }
    for (const std::string& piece : Wrapped(rest, width - std::min(indent, width))) {
      wrapped += start + piece + "\n";
      start.assign(indent, ' ');
    }
  }
  return wrapped;
}

}  // namespace velmora::cli
