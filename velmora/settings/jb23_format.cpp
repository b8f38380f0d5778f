#include "velmora/settings/jb23_format.h"

#include "velmora/settings/field_text.h"

namespace velmora {

Jb23Keys Jb23KeysOfLine(int line) {
  const auto index = static_cast<size_t>(line) - 1;
  return index < kJb23Lines.size() ? kJb23Lines[index] : Jb23Keys{L"UNKNOWN1", L"UNKNOWN2"};
}

Jb23Field FieldOfJb23Key(std::wstring_view key) {
  Jb23Field field;
  field.step = key.find(L"STEG") != std::wstring_view::npos;
  for (size_t line = 0; line < kJb23Lines.size(); ++line)
    if (key == kJb23Lines[line].scale || key == kJb23Lines[line].step)
      field.line = static_cast<int>(line) + 1;
  return field;
}

Jb23Line ParseJb23Line(std::wstring_view line) {
  Jb23Line parsed;
  parsed.scale = TakeWord(&line);
  parsed.step = TakeWord(&line);
  return parsed;
}

CString FormatJb23Line(const Jb23Line& line) {
  CString text;
  text.Format(L"%s   %s\n", line.scale, line.step);
  return text;
}

}  // namespace velmora
