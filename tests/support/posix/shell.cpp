#include "tests/support/shell.h"

#include <sys/wait.h>

#include <cstdlib>

namespace velmora::testing {

std::string ShellQuoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string ShellPath(const std::string& path) { return path; }

int RunShell(const std::string& line) {
  const int status = std::system(line.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace velmora::testing
