#include "tests/support/background_command.h"

#include <windows.h>

#include "tests/support/shell.h"
#include "velmora/text/codepage.h"

namespace velmora::testing {
namespace {

// What is in it ends with the test, however that ends.
HANDLE Job() {
  static const HANDLE job = [] {
    const HANDLE made = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limit = {};
    limit.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limit, sizeof limit);
    return made;
  }();
  return job;
}

}  // namespace

BackgroundCommand::BackgroundCommand(const std::vector<std::string>& words, const CString& output) {
  std::wstring line;
  for (const std::string& word : words) line += (line.empty() ? L"" : L" ") + WideFromUtf8(ShellQuoted(word));
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  const HANDLE file =
      CreateFileW(output, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                  CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = file;
  start.hStdError = file;
  PROCESS_INFORMATION process = {};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process) !=
      0) {
    AssignProcessToJobObject(Job(), process.hProcess);
    CloseHandle(process.hThread);
    process_ = reinterpret_cast<std::intptr_t>(process.hProcess);
  }
  CloseHandle(file);
}

void BackgroundCommand::Kill() {
  if (process_ == 0) return;
  const HANDLE process = reinterpret_cast<HANDLE>(process_);
  TerminateProcess(process, 1);
  WaitForSingleObject(process, 10'000);
  CloseHandle(process);
  process_ = 0;
}

}  // namespace velmora::testing
