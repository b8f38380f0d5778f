#include "cli/align/offset_text.h"

#include <cmath>

#include "cli/input/rows.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {

std::string OffsetSide(double offset) {
  if (std::fabs(offset) < 0.0005) return "";
  return offset < 0 ? "V" : "H";
}

std::string OffsetText(double offset) {
  const std::string side = OffsetSide(offset);
  return (side.empty() ? "" : side + " ") + FormatFixed(std::fabs(offset), 3);
}

std::optional<double> ParseOffset(std::wstring_view text, bool decimal_comma) {
  text = TrimBlanks(text);
  double sign = 0;
  if (!text.empty()) {
    const wchar_t side = UpperLetter(text.front());
    sign = side == L'V' ? -1 : side == L'H' ? 1 : 0;
  }
  if (sign == 0) return FieldNumber(text, decimal_comma);
  const std::optional<double> metres = FieldNumber(TrimBlanks(text.substr(1)), decimal_comma);
  if (!metres || *metres < 0) return std::nullopt;
  return sign * *metres;
}

}  // namespace velmora::cli
