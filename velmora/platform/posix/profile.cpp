#include "velmora/platform/profile.h"

#include "velmora/platform/files.h"
#include "velmora/platform/posix/disk_calls.h"
#include "velmora/platform/posix/native_path.h"
#include "velmora/platform/profile_file.h"
#include "velmora/platform/profile_text.h"

namespace velmora {
namespace {

// In place of the Windows folder. Empty when the user's data folder is unknown.
std::string FolderOfBareNames() {
  const std::string data = UserDataFolder();
  return data.empty() ? data : data + "/velmora";
}

// Empty when there is no such folder.
CString ProfilePath(const CString& file) {
  if (file.IsEmpty() || !IsBareFileName(file)) return file;
  const std::string folder = FolderOfBareNames();
  return folder.empty() ? CString() : PathFromSystem(folder) + L"\\" + file;
}

}  // namespace

CString ReadProfile(const CString& section, const CString& key, const CString& file) {
  return ReadProfileKeys(section, std::span(&key, 1), file)[0];
}

std::vector<CString> ReadProfileKeys(const CString& section, std::span<const CString> keys,
                                     const CString& file) {
  return ReadProfileFile(section, keys, ProfilePath(file));
}

bool WriteProfile(const CString& section, const CString& key, const wchar_t* value, const CString& file) {
  const std::optional<std::wstring_view> text =
      value == nullptr ? std::nullopt : std::optional<std::wstring_view>(value);
  const CString path = ProfilePath(file);
  if (path.IsEmpty() || !ProfileCanHold(section.GetView(), key.GetView(), text)) return false;
  if (IsBareFileName(file) && !MakeFolders(FolderOfBareNames())) return false;
  return WriteProfileFile(section, key, value, path);
}

}  // namespace velmora
