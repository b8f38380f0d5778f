#include "cli/terminal/wrap.h"

#include <algorithm>

namespace velmora::cli {
namespace {

constexpr size_t kNarrowest = 20;  // of a column that is wrapped

bool StartsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

// The bytes of the first `width` characters.
size_t BytesOf(std::string_view text, size_t width) {
  for (size_t i = 0; i < text.size(); ++i)
    if (StartsCharacter(text[i]) && width-- == 0) return i;
  return text.size();
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
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

std::vector<std::string> Wrapped(std::string_view text, size_t width) {
  std::vector<std::string> pieces;
  width = std::max<size_t>(width, 1);
  while (DisplayWidth(text) > width) {
    const size_t most = BytesOf(text, width);
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
  return text.substr(0, BytesOf(text, width - 1)) + "…";
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
