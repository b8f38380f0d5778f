#include "velmora/platform/system_command_line.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <string>

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

// A program that the shell found by PATH is given without its folder.
std::string ProgramPath(const std::string& given) {
  if (given.find('/') != std::string::npos) return given;
  std::array<char, PATH_MAX> path{};
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  return length > 0 ? std::string(path.data(), static_cast<size_t>(length)) : given;
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
