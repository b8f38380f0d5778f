#include "velmora/drawing/dxf_groups.h"

#include <array>
#include <charconv>

#include "velmora/drawing/scale.h"

namespace velmora::drawing {

DxfGroupText& DxfGroupText::Text(int code, std::string_view bytes) {
  (((bytes_ += std::to_string(code)) += "\r\n") += bytes) += "\r\n";
  return *this;
}

DxfGroupText& DxfGroupText::Integer(int code, long long value) { return Text(code, std::to_string(value)); }

DxfGroupText& DxfGroupText::Handle(int code, long long value) {
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
  for (char& digit : digits)
    if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
  return Text(code, {digits.data(), static_cast<size_t>(end - digits.data())});
}

DxfGroupText& DxfGroupText::Real(int code, double value, int decimals) {
  return Text(code, TrimmedFixed(value, decimals));
}

DxfGroupText& DxfGroupText::At(int code, double x, double y) { return Real(code, x).Real(code + 10, y); }

DxfGroupText& DxfGroupText::Lines(std::string_view lines) {
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(lines.size(), line.size() + 1));
    const size_t blank = line.find(' ');
    ((bytes_ += line.substr(0, blank)) += "\r\n") +=
        blank == std::string_view::npos ? "" : line.substr(blank + 1);
    bytes_ += "\r\n";
  }
  return *this;
}

}  // namespace velmora::drawing
