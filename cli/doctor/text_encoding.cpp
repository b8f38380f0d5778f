#include "cli/doctor/checks.h"

#include <algorithm>

#include "velmora/text/codepage.h"

namespace velmora::cli {

std::optional<Diagnosis> CheckEncoding(const std::string& shown, std::string_view bytes) {
  const TextEncoding encoding = EncodingFromMark(bytes);
  if (encoding != TextEncoding::kWindows1252)
    return Diagnosis{
        shown, 0,
        std::string("begins with the byte-order mark of ") + (IsUtf16(encoding) ? "UTF-16" : "UTF-8"),
        "the suite's other programs read Windows-1252 and take the mark for text; save the file "
        "as Windows-1252 in an editor",
        ""};
  const auto is_letter = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  const auto first = std::find_if(bytes.begin(), bytes.end(), is_letter);
  if (first == bytes.end() || !IsValidUtf8(bytes)) return std::nullopt;
  return Diagnosis{shown, std::count(bytes.begin(), first, '\n') + 1, "is UTF-8 without a byte-order mark",
                   "it is read as Windows-1252, each letter such as \xC3\xA5 as two others; save the file as "
                   "Windows-1252 in an editor",
                   ""};
}

}  // namespace velmora::cli
