// Words of a line, between blanks, as the code and parameter files have them.
#ifndef VELMORA_SETTINGS_FIELD_TEXT_H_
#define VELMORA_SETTINGS_FIELD_TEXT_H_

#include <string_view>

namespace velmora {

// Takes the next word off the front of `rest`; empty when there is none.
std::wstring_view TakeWord(std::wstring_view* rest);

// Copies text into a caller's buffer of `size` characters, cut to fit and always terminated. Nothing is
// written to a buffer without room.
void CopyToBuffer(wchar_t* buffer, int size, std::wstring_view text);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_FIELD_TEXT_H_
