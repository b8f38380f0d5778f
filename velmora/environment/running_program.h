// What initialising takes from the running program: its folder, its profile and today's date.
#ifndef VELMORA_ENVIRONMENT_RUNNING_PROGRAM_H_
#define VELMORA_ENVIRONMENT_RUNNING_PROGRAM_H_

#include "velmora/text/string.h"

namespace velmora {

// The program's folder without a backslash at the end; its parent with `parent`. When arguments follow the
// program, a to z become capitals and the program ends after the first ".EXE", without one after the first
// argument. Empty when nothing is left.
//
//   ProgramFolderFromCommandLine(L"\"C:\\Suite\\Prog\\a.exe\" x", false)   // C:\SUITE\PROG
//   ProgramFolderFromCommandLine(L"\"C:\\Suite\\Prog\\a.exe\"", true)      // C:\Suite
CString ProgramFolderFromCommandLine(const CString& command_line, bool parent);

// Sets the profile of the application object. Without such an object nothing changes.
void ReplaceApplicationProfile(const CString& path);

// A day as "%4d-%02d-%02d". A year count up to 79 means 2000 to 2079.
//
//   DateText(126, 7, 9)   // 2026-07-09
//   DateText(26, 7, 9)    // the same
CString DateText(int years_since_1900, int month, int day);
// The local date.
CString TodayText();

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_RUNNING_PROGRAM_H_
