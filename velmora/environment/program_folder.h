// The folder of the running program, as its command line tells it.
#ifndef VELMORA_ENVIRONMENT_PROGRAM_FOLDER_H_
#define VELMORA_ENVIRONMENT_PROGRAM_FOLDER_H_

#include "velmora/text/string.h"

namespace velmora {

// Without a backslash at the end; its parent with `parent`. When there are arguments behind the program
// the text is raised (a to z) and ends after its first ".EXE", or where there is none after the first
// argument. Empty when nothing is left to cut.
//
//   ProgramFolderFromCommandLine(L"\"C:\\Suite\\Prog\\a.exe\" x", false)   // C:\SUITE\PROG
//   ProgramFolderFromCommandLine(L"\"C:\\Suite\\Prog\\a.exe\"", true)      // C:\Suite
CString ProgramFolderFromCommandLine(const CString& command_line, bool parent);

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_PROGRAM_FOLDER_H_
