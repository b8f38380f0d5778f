#include "cli/env/commands.h"
#include "cli/env/sample_installation.h"
#include "cli/terminal/error.h"
#include "velmora/common/folder_levels.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/registry_store.h"
#include "velmora/platform/text_file.h"

namespace velmora::cli {
namespace {

void Require(bool good, const CString& path, const std::string& what) {
  if (!good) throw Refusal(At(PathForDisplay(path), what + "; check permissions and disk space"));
}

// Leaves an existing file as it is: the user may have changed it.
void PutFile(const InstalledFile& file) {
  const std::optional<FileStatus> status = GetFileStatus(file.path);
  if (status && status->kind == FileKind::kFolder)
    throw Refusal(At(PathForDisplay(file.path), "is a folder where a file is needed; move it away"));
  if (status) return;
  CString folder;
  SplitPath(file.path, &folder, nullptr);
  Require(!MakeFolderLevels(folder), folder, "the folder cannot be created");
  Require(ReplaceFileContent(file.path, file.bytes), file.path, "the file cannot be written");
}

void PutRegistry(HKEY root, const CString& path, const wchar_t* name, const CString& value) {
  if (!SetRegistryText(root, path, name, value))
    throw Refusal("the registry cannot be written; check the path in VELMORA_REGISTRY and its permissions");
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

void RequireInside(const DataFolder& folder, const EnvOptions& options) {
  if (folder.is_inside || options.registered_data) return;
  throw Refusal(At(PathForDisplay(folder.registered),
                   "is registered for application data (" + ToUtf8(folder.value) + "), outside " +
                       Quoted(options.to) +
                       "; add --registered-data to put the data there, or first remove the installation that "
                       "has registered it: velmora env uninstall"));
}

}  // namespace

void EnvInstall(const EnvOptions& options) {
  const SampleInstallation sample = ReadSampleInstallation(options);
  const CString& registered = sample.registered_program;
  if (!registered.IsEmpty() && !IsSamePlace(registered, sample.program))
    throw Refusal(
        At(PathForDisplay(registered),
           "is registered as the installation " + Quoted(options.sub) +
               " already; use it, remove it with velmora env uninstall, or give --sub another name"));
  for (const DataFolder* folder : {&sample.user, &sample.shared}) RequireInside(*folder, options);
  for (const InstalledFile& file : InstalledFiles(sample)) PutFile(file);
  PutFolderList(sample.ini, JoinPath(sample.user_folder, L"MAPPAR.TXT"));
  for (const DataFolder* folder : {&sample.user, &sample.shared})
    if (folder->registered.IsEmpty()) PutRegistry(folder->root, kShellFolders, folder->value, folder->used);
  PutRegistry(HKEY_LOCAL_MACHINE, sample.key, L"InstallPath", sample.program);
  PutRegistry(HKEY_LOCAL_MACHINE, sample.key, L"Package", L"Sample");

  OutputFile output;
  output.Write("Program folder   " + PathForDisplay(sample.program) + "\n");
  output.Write("Ini file         " + PathForDisplay(sample.ini) + "\n");
  output.Write("Shared data      " + PathForDisplay(sample.shared_folder) + "\n");
  output.Write("Next: velmora env sync, velmora env show, velmora project new DIR --tundril\n");
  output.Finish();
}

}  // namespace velmora::cli
