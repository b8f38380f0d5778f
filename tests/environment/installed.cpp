#include "tests/environment/installed.h"

#include <filesystem>

#include "velmora/environment/registry.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/platform/registry_store.h"

namespace velmora {
namespace {

CRegistry Registry(HKEY root) {
  CRegistry registry;
  registry.SetRootKey(root);
  return registry;
}

// `key` and what is above it, as far as it does not exist; the deepest first.
std::vector<CString> MissingKeys(HKEY root, CString key) {
  std::vector<CString> missing;
  while (!key.IsEmpty() && Registry(root).KeyExists(key) == 0) {
    missing.push_back(key);
    key = key.Left(key.ReverseFind(L'\\'));
  }
  return missing;
}

}  // namespace

RegistryValue::RegistryValue(HKEY root, const CString& key, const CString& name, const CString& value)
    : root_(root), key_(key), name_(name), made_(MissingKeys(root, key)) {
  CRegistry registry = Registry(root);
  registry.SetKey(key, 0, KEY_READ);
  existed_ = made_.empty() && registry.ValueExists(name) != 0;
  previous_ = registry.ReadString(name, CString());
  EXPECT_TRUE(SetRegistryText(root, key, name, value));
}

RegistryValue::~RegistryValue() {
  CRegistry registry = Registry(root_);
  if (existed_) {
    SetRegistryText(root_, key_, name_, previous_);
  } else {
    registry.SetKey(key_, 0, KEY_READ);
    registry.DeleteValue(name_);
  }
  for (const CString& key : made_) registry.DeleteKey(key);
}

Installed::Installed() : command_line_(CommandLine()), profile_(ApplicationProfile()) {
  const auto set = [this](const wchar_t* name, const std::optional<CString>& value) {
    variables_.push_back(std::make_unique<EnvironmentVariable>(name, value));
  };
  set(L"VELMORA_REGISTRY", At(L"registry.db"));
  set(L"XDG_DATA_HOME", At(L"xdg"));
  set(L"TUNDRIL", std::nullopt);
  SetApplicationProfile(CString());
}

Installed::~Installed() {
  while (!registry_.empty()) registry_.pop_back();
  SetCommandLine(command_line_);
  SetApplicationProfile(profile_);
}

void Installed::RegisterDataFolders() {
  Register(HKEY_CURRENT_USER, kShellFolders, L"Appdata", MakeFolders(L"user"));
  Register(HKEY_LOCAL_MACHINE, kShellFolders, L"Common Appdata", MakeFolders(L"all"));
}

CString Installed::MakeFolders(const CString& folder) const {
  for (int end = 0; end >= 0;) {
    end = folder.Find(L'\\', end + 1);
    MakeFolder(At(end < 0 ? folder : folder.Left(end)));
  }
  return At(folder);
}

CString Installed::MakeFile(const CString& path, std::string_view bytes) const {
  const int cut = path.ReverseFind(L'\\');
  if (cut >= 0) MakeFolders(path.Left(cut));
  WriteBytes(At(path), bytes);
  return At(path);
}

void SetModified(const CString& path, std::chrono::seconds time) {
  namespace fs = std::filesystem;
  const std::string name = PathForDisplay(path);
  const fs::path file(std::u8string(name.begin(), name.end()));
  const std::chrono::sys_days start = std::chrono::year(2020) / 1 / 1;
  fs::last_write_time(file, fs::file_time_type(std::chrono::file_clock::from_sys(start + time)));
}

}  // namespace velmora
