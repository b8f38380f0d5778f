// Names given on the command line, as paths that hold whatever folder a program runs in.
#ifndef VELMORA_CLI_TERMINAL_ABSOLUTE_PATH_H_
#define VELMORA_CLI_TERMINAL_ABSOLUTE_PATH_H_

#include <filesystem>
#include <string>

namespace velmora::cli {

// The system's own form of a name in UTF-8 (or in bytes of no encoding, where the system has them).
std::filesystem::path SystemPath(const std::string& name);
// The name from the root on, without "." and "..".
std::string AbsolutePath(const std::string& name);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_ABSOLUTE_PATH_H_
