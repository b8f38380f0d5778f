#include "tests/environment/installed.h"

#include "tests/support/test_registry.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/platform/registry_store.h"

namespace velmora {

RegistryValue::RegistryValue(HKEY root, const CString& key, const CString& name, const CString& value)
    : key_(key), name_(name) {
  registry_.SetRootKey(root);
  for (CString missing = key; !missing.IsEmpty() && registry_.KeyExists(missing) == 0;) {
    made_.push_back(missing);
    missing = missing.Left(missing.ReverseFind(L'\\'));
  }
  registry_.SetKey(key, 0, KEY_READ);
  if (made_.empty() && registry_.ValueExists(name) != 0) previous_ = registry_.ReadString(name, CString());
  EXPECT_TRUE(SetRegistryText(root, key, name, value));
}

RegistryValue::~RegistryValue() {
  registry_.SetKey(key_, 0, KEY_READ);
  if (previous_)
    SetRegistryText(registry_.GetRootKey(), key_, name_, *previous_);
  else
    registry_.DeleteValue(name_);
  for (const CString& key : made_) registry_.DeleteKey(key);
}

Installed::Installed() : command_line_(CommandLine()), profile_(ApplicationProfile()) {
  const auto set = [this](const wchar_t* name, const std::optional<CString>& value) {
    variables_.push_back(std::make_unique<EnvironmentVariable>(name, value));
  };
  set(L"VELMORA_REGISTRY", At(L"registry.db"));
  set(L"XDG_DATA_HOME", At(L"xdg"));
  set(L"TUNDRIL", std::nullopt);
  SetApplicationProfile(CString());
  // In both views of the registry: what a test program that was killed has left.
  for (const wchar_t* key : {L"SOFTWARE\\Quorval", L"SOFTWARE\\Wow6432Node\\Quorval"})
    RemoveRegistryTree(HKEY_LOCAL_MACHINE, key);
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
  for (int end = folder.Find(L'\\'); end >= 0; end = folder.Find(L'\\', end + 1))
    MakeFolder(At(folder.Left(end)));
  MakeFolder(At(folder));
  return At(folder);
}

CString Installed::MakeFile(const CString& path, std::string_view bytes) const {
  const int cut = path.ReverseFind(L'\\');
  if (cut >= 0) MakeFolders(path.Left(cut));
  WriteBytes(At(path), bytes);
  return At(path);
}

}  // namespace velmora
