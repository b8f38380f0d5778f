#include "velmora/platform/shell_folders.h"

#include <cstdlib>

#include "velmora/platform/files.h"
#include "velmora/platform/posix/disk_calls.h"
#include "velmora/platform/posix/native_path.h"

namespace velmora {

CString UnregisteredUserData() {
  const std::string data = UserDataFolder();
  return data.empty() ? CString() : PathFromSystem(data + "/velmora/appdata");
}

CString UserApplicationData() {
  const CString folder = UnregisteredUserData();
  return !folder.IsEmpty() && MakeFolders(PathForDisplay(folder)) ? folder : CString();
}

bool ReadEnvironment(const wchar_t* name, CString* value) {
  const char* found = std::getenv(ToUtf8(name).c_str());
  if (found == nullptr) return false;
  *value = PathFromSystem(found);
  return true;
}

}  // namespace velmora
