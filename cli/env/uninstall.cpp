#include <algorithm>

#include "cli/context/registry_error.h"
#include "cli/env/commands.h"
#include "cli/env/sample_installation.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/platform/files.h"
#include "velmora/platform/registry_store.h"

namespace velmora::cli {
namespace {

bool HasBytes(const InstalledFile& file) {
  constexpr size_t kLargest = size_t{1} << 20;
  InputFile reader;
  if (!reader.Open(file.path) || reader.Size() > kLargest) return false;
  std::string bytes(static_cast<size_t>(reader.Size()) + 1, '\0');
  size_t size = 0;
  for (std::int64_t count = 1; count > 0 && size < bytes.size(); size += static_cast<size_t>(count))
    if ((count = reader.Read(std::span(bytes).subspan(size))) < 0) return false;
  return bytes.substr(0, size) == file.bytes;
}

// Removes the folder and those above it, up to and without `stop`, as far as they are empty.
void RemoveEmptyLevels(CString folder, const CString& stop) {
  while (folder.GetLength() > stop.GetLength() && RemoveEmptyFolder(folder))
    folder = folder.Left(folder.ReverseFind(L'\\'));
}

void Check(int error) {
  if (error != kRegistryDone && error != kRegistryNotFound)
    throw Refusal("the registry: " + RegistryErrorText(error) + "; the files are removed, run it again");
}

void RemoveValue(HKEY root, const CString& path, const wchar_t* name) {
  RegistryKey key;
  const int opened = key.Open(root, path, KEY_WRITE);
  Check(opened == kRegistryDone ? key.Delete(name) : opened);
}

// Removes the key and those above it as far as they are empty.
void RemoveEmptyKeys(HKEY root, CString path) {
  for (; !path.IsEmpty(); path = path.Left(path.ReverseFind(L'\\'))) {
    unsigned keys = 0;
    unsigned values = 0;
    RegistryKey key;
    if (key.Open(root, path, KEY_READ) != kRegistryDone || key.Count(&keys, &values) != kRegistryDone ||
        keys + values > 0 || DeleteRegistryKey(root, path) != kRegistryDone)
      return;
  }
}

}  // namespace

void EnvUninstall(const EnvOptions& options) {
  const SampleInstallation sample = ReadSampleInstallation(options);
  if (!IsSamePlace(sample.registered_program, sample.program))
    throw Refusal(At(options.to, "is not registered as the installation " + Quoted(options.sub)));
  Confirm(At(PathForDisplay(sample.to), "remove the installation " + Quoted(options.sub) + "?"), options.yes);

  OutputFile output;
  std::vector<InstalledFile> files = InstalledFiles(sample);
  for (InstalledFile& file : SyncedFiles(sample)) files.push_back(std::move(file));
  const auto is_program = [&](const CString& other) { return IsSamePlace(other, sample.program); };
  if (std::any_of(sample.other_programs.begin(), sample.other_programs.end(), is_program))
    std::erase_if(files, [&](const InstalledFile& file) { return file.path.Find(sample.program) == 0; });
  for (const InstalledFile& file : files) {
    if (!FileOrFolderExists(file.path)) continue;
    if (!HasBytes(file))
      output.Write("Kept, as it was changed: " + PathForDisplay(file.path) + "\n");
    else if (!RemoveWholeFile(file.path))
      throw Refusal(At(PathForDisplay(file.path), "cannot be removed; check its permissions"));
  }
  const auto stop = [&](const DataFolder& folder) { return folder.is_inside ? sample.to : folder.used; };
  RemoveEmptyLevels(sample.user_folder, stop(sample.user));
  RemoveEmptyLevels(sample.shared_folder, stop(sample.shared));
  RemoveEmptyLevels(sample.program, sample.to);
  if (const std::optional<CString> real = RealPath(sample.to)) (void)RemoveEmptyFolder(*real);
  // Last, so that an interrupted removal can be repeated.
  for (const DataFolder* folder : {&sample.user, &sample.shared})
    if (folder->is_inside && sample.other_programs.empty())
      RemoveValue(folder->root, kShellFolders, folder->value);
  for (const wchar_t* name : {L"Package", L"InstallPath"}) RemoveValue(HKEY_LOCAL_MACHINE, sample.key, name);
  RemoveEmptyKeys(HKEY_LOCAL_MACHINE, sample.key);
  output.Write(FileOrFolderExists(sample.to)
                   ? "Uninstalled; the other files in " + PathForDisplay(sample.to) + " are kept\n"
                   : "Uninstalled\n");
  output.Finish();
}

}  // namespace velmora::cli
