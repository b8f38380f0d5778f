// Today's date as the suite writes it.
#ifndef VELMORA_ENVIRONMENT_DATE_TEXT_H_
#define VELMORA_ENVIRONMENT_DATE_TEXT_H_

#include "velmora/text/string.h"

namespace velmora {

// "%4d-%02d-%02d" of a calendar day whose year is counted from 1900, as clocks of old do: a count up to
// 79 is taken for a year of the 2000s.
//
//   DateText(126, 7, 9)   // 2026-07-09
//   DateText(26, 7, 9)    // the same
CString DateText(int years_since_1900, int month, int day);

// The local date.
CString TodayText();

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_DATE_TEXT_H_
