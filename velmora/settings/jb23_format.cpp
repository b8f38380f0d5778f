#include "velmora/settings/jb23_format.h"

#include "velmora/settings/field_text.h"

namespace velmora {

Jb23Field FieldOfJb23Key(std::wstring_view key) {
  Jb23Field field;
  field.step = key.find(L"STEG") != std::wstring_view::npos;
  for (size_t line = 0; line < kJb23Lines.size(); ++line)
    if (key == kJb23Lines[line][0] || key == kJb23Lines[line][1]) field.line = static_cast<int>(line) + 1;
  return field;
}

Jb23Line ParseJb23Line(int number, std::wstring_view line, std::wstring_view* rest) {
  const auto index = static_cast<size_t>(number) - 1;
  const Jb23Keys keys = index < kJb23Lines.size() ? kJb23Lines[index] : Jb23Keys{L"UNKNOWN1", L"UNKNOWN2"};
  Jb23Line parsed = {{{keys[0], TakeWord(&line)}, {keys[1], TakeWord(&line)}}};
  if (rest != nullptr) *rest = line;
  return parsed;
}

CString FormatJb23Line(const Jb23Line& line) {
  CString text;
  text.Format(L"%s   %s\n", line[0].value, line[1].value);
  return text;
}

}  // namespace velmora
