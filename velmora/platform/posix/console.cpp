#include "velmora/platform/console.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include "velmora/platform/new_file.h"

namespace velmora {
namespace {

volatile std::sig_atomic_t g_requested = 0;

void SetHandler(int signal, void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
  sigaction(signal, &action, nullptr);
}

extern "C" void EndProcess(int signal) {
  RemoveNewFiles();
  SetHandler(signal, SIG_DFL);
  raise(signal);
}

extern "C" void RecordInterrupt(int signal) {
  g_requested = 1;
  SetHandler(signal, EndProcess);
}

}  // namespace

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc);
}

std::string ShellArgument(const std::string& text) {
  const auto is_plain = [](char c) {
    return static_cast<unsigned char>(c) >= 0x80 || std::isalnum(static_cast<unsigned char>(c)) != 0 ||
           std::string_view("/._-+:,@%=").find(c) != std::string_view::npos;
  };
  const std::string name = (text.starts_with('-') ? "./" : "") + text;
  if (!name.empty() && std::all_of(name.begin(), name.end(), is_plain)) return name;
  std::string quoted = "'";
  for (const char c : name) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

void PrepareStandardStreams() {}

bool StandardInputIsTerminal() { return isatty(STDIN_FILENO) != 0; }
bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

size_t TerminalWidth(StandardStream stream) {
  winsize size = {};
  const int file = stream == StandardStream::kOutput ? STDOUT_FILENO : STDERR_FILENO;
  return ioctl(file, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool ShowsColours(StandardStream stream) {
  const char* const off = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  return (off == nullptr || *off == 0) && terminal != nullptr && std::string_view(terminal) != "dumb" &&
         isatty(stream == StandardStream::kOutput ? STDOUT_FILENO : STDERR_FILENO) != 0;
}

void RemoveUnfinishedFilesAtInterrupt() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction now = {};
    // One that is ignored, as under nohup, stays so.
    if (sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_DFL) SetHandler(signal, EndProcess);
  }
}

Interrupt::Interrupt() {
  for (const int signal : {SIGINT, SIGTERM}) SetHandler(signal, RecordInterrupt);
}
Interrupt::~Interrupt() {
  for (const int signal : {SIGINT, SIGTERM}) SetHandler(signal, EndProcess);
}
bool Interrupt::Requested() { return g_requested != 0; }

}  // namespace velmora
