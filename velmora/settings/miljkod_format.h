// MILJKOD.DAT: environmental codes in sections, between lines that begin with "*". No files, no state.
#ifndef VELMORA_SETTINGS_MILJKOD_FORMAT_H_
#define VELMORA_SETTINGS_MILJKOD_FORMAT_H_

#include <array>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

// Sections as the programs use them; what precedes them is a header.
inline constexpr int kMethodSection = 1;          // sampling and compilation methods
inline constexpr int kInterpretationSection = 2;  //
inline constexpr int kClassSection = 3;           // contamination classes, with a maximum and a step

inline constexpr int kLongestMiljkodName = 4;
inline constexpr int kUsualMax = 100;
inline constexpr int kUsualStep = 20;

struct MiljkodLine {
  enum class Kind {
    kNone,     // without a word
    kTooLong,  // the name is
    kEntry,    //
  };
  Kind kind = Kind::kNone;
  CString name;
  CString text;
};
// The name is the first word; the text is the rest without the blanks around it.
MiljkodLine ParseMiljkodLine(std::wstring_view line);

struct MiljkodLimits {
  int max = kUsualMax;
  int step = kUsualStep;
};
// Takes " max=N" and " steg=N" off the end of a class's text, letters without regard to case. Callers rely
// on the maximum being found only before the step, and on 0 being a maximum but no step (test Limits).
MiljkodLimits TakeMiljkodLimits(CString* text);

CString FormatMiljkodClass(std::wstring_view name, std::wstring_view text, MiljkodLimits limits);

// The codes that every program relies on.
struct RequiredMiljkod {
  int section;
  const wchar_t* name;
  const wchar_t* text;
  MiljkodLimits limits;
};
inline constexpr std::array<RequiredMiljkod, 3> kRequiredMiljkods = {
    {{kMethodSection, L"X", L"okänd metod, sammanställning", {}},
     {kInterpretationSection, L"TOLK", L"Tolkad klassificering", {}},
     {kClassSection, L"FK", L"Föroreningsklass", {6, 1}}}};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_MILJKOD_FORMAT_H_
