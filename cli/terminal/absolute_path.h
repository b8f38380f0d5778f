// Names from the command line as absolute paths.
#ifndef VELMORA_CLI_TERMINAL_ABSOLUTE_PATH_H_
#define VELMORA_CLI_TERMINAL_ABSOLUTE_PATH_H_

#include <filesystem>
#include <string>

namespace velmora::cli {

// The system's form of a name in UTF-8 (on Linux also bytes of unknown encoding).
std::filesystem::path SystemPath(const std::string& name);
// The absolute path, without "." and "..". A name with a drive is one on every system (DrivePath).
std::string AbsolutePath(const std::string& name);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_ABSOLUTE_PATH_H_
