#include "tests/support/background_command.h"

#include <windows.h>

#include <utility>

#include "velmora/text/codepage.h"

namespace velmora::testing {
namespace {

// Processes of the job end with the test, however that ends.
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

// As programs take their command line apart: a backslash counts as such unless a quote follows the run.
std::wstring Quoted(const std::string& word) {
  std::wstring quoted = L"\"";
  size_t backslashes = 0;
  for (const wchar_t c : WideFromUtf8(word)) {
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

HANDLE Open(const CString& path, DWORD access, DWORD how) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited, how, 0,
                     nullptr);
}

}  // namespace

BackgroundCommand::BackgroundCommand(const std::vector<std::string>& words, const CString& output,
                                     const CString& errors, const CString& input) {
  std::wstring line;
  for (const std::string& word : words) line += (line.empty() ? L"" : L" ") + Quoted(word);
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = Open(input.IsEmpty() ? CString(L"NUL") : input, GENERIC_READ, OPEN_EXISTING);
  start.hStdOutput = Open(output, GENERIC_WRITE, CREATE_ALWAYS);
  start.hStdError = errors.IsEmpty() ? start.hStdOutput : Open(errors, GENERIC_WRITE, CREATE_ALWAYS);
  PROCESS_INFORMATION process = {};
  // Under load Wine now and then does not start a program at the first attempt.
  BOOL started = FALSE;
  for (int attempt = 0; attempt < 5 && started == FALSE; ++attempt) {
    if (attempt > 0) Sleep(200);
    std::wstring arguments = line;
    started = CreateProcessW(nullptr, arguments.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                             &process);
  }
  if (started != FALSE) {
    AssignProcessToJobObject(Job(), process.hProcess);
    CloseHandle(process.hThread);
    process_ = reinterpret_cast<std::intptr_t>(process.hProcess);
  }
  CloseHandle(start.hStdInput);
  CloseHandle(start.hStdOutput);
  if (!errors.IsEmpty()) CloseHandle(start.hStdError);
}

int BackgroundCommand::Wait() {
  if (process_ == 0) return -1;
  const HANDLE process = reinterpret_cast<HANDLE>(std::exchange(process_, 0));
  DWORD status = static_cast<DWORD>(-1);
  WaitForSingleObject(process, INFINITE);
  GetExitCodeProcess(process, &status);
  CloseHandle(process);
  return static_cast<int>(status);
}

void BackgroundCommand::Kill() {
  if (process_ != 0) TerminateProcess(reinterpret_cast<HANDLE>(process_), static_cast<UINT>(-1));
  Wait();
}

}  // namespace velmora::testing
