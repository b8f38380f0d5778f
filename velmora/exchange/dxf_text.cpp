#include "velmora/exchange/dxf_text.h"

#include <charconv>
#include <cmath>

namespace velmora::exchange {
namespace {

constexpr size_t kEscapeLength = 7;  // \U+XXXX

bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

void AppendEscape(char32_t c, std::string* bytes) {
  *bytes += "\\U+";
  for (int shift = 12; shift >= 0; shift -= 4) *bytes += "0123456789ABCDEF"[(c >> shift) & 0xFU];
}

// The code unit of the escape that the text begins with.
std::optional<char32_t> EscapeAt(std::string_view text) {
  if (text.size() < kEscapeLength || !(text.starts_with("\\U+") || text.starts_with("\\u+"))) return {};
  unsigned unit = 0;
  const char* end = text.data() + kEscapeLength;
  const auto [stop, error] = std::from_chars(text.data() + 3, end, unit, 16);
  if (error != std::errc() || stop != end) return {};
  return unit;
}

template <class Number>
std::optional<Number> Parse(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  text = text.substr(first, text.find_last_not_of(" \t") + 1 - first);
  if (text.starts_with('+')) text.remove_prefix(1);
  Number value{};
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || stop != text.data() + text.size()) return {};
  return value;
}

}  // namespace

std::optional<std::string> EncodeDxfText(std::string_view utf8) {
  std::string bytes;
  while (!utf8.empty()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(utf8, &c);
    if (length == 0 || c > 0xFFFF) return {};
    // A backslash that would begin an escape is one itself.
    const bool escaped = IsControl(c) || (c == U'\\' && EscapeAt(utf8));
    const auto byte = escaped ? std::nullopt : EncodeWindows1252(static_cast<wchar_t>(c));
    if (byte) {
      bytes += static_cast<char>(*byte);
    } else {
      AppendEscape(c, &bytes);
    }
    utf8.remove_prefix(length);
  }
  return bytes;
}

std::string DecodeDxfText(std::string_view bytes, TextEncoding encoding) {
  std::wstring text;
  while (!bytes.empty()) {
    if (auto c = EscapeAt(bytes)) {
      bytes.remove_prefix(kEscapeLength);
      // Two UTF-16 units, as other programs write characters above U+FFFF.
      const auto low = EscapeAt(bytes);
      if (*c >= 0xD800 && *c < 0xDC00 && low && *low >= 0xDC00 && *low < 0xE000) {
        c = 0x10000 + ((*c - 0xD800) << 10) + (*low - 0xDC00);
        bytes.remove_prefix(kEscapeLength);
      }
      AppendWide(*c, &text);
      continue;
    }
    const std::string_view plain =
        bytes.substr(0, std::max<size_t>(1, std::min(bytes.find('\\'), bytes.size())));
    AppendDecoded(plain, encoding, &text);
    bytes.remove_prefix(plain.size());
  }
  return Utf8FromWide(text);
}

std::optional<double> ParseDxfNumber(std::string_view text) {
  const auto number = Parse<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<int> ParseDxfInteger(std::string_view text) { return Parse<int>(text); }

}  // namespace velmora::exchange
