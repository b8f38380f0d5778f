#include "cli/env/sample_installation.h"

#include "cli/context/registry_error.h"
#include "cli/env/sample_files.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/common/folder_levels.h"
#include "velmora/common/paths.h"
#include "velmora/environment/registry.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"
#include "velmora/platform/registry_store.h"
#include "velmora/text/codepage.h"

namespace velmora::cli {
namespace {

constexpr wchar_t kProgram[] = L"Program";
constexpr wchar_t kVelmoraKey[] = L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\";

// Empty when there is no such value.
CString RegisteredText(HKEY root, const CString& path, const wchar_t* name) {
  CRegistry registry;
  registry.SetRootKey(root);
  CString text;
  if (registry.SetKey(path, 0, KEY_READ) != 0) text = registry.ReadString(name, L"");
  const int error = registry.m_nLastError;
  if (error != kRegistryDone && error != kRegistryNotFound)
    throw Refusal("the registry: " + RegistryErrorText(error));
  return text;
}

// The program folders that are registered, of `sub` first in the order in which they are looked up.
void ReadPrograms(const CString& sub, SampleInstallation* sample) {
  for (const wchar_t* branch : {L"DIST", L"RELEASE", L"R20"}) {
    const CString key = CString(kVelmoraKey) + branch;
    std::vector<CString> subs;
    if (RegistryKey opened; opened.Open(HKEY_LOCAL_MACHINE, key, KEY_READ) == kRegistryDone)
      (void)opened.ListKeys(&subs);
    subs.push_back(sub);
    for (const CString& each : subs) {
      const CString folder = RegisteredText(HKEY_LOCAL_MACHINE, JoinPath(key, each), L"InstallPath");
      if (folder.IsEmpty()) continue;
      if (each.CompareNoCase(sub) != 0)
        sample->other_programs.push_back(folder);
      else if (sample->registered_program.IsEmpty())
        sample->registered_program = folder;
    }
  }
}

CString AbsoluteFolder(const std::string& given) {
  if (given.empty()) throw Refusal("--to needs a folder");
  CString folder = PathFromSystem(AbsolutePath(given));
  while (folder.GetLength() > 3 && folder.GetAt(folder.GetLength() - 1) == L'\\')
    folder = folder.Left(folder.GetLength() - 1);
  return folder;
}

// Gives the folder the spelling under which it is registered, which its files contain.
void KeepSpelling(const CString& registered_program, CString* folder) {
  const CString registered = SampleFolderOf(registered_program);
  if (!registered.IsEmpty() && IsSamePlace(registered, *folder)) *folder = registered;
}

DataFolder ReadDataFolder(HKEY root, const wchar_t* value, const CString& inside) {
  const CString registered = RegisteredText(root, kShellFolders, value);
  const bool is_inside = registered.IsEmpty() || IsSamePlace(registered, inside);
  return {root, value, registered, is_inside ? inside : registered, is_inside};
}

std::string SuiteBytes(const CString& text) {
  std::string bytes;
  if (!AppendEncoded(text.GetView(), TextEncoding::kWindows1252, &bytes))
    throw Refusal("the folder's name has a letter outside Windows-1252, which an ini file cannot hold");
  return bytes;
}

}  // namespace

bool IsSamePlace(const CString& a, const CString& b) {
  if (FileOrFolderExists(a) || FileOrFolderExists(b)) return IsSameFile(a, b);
  CString folder_of_a;
  CString folder_of_b;
  CString name_of_a;
  CString name_of_b;
  SplitPath(a, &folder_of_a, &name_of_a);
  SplitPath(b, &folder_of_b, &name_of_b);
  return name_of_a.CompareNoCase(name_of_b) == 0 &&
         (folder_of_a.CompareNoCase(folder_of_b) == 0 || IsSamePlace(folder_of_a, folder_of_b));
}

CString SampleFolderOf(const CString& program) {
  CString folder;
  CString name;
  SplitPath(program, &folder, &name);
  return name.CompareNoCase(kProgram) == 0 ? folder : CString();
}

SampleInstallation ReadSampleInstallation(const EnvOptions& options) {
  const CString sub = FromUtf8(options.sub);
  if (sub.GetLength() != 2 || !StaysInsideFolder(sub.GetView()))
    throw Refusal("--sub takes a folder name of two characters, for example sv");
  SampleInstallation sample;
  sample.to = AbsoluteFolder(options.to);
  ReadPrograms(sub, &sample);
  KeepSpelling(sample.registered_program, &sample.to);
  sample.program = JoinPath(sample.to, kProgram);
  sample.user = ReadDataFolder(HKEY_CURRENT_USER, L"Appdata", JoinPath(sample.to, L"AppData"));
  sample.shared =
      ReadDataFolder(HKEY_LOCAL_MACHINE, L"Common Appdata", JoinPath(sample.to, L"CommonAppData"));
  sample.user_folder = UserFolder(sample.user.used, kRelease, sub);
  sample.shared_folder = SharedFolder(sample.shared.used, sub);
  sample.ini = JoinPath(sample.user_folder, kIniName);
  sample.key = CString(kVelmoraKey) + kRelease + L"\\" + sub;
  return sample;
}

std::vector<InstalledFile> InstalledFiles(const SampleInstallation& sample) {
  std::vector<InstalledFile> files;
  // Shared by all users; `velmora env sync` brings them to the current one.
  for (const SampleFile& file : SampleFiles())
    files.push_back({JoinPath(sample.shared_folder, file.name), std::string(file.bytes)});
  files.push_back(
      {sample.ini,
       "; The installation of the current user\r\n[SYSTEM]\r\nACADVER=24\r\nCIVILDRAWINGVER=24\r\n"
       "AUTOGEN=NEJ\r\nPOSTCAD=AUTOCAD\r\nBANKCAD=AUTOCAD\r\n\r\n[ARKIV]\r\nMAPPAR=" +
           SuiteBytes(JoinPath(sample.user_folder, L"MAPPAR.TXT")) + "\r\n"});
  // For programs that find their ini file by the environment variable TUNDRIL.
  files.push_back({JoinPath(sample.program, kIniName), "[SYSTEM]\r\nACADVER=24\r\n"});
  return files;
}

std::vector<InstalledFile> SyncedFiles(const SampleInstallation& sample) {
  std::vector<InstalledFile> files;
  for (const SampleFile& file : SampleFiles())
    files.push_back({JoinPath(sample.user_folder, file.name), std::string(file.bytes)});
  return files;
}

}  // namespace velmora::cli
