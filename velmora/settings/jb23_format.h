// JB23.PAR: a line for each quantity of a sounding rig, with its scale and its step. No files, no state.
#ifndef VELMORA_SETTINGS_JB23_FORMAT_H_
#define VELMORA_SETTINGS_JB23_FORMAT_H_

#include <array>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

using Jb23Keys = std::array<const wchar_t*, 2>;  // of the scale and of the step

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

struct Jb23Field {
  int line = 1;  // from 1
  bool step = false;
};
// The field of a key's value. Letter case counts, and callers rely on every unknown key meaning line 1
// (tests/settings/file_cases.txt).
Jb23Field FieldOfJb23Key(std::wstring_view key);

struct Jb23Value {
  const wchar_t* key;
  CString value;
};
using Jb23Line = std::array<Jb23Value, 2>;  // the scale and the step
// The first two words of the line with this number, from 1; what is missing is empty. From line 12 on the
// keys are UNKNOWN1 and UNKNOWN2. `rest`, unless null, gets the text after the words.
Jb23Line ParseJb23Line(int number, std::wstring_view line, std::wstring_view* rest = nullptr);
// With its line end.
CString FormatJb23Line(const Jb23Line& line);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_JB23_FORMAT_H_
