#include "tests/support/run_command.h"

#include <cstdlib>
#include <filesystem>

#include "tests/support/background_command.h"
#include "velmora/platform/files.h"

namespace velmora::testing {

Ran RunVelmora(const std::vector<std::string>& arguments, const std::string& input) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"in"), input);
  std::vector<std::string> words = {VelmoraCommand()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  Ran ran;
  ran.status = BackgroundCommand(words, folder.File(L"out"), folder.File(L"err"), folder.File(L"in")).Wait();
  ran.out = ReadBytes(folder.File(L"out"));
  ran.err = ReadBytes(folder.File(L"err"));
  return ran;
}

std::string PathFromEnvironment(const char* variable) {
  const char* value = std::getenv(variable);
  if (value == nullptr) return {};
  // Cross-built programs run on the drive that stands for the building system's root.
  const std::u8string path = std::filesystem::absolute(value).make_preferred().u8string();
  return {path.begin(), path.end()};
}

std::string VelmoraCommand() { return PathFromEnvironment("VELMORA_COMMAND"); }

std::string Example(const std::string& name) {
  return AsArgument(PathFromSystem(PathFromEnvironment("VELMORA_EXAMPLES") + "/" + name));
}

std::string AsArgument(const CString& path) { return PathForDisplay(path); }

}  // namespace velmora::testing
