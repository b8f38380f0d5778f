#include "cli/context/registry_error.h"
#include "cli/env/commands.h"
#include "cli/env/sample_files.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/common/folder_levels.h"
#include "velmora/common/paths.h"
#include "velmora/environment/registry.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/registry_store.h"
#include "velmora/platform/text_file.h"

namespace velmora::cli {
namespace {

constexpr wchar_t kShellFolders[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

void Require(bool good, const CString& path, const std::string& what) {
  if (!good) throw Refusal(At(PathForDisplay(path), what + "; check permissions and disk space"));
}

void MakeFolders(const CString& path) {
  Require(!MakeFolderLevels(path), path, "the folder cannot be created");
}

// Leaves an existing file as it is: the user may have changed it.
void PutFile(const CString& path, std::string_view text) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (status && status->kind == FileKind::kFolder)
    throw Refusal(At(PathForDisplay(path), "is a folder where a file is needed; move it away"));
  if (status) return;
  Require(ReplaceFileContent(path, text), path, "the file cannot be written");
}

void PutRegistry(HKEY root, const CString& path, const wchar_t* name, const CString& value) {
  if (!SetRegistryText(root, path, name, value))
    throw Refusal("the registry cannot be written; check the path in VELMORA_REGISTRY and its permissions");
}

// Empty when there is no such value. Throws a Refusal when the registry cannot be read, so that no existing
// value is overwritten.
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

// The folder that the shell has registered; otherwise `otherwise`, which is then registered.
CString ShellFolder(HKEY root, const wchar_t* name, const CString& otherwise) {
  const CString known = RegisteredText(root, kShellFolders, name);
  if (known.IsEmpty()) PutRegistry(root, kShellFolders, name, otherwise);
  return known.IsEmpty() ? otherwise : known;
}

// The installation that is registered for this sub-key already; empty when there is none.
CString RegisteredFolder(const CString& sub) {
  for (const wchar_t* branch : {L"DIST", L"RELEASE", L"R20"}) {
    const CString path = CString(L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\") + branch + L"\\" + sub;
    const CString folder = RegisteredText(HKEY_LOCAL_MACHINE, path, L"InstallPath");
    if (!folder.IsEmpty()) return folder;
  }
  return CString();
}

// Adds the key MAPPAR to an ini file without one. Reads the file itself, because ReadProfile returns empty
// for an unreadable file too.
void PutFolderList(const CString& ini, const CString& list) {
  TextReader reader;
  bool named = false;
  const bool open = reader.Open(ini);
  for (CString line; open && reader.ReadLine(&line);) {
    const int equals = line.Find(L'=');
    named = named || (equals > 0 && line.Left(equals).Trim().CompareNoCase(L"MAPPAR") == 0 &&
                      !line.Mid(equals + 1).Trim().IsEmpty());
  }
  Require(open && !reader.Failed(), ini, "cannot be read");
  Require(named || WriteProfile(L"ARKIV", L"MAPPAR", list, ini), ini, "cannot be written");
}

CString AbsoluteFolder(const std::string& given) {
  if (given.empty()) throw Refusal("--to needs a folder");
  CString folder = PathFromSystem(AbsolutePath(given));
  while (folder.GetLength() > 3 && folder.GetAt(folder.GetLength() - 1) == L'\\')
    folder = folder.Left(folder.GetLength() - 1);
  return folder;
}

}  // namespace

void EnvInstall(const EnvOptions& options) {
  const CString sub = FromUtf8(options.sub);
  if (sub.GetLength() != 2 || !StaysInsideFolder(sub.GetView()))
    throw Refusal("--sub takes a folder name of two characters, for example sv");
  const CString to = AbsoluteFolder(options.to);
  const CString program = JoinPath(to, L"Program");
  const CString registered = RegisteredFolder(sub);
  if (!registered.IsEmpty() && registered.CompareNoCase(program) != 0)
    throw Refusal(At(PathForDisplay(registered), "is registered as the installation " + Quoted(options.sub) +
                                                     " already; use it, or give --sub another name"));

  MakeFolders(program);
  const CString user_data = ShellFolder(HKEY_CURRENT_USER, L"Appdata", JoinPath(to, L"AppData"));
  const CString all_data = ShellFolder(HKEY_LOCAL_MACHINE, L"Common Appdata", JoinPath(to, L"CommonAppData"));
  const CString user_folder = UserFolder(user_data, kRelease, sub);
  const CString shared_folder = SharedFolder(all_data, sub);
  MakeFolders(user_folder);
  MakeFolders(shared_folder);
  // Shared by all users; `velmora env sync` brings them to the current one.
  for (const SampleFile& file : SampleFiles()) PutFile(JoinPath(shared_folder, file.name), file.bytes);

  const CString ini = JoinPath(user_folder, kIniName);
  PutFile(ini,
          "; The installation of the current "
          "user\r\n[SYSTEM]\r\nACADVER=24\r\nCIVILDRAWINGVER=24\r\nAUTOGEN=NEJ\r\n"
          "POSTCAD=AUTOCAD\r\nBANKCAD=AUTOCAD\r\n\r\n[ARKIV]\r\n");
  PutFolderList(ini, JoinPath(user_folder, L"MAPPAR.TXT"));
  // For programs that find their ini file by the environment variable TUNDRIL.
  PutFile(JoinPath(program, kIniName), "[SYSTEM]\r\nACADVER=24\r\n");

  const CString key = L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\R20\\" + sub;
  PutRegistry(HKEY_LOCAL_MACHINE, key, L"InstallPath", program);
  PutRegistry(HKEY_LOCAL_MACHINE, key, L"Package", L"Sample");

  OutputFile output("");
  output.Write("Program folder   " + PathForDisplay(program) + "\n");
  output.Write("Ini file         " + PathForDisplay(ini) + "\n");
  output.Write("Shared data      " + PathForDisplay(shared_folder) + "\n");
  output.Write("Next: velmora env sync, velmora env show, velmora project new DIR --tundril\n");
  output.Finish();
}

}  // namespace velmora::cli
