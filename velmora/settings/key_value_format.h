// Lines "key=value". No files, no state.
#ifndef VELMORA_SETTINGS_KEY_VALUE_FORMAT_H_
#define VELMORA_SETTINGS_KEY_VALUE_FORMAT_H_

#include <string_view>

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

inline constexpr int kKeyRoom = 40;     // characters of a record's key, the end mark included
inline constexpr int kValueRoom = 260;  // of its value

// A line taken apart.
struct KeyValueLine {
  // What a list makes of it.
  enum class Kind {
    kNone,    // no "=", or nothing before it
    kBlank,   // key or value too long: an empty record of the list
    kRecord,  // a record
  };
  Kind kind = Kind::kNone;  // the two texts are empty with kNone
  std::wstring_view key;    // into the line; set for kBlank too
  std::wstring_view value;  // likewise
};

// The key ends at the first "="; nothing is trimmed. Callers rely on the odd limit of a read value, one
// character below what fits and what can be written (tests/settings/file_cases.txt).
VELMORA_API KeyValueLine ParseKeyValueLine(std::wstring_view line);

// With its line end.
VELMORA_API CString FormatKeyValueLine(std::wstring_view key, std::wstring_view value);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_KEY_VALUE_FORMAT_H_
