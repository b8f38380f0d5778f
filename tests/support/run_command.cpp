#include "tests/support/run_command.h"

#include <cstdlib>

#include "tests/support/shell.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

std::string FromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

}  // namespace

Ran RunVelmora(const std::vector<std::string>& arguments, const std::string& input) {
  const TemporaryFolder folder;
  const auto in_folder = [&](const wchar_t* name) { return folder.Path() + L"\\" + name; };
  WriteBytes(in_folder(L"in"), input);
  std::string line = ShellQuoted(VelmoraCommand());
  for (const std::string& argument : arguments) line += " " + ShellQuoted(argument);
  line += " < " + ShellQuoted(AsArgument(in_folder(L"in"))) + " > " +
          ShellQuoted(AsArgument(in_folder(L"out"))) + " 2> " + ShellQuoted(AsArgument(in_folder(L"err")));
  Ran ran;
  ran.status = RunShell(line);
  ran.out = ReadBytes(in_folder(L"out"));
  ran.err = ReadBytes(in_folder(L"err"));
  return ran;
}

std::string VelmoraCommand() { return ShellPath(FromEnvironment("VELMORA_COMMAND")); }

std::string Example(const std::string& name) {
  return ShellPath(FromEnvironment("VELMORA_EXAMPLES") + "/" + name);
}

std::string AsArgument(const CString& path) { return PathForDisplay(path); }

}  // namespace velmora::testing
