// Offsets as the field writes them: metres and a side, V (vänster) left and H (höger) right.
#ifndef VELMORA_CLI_ALIGN_OFFSET_TEXT_H_
#define VELMORA_CLI_ALIGN_OFFSET_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

namespace velmora::cli {

// "V" or "H"; empty on the line itself, to the millimetre.
std::string OffsetSide(double offset);
// "H 12.400", "V 3.200", "0.000"
std::string OffsetText(double offset);
// A signed number, or one with its side: "V 3.2", "h12.4". `decimal_comma` as for FieldNumber.
std::optional<double> ParseOffset(std::wstring_view text, bool decimal_comma);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_OFFSET_TEXT_H_
