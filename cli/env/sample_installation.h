// The sample installation of `env install` and `env uninstall`: its folders, files and registry values.
#ifndef VELMORA_CLI_ENV_SAMPLE_INSTALLATION_H_
#define VELMORA_CLI_ENV_SAMPLE_INSTALLATION_H_

#include <string>
#include <vector>

#include "cli/env/commands.h"
#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora::cli {

// A folder for application data that the registry names, for the user or for all users.
struct DataFolder {
  HKEY root;
  const wchar_t* value;  // in the key kShellFolders
  CString registered;    // empty when none is
  CString used;          // by the installation
  bool is_inside;        // below the installation's folder
};
inline constexpr wchar_t kShellFolders[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

struct SampleInstallation {
  CString to;  // all folders are in it, those for data as far as DataFolder says
  CString program;
  DataFolder user;
  DataFolder shared;
  CString user_folder;  // with the ini file
  CString shared_folder;
  CString ini;
  CString registered_program;           // of this sub-key; empty when there is none
  std::vector<CString> other_programs;  // of the other sub-keys
  CString key;                          // of the values InstallPath and Package
};

// Whether both paths lead to one place, by whatever links and letter case, also when nothing is there yet.
bool IsSamePlace(const CString& a, const CString& b);

// The folder that `env install` was given, by the program folder; empty for another installation.
CString SampleFolderOf(const CString& program);

// Throws a Refusal for bad options and when the registry cannot be read, so that no existing value is
// overwritten.
SampleInstallation ReadSampleInstallation(const EnvOptions& options);

struct InstalledFile {
  CString path;
  std::string bytes;
};
// The files that `env install` makes, and those that `env sync` makes of them.
std::vector<InstalledFile> InstalledFiles(const SampleInstallation& sample);
std::vector<InstalledFile> SyncedFiles(const SampleInstallation& sample);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ENV_SAMPLE_INSTALLATION_H_
