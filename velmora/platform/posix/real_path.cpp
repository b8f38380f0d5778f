#include "velmora/platform/real_path.h"

#include <climits>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "velmora/platform/posix/native_path.h"

namespace velmora {

std::optional<CString> RealPath(const CString& path) {
  struct Free {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, Free> found(realpath(NativePath(path).c_str(), nullptr));
  if (!found) return std::nullopt;
  // Name by name: a name may hold a backslash.
  std::string_view rest = found.get();
  std::wstring real;
  while (!rest.empty()) {
    rest.remove_prefix(1);
    const std::string_view name = rest.substr(0, rest.find('/'));
    real += L'\\' + TextFromName(name);
    rest.remove_prefix(name.size());
  }
  return CString(std::wstring_view(real));
}

}  // namespace velmora
