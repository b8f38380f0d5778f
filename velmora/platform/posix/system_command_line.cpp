#include "velmora/platform/system_command_line.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include "velmora/platform/files.h"
#include "velmora/platform/posix/file_descriptor.h"

namespace velmora {
namespace {

constexpr size_t kLongestCommandLine = size_t{4} << 20;

// The arguments, each terminated by a zero.
std::string ReadArguments() {
  const FileDescriptor file(open("/proc/self/cmdline", O_RDONLY | O_CLOEXEC));
  std::string arguments;
  std::array<char, 4096> buffer{};
  while (file && arguments.size() < kLongestCommandLine) {
    const ssize_t count = read(file.Get(), buffer.data(), buffer.size());
    if (count > 0) {
      arguments.append(buffer.data(), static_cast<size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      break;
    }
  }
  return arguments;
}

// The program's full path without "." and "..", so that its folder can be compared with a registered one.
// Links are kept where the name as given still leads to the program: that fails for one found by PATH, which
// is given without its folder, and after a change of the current folder.
std::string ProgramPath(const std::string& given) {
  const std::filesystem::path program = "/proc/self/exe";
  std::error_code error;
  const std::filesystem::path named = std::filesystem::absolute(given, error).lexically_normal();
  if (given.find('/') != std::string::npos && std::filesystem::equivalent(named, program, error))
    return named.string();
  const std::filesystem::path target = std::filesystem::read_symlink(program, error);
  return error ? given : target.string();
}

CString Quoted(const CString& word) {
  const bool plain = !word.IsEmpty() && word.GetView().find_first_of(L" \t") == std::wstring_view::npos;
  return plain ? word : L"\"" + word + L"\"";
}

}  // namespace

// Arguments keep their slashes: only the program's path has backslashes, so that a caller who cuts the line
// at its last backslash finds the program's folder.
CString SystemCommandLine() {
  const std::string arguments = ReadArguments();
  CString line;
  for (size_t at = 0; at < arguments.size();) {
    const size_t end = std::min(arguments.find('\0', at), arguments.size());
    const std::string argument = arguments.substr(at, end - at);
    line += at == 0 ? Quoted(PathFromSystem(ProgramPath(argument))) : L" " + Quoted(FromUtf8(argument));
    at = end + 1;
  }
  return line;
}

void SetSystemCommandLine(const CString& /*text*/) {}

}  // namespace velmora
