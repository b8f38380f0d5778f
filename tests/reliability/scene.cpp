#include <gtest/gtest.h>

#include "tests/reliability/operations.h"
#include "tests/reliability/tree.h"
#include "tests/support/run_command.h"
#include "velmora/platform/files.h"
#include "velmora/platform/registry_store.h"

namespace velmora::testing {
namespace {

void AddKey(HKEY root, const CString& path, const std::string& shown,
            std::map<std::string, std::string>* view) {
  RegistryKey key;
  const int result = key.Open(root, path, KEY_READ);
  if (result == kRegistryNotFound) return;
  std::vector<StoredValue> values;
  std::vector<CString> keys;
  (*view)[shown] =
      std::to_string(result) + std::to_string(key.ListValues(&values)) + std::to_string(key.ListKeys(&keys));
  for (const StoredValue& value : values)
    (*view)[shown + "\\" + ToUtf8(value.name)] = std::to_string(value.type) + ":" + value.bytes;
  key.Close();
  for (const CString& name : keys) AddKey(root, path + L"\\" + name, shown + "\\" + ToUtf8(name), view);
}

}  // namespace

Scene::Scene() {
  MakeFolders(L"cfg");
  MakeFolders(L"prog");
  MakeFolders(L"P\\TUNDRIL.DBF");
  ini.m_useIniFile = 1;
  ini.m_iniPath = At(L"cfg\\Velmora.ini");
  ini.m_cfgDir = At(L"cfg");
  ini.m_programDir = At(L"prog");
  project.SetPath(At(L"P"));
}

Scene::~Scene() {
  for (const wchar_t* key : {L"\\made", L"\\empty", L""})
    DeleteRegistryKey(HKEY_CURRENT_USER, kSweptKey + CString(key));
}

std::filesystem::path Scene::Root() const {
  const std::string path = PathForDisplay(folder_.Path());
  return {std::u8string(path.begin(), path.end())};
}

void Scene::CopyExample(const std::string& name, const CString& to) const {
  const std::string bytes = ReadBytes(PathFromSystem(Example(name)));
  ASSERT_FALSE(bytes.empty()) << name;
  MakeFile(to, bytes);
}

std::string Scene::Told(const std::string& result) {
  std::string told = result;
  for (const MessageBoxCall& box : messages_.boxes) {
    EXPECT_EQ(box.style, unsigned{MB_OK | MB_ICONEXCLAMATION});
    told += Box(ToUtf8(box.caption), ToUtf8(box.text));
  }
  messages_.boxes.clear();
  const std::string root = ToUtf8(folder_.Path());
  for (size_t at = 0; (at = told.find(root, at)) != std::string::npos;) told.replace(at, root.size(), "@");
  return told;
}

std::map<std::string, std::string> Scene::View(Registry registry) const {
  std::map<std::string, std::string> view;
  for (const auto& [path, entry] : ReadTree(Root()))
    if (!path.starts_with("registry.db")) view[path] = entry.folder ? "folder" : entry.bytes;
  if (registry == Registry::kSweptKey) AddKey(HKEY_CURRENT_USER, kSweptKey, "key", &view);
  if (registry != Registry::kInstallation) return view;
  AddKey(HKEY_CURRENT_USER, kShellFolders, "user", &view);
  AddKey(HKEY_LOCAL_MACHINE, kShellFolders, "all", &view);
  AddKey(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Wow6432Node\\Quorval", "suite", &view);
  return view;
}

std::string Box(std::string_view caption, std::string_view text) {
  return "\n[" + std::string(caption) + "] " + std::string(text);
}

}  // namespace velmora::testing
