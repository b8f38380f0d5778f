// JB23.PAR: a line for each quantity of a sounding rig, with its scale and its step.
#ifndef VELMORA_SETTINGS_JB23_FORMAT_H_
#define VELMORA_SETTINGS_JB23_FORMAT_H_

#include <array>
#include <string_view>
#include <vector>

#include "velmora/text/string.h"

namespace velmora {

struct Jb23Keys {
  const wchar_t* scale;
  const wchar_t* step;
};

// The keys of the first eleven lines.
inline constexpr std::array<Jb23Keys, 11> kJb23Lines = {{{L"SJUNKSKALA", L"SJUNKSTEG"},
                                                         {L"HASTSKALA", L"HASTSTEG"},
                                                         {L"KRAFTSKALA", L"KRAFTSTEG"},
                                                         {L"RPMSKALA", L"RPMSTEG"},
                                                         {L"SPOLSKALA", L"SPOLSTEG"},
                                                         {L"FLODESKALA", L"FLODESTEG"},
                                                         {L"HAMMARSKALA", L"HAMMARSTEG"},
                                                         {L"TRYCKSKALA", L"TRYCKSTEG"},
                                                         {L"QTSKALA", L"QTSTEG"},
                                                         {L"FTSKALA", L"FTSTEG"},
                                                         {L"USKALA", L"USTEG"}}};

// The keys of a line, counted from 1; UNKNOWN1 and UNKNOWN2 from the twelfth on.
Jb23Keys Jb23KeysOfLine(int line);

struct Jb23Field {
  int line = 1;  // from 1
  bool step = false;
};
// The field of a key's value. Letter case counts, and callers rely on every unknown key meaning line 1
// (tests/settings/file_cases.txt).
Jb23Field FieldOfJb23Key(std::wstring_view key);

struct Jb23Line {
  CString scale;
  CString step;
};
// The first two words; what is missing is empty.
Jb23Line ParseJb23Line(std::wstring_view line);
// With its line end.
CString FormatJb23Line(const Jb23Line& line);

// Rewrites the file with a value in its field; all other lines are copied. A field beyond the last line goes
// to the line after it, whatever its number, with "0" for that line's other value. A missing file is made by
// the first line's scale only. With `filled` the lines up to the field's that are missing, empty or a
// placeholder "*" get their built-in values first, and their numbers are appended to it.
// False when nothing was written.
[[nodiscard]] bool WriteJb23Value(const CString& path, const Jb23Field& field, const CString& value,
                                  std::vector<int>* filled = nullptr);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_JB23_FORMAT_H_
