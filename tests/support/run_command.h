// Runs the velmora command as its users do and captures what it writes.
#ifndef VELMORA_TESTS_SUPPORT_RUN_COMMAND_H_
#define VELMORA_TESTS_SUPPORT_RUN_COMMAND_H_

#include <string>
#include <vector>

#include "tests/support/test_files.h"

namespace velmora::testing {

struct Ran {
  int status = -1;
  std::string out;
  std::string err;
};

// Arguments and input in UTF-8. The program is the one that the environment's VELMORA_COMMAND names.
Ran RunVelmora(const std::vector<std::string>& arguments, const std::string& input = "");

// The path that a variable of the environment names and the build files wrote with slashes, in this
// system's spelling; empty when the variable is not set.
std::string PathFromEnvironment(const char* variable);
std::string VelmoraCommand();
// A file of the example data, as an argument.
std::string Example(const std::string& name);
// A path of ours as an argument for this system.
std::string AsArgument(const CString& path);

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_SUPPORT_RUN_COMMAND_H_
