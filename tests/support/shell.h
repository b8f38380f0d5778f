// The system's shell: how a word is quoted, how a path is written, and running a line.
#ifndef VELMORA_TESTS_SUPPORT_SHELL_H_
#define VELMORA_TESTS_SUPPORT_SHELL_H_

#include <string>

namespace velmora::testing {

std::string ShellQuoted(const std::string& word);
// A path with slashes, as build files give it, in the system's own spelling.
std::string ShellPath(const std::string& path);
// The exit status of a line in UTF-8.
int RunShell(const std::string& line);

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_SUPPORT_SHELL_H_
