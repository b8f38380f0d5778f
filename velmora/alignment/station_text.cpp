#include "velmora/alignment/station_text.h"

#include <algorithm>
#include <cmath>

#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr double kLarge = 1e15;  // m; from here on decimals mean nothing, and the digits become many

// A number of digits with at most one ".", no sign and no exponent.
std::optional<double> PlainNumber(std::wstring_view text) {
  const auto plain = [](wchar_t c) { return IsDigit(c) || c == L'.'; };
  if (!std::all_of(text.begin(), text.end(), plain)) return std::nullopt;
  return ParseWholeNumber(text);
}

}  // namespace

std::string StationText(double metres, bool km) {
  if (std::fabs(metres) >= kLarge) return FormatShortest(metres);
  std::string text = FormatFixed(std::fabs(metres), 3);
  const bool below_zero = metres < 0 && text.find_first_of("123456789") != std::string::npos;
  if (km && std::isfinite(metres)) {
    constexpr size_t kMetresLength = 7;  // 250.000
    if (text.size() <= kMetresLength) text.insert(0, kMetresLength + 1 - text.size(), '0');
    text.insert(text.size() - kMetresLength, 1, '/');
  }
  return below_zero ? "-" + text : text;
}

std::string RoundStationText(double metres, bool km) {
  std::string text = StationText(metres, km);
  if (text.ends_with(".000")) text.resize(text.size() - 4);
  return text;
}

std::optional<double> ParseStation(std::string_view text) {
  const std::wstring wide = WideFromUtf8(text);
  std::wstring_view rest = TrimBlanks(wide);
  if (const auto metres = ParseWholeNumber(rest)) return metres;

  const bool below_zero = rest.starts_with(L'-');
  if (below_zero) rest.remove_prefix(1);
  const size_t mark = rest.find_first_of(L"/+");
  if (mark == std::wstring_view::npos || mark == 0) return std::nullopt;
  if (!std::all_of(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(mark), IsDigit)) {
    return std::nullopt;
  }
  const auto kilometres = PlainNumber(rest.substr(0, mark));
  const auto metres = PlainNumber(rest.substr(mark + 1));
  if (!kilometres || !metres || *metres >= 1000) return std::nullopt;
  const double station = *kilometres * 1000 + *metres;
  if (!std::isfinite(station)) return std::nullopt;
  return below_zero ? -station : station;
}

std::string_view OffsetSide(double offset) {
  if (std::fabs(offset) < 0.0005) return "";
  return offset < 0 ? "V" : "H";
}

std::string OffsetText(double offset) {
  const std::string side(OffsetSide(offset));
  return (side.empty() ? "" : side + " ") + FormatFixed(std::fabs(offset), 3);
}

std::string LengthText(double metres) {
  if (!std::isfinite(metres)) return "not finite";
  return (std::fabs(metres) < kLarge ? FormatFixed(metres, 3) : FormatShortest(metres)) + " m";
}

}  // namespace velmora
