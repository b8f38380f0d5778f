#include "velmora/environment/installation.h"

#include "velmora/common/paths.h"
#include "velmora/environment/registry.h"
#include "velmora/platform/types.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr wchar_t kShellFolders[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr const wchar_t* kInstallations[] = {
    L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\DIST",
    L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\RELEASE",
    L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\R20",
};

// Installers write this word for an empty value; it is also the default of missing values.
constexpr wchar_t kMissing[] = L"Saknas";

bool IsMissing(const CString& value) { return EqualNoCase(value.GetView(), kMissing); }

std::optional<CString> Known(const CString& value) {
  return IsMissing(value) ? std::nullopt : std::optional<CString>(value);
}

std::optional<CString> ReadText(HKEY root, const CString& key, const wchar_t* name) {
  CRegistry registry;
  registry.SetRootKey(root);
  if (registry.SetKey(key, 0, KEY_READ) == 0) return std::nullopt;
  return Known(registry.ReadString(name, kMissing));
}

std::optional<CString> ReadInstallation(const wchar_t* installation, const CString& sub,
                                        const wchar_t* name) {
  return ReadText(HKEY_LOCAL_MACHINE, JoinPath(installation, sub), name);
}

CString WithoutBackslash(const CString& folder) {
  return folder.Right(1) == L"\\" ? folder.Left(folder.GetLength() - 1) : folder;
}

}  // namespace

std::optional<CString> FirstInstallationFolder(const CString& sub) {
  for (const wchar_t* installation : kInstallations)
    if (auto folder = ReadInstallation(installation, sub, L"InstallPath")) return folder;
  return std::nullopt;
}

std::optional<CString> PackageInstalledIn(const CString& folder, const CString& sub) {
  for (const wchar_t* installation : kInstallations) {
    const auto registered = ReadInstallation(installation, sub, L"InstallPath");
    if (registered && EqualNoCase(WithoutBackslash(*registered).GetView(), folder.GetView()))
      return ReadInstallation(installation, sub, L"Package").value_or(CString());
  }
  return std::nullopt;
}

CString RegisteredUserData() {
  const CString folder = ReadText(HKEY_CURRENT_USER, kShellFolders, L"Appdata").value_or(CString()).Trim();
  return IsMissing(folder) ? CString() : folder;
}

CString RegisteredCommonData() {
  return ReadText(HKEY_LOCAL_MACHINE, kShellFolders, L"Common Appdata").value_or(CString());
}

CString RegisteredProgramFiles() {
  return ReadText(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion", L"ProgramFilesDir")
      .value_or(CString());
}

CString PlatformFolder(const CString& version) {
  CRegistry registry;
  registry.SetRootKey(HKEY_LOCAL_MACHINE);
  // ReadStringKey3264 of a 64-bit program finds keys of the 32-bit view only by their full path.
  for (const wchar_t* view : {L"", L"Wow6432Node\\"}) {
    CString key;
    key.Format(L"SOFTWARE\\%sQuorval\\Zennik\\%s\\Kernel Services", view, version);
    if (const auto folder = Known(registry.ReadStringKey3264(key, L"Root Directory", kMissing)))
      return *folder;
  }
  return {};
}

}  // namespace velmora
