#include "tests/support/shell.h"

#include <algorithm>
#include <cwchar>

#include "velmora/text/codepage.h"

namespace velmora::testing {

// The tests use no words with quotes in them, which cmd has no way to pass.
std::string ShellQuoted(const std::string& word) { return "\"" + word + "\""; }

// A path of the building system lies on the drive that stands for its root.
std::string ShellPath(const std::string& path) {
  std::string spelled = path.substr(0, 1) == "/" ? "Z:" + path : path;
  std::replace(spelled.begin(), spelled.end(), '/', '\\');
  return spelled;
}

int RunShell(const std::string& line) { return _wsystem(WideFromUtf8("\"" + line + "\"").c_str()); }

}  // namespace velmora::testing
