#include "velmora/platform/console.h"

#include <fcntl.h>
#include <io.h>

#include <atomic>
#include <cstdio>

#include "velmora/platform/new_file.h"
#include "velmora/platform/types.h"
#include "velmora/text/codepage.h"

#include <shellapi.h>

namespace velmora {
namespace {

std::atomic<bool> g_requested = false;

// Both run on a thread of their own. FALSE passes the event to the handler set before, the system's last,
// which ends the process.
BOOL WINAPI RemoveUnfinishedFiles(DWORD) {
  RemoveNewFiles();
  return FALSE;
}
BOOL WINAPI RecordInterrupt(DWORD) { return g_requested.exchange(true) ? FALSE : TRUE; }

bool IsConsole(DWORD which) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}

HANDLE HandleOf(StandardStream stream) {
  return GetStdHandle(stream == StandardStream::kOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

}  // namespace

// Not from argv, which is in the ANSI code page.
std::vector<std::string> ProgramArguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Utf8FromWide(wide[i]));
  LocalFree(wide);
  return arguments;
}

// A file's name has no quotation mark; one of an argument is written as CommandLineToArgvW reads it.
std::string ShellArgument(const std::string& text) {
  const std::string name = (text.starts_with('-') ? ".\\" : "") + text;
  if (!name.empty() && name.find_first_of(" \t&|<>()^;,='`!%$@{}[]~\"") == std::string::npos) return name;
  std::string quoted = "\"";
  size_t backslashes = 0;
  for (const char c : name) {
    if (c == '"') quoted.append(backslashes + 1, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, '\\') + "\"";
}

void PrepareStandardStreams() {
  for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  // Notes appear as they are written and before the result; Wine would keep them to the end.
  std::setvbuf(stderr, nullptr, _IONBF, 0);
  SetConsoleOutputCP(CP_UTF8);
}

bool StandardInputIsTerminal() { return IsConsole(STD_INPUT_HANDLE); }
bool StandardErrorIsTerminal() { return IsConsole(STD_ERROR_HANDLE); }

size_t TerminalWidth(StandardStream stream) {
  CONSOLE_SCREEN_BUFFER_INFO info = {};
  const HANDLE console = HandleOf(stream);
  if (GetConsoleScreenBufferInfo(console, &info) == 0) return 0;
  // A console without virtual-terminal sequences breaks the line after a character in the last column.
  return static_cast<size_t>(info.srWindow.Right - info.srWindow.Left);
}

bool ShowsColours(StandardStream stream) {
  if (GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) > 1) return false;
  constexpr DWORD kVirtualTerminal = 0x0004;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING
  DWORD mode = 0;
  const HANDLE console = HandleOf(stream);
  return GetConsoleMode(console, &mode) != 0 && SetConsoleMode(console, mode | kVirtualTerminal) != 0;
}

void RemoveUnfinishedFilesAtInterrupt() { SetConsoleCtrlHandler(RemoveUnfinishedFiles, TRUE); }

Interrupt::Interrupt() { SetConsoleCtrlHandler(RecordInterrupt, TRUE); }
Interrupt::~Interrupt() { SetConsoleCtrlHandler(RecordInterrupt, FALSE); }
bool Interrupt::Requested() { return g_requested; }

}  // namespace velmora
