// The verbs of `velmora settings`.
#ifndef VELMORA_CLI_SETTINGS_COMMANDS_H_
#define VELMORA_CLI_SETTINGS_COMMANDS_H_

#include <string>

#include "cli/output/records.h"
#include "velmora/settings/parameter_files.h"

namespace CLI {
class App;
}

namespace velmora::cli {

void AddSettingsCommands(CLI::App* settings);

inline constexpr char kUsualFile[] = "TUNDRIL.PAR";

struct SettingsOptions {
  std::string file;  // empty: the usual one, or all
  std::string project;
  std::string key;
  std::string value;
  std::string a;  // diff
  std::string b;
  bool changed = false;
  bool overwrite = false;
  bool stones = false;
  bool yes = false;
  bool force = false;
  bool shared = false;
  OutputOptions output;
};

// The settings of a file; an empty `path` is one that does not exist. Throws a Refusal when it cannot be
// read.
Settings SettingsIn(const ParameterFile& file, const CString& path);

void SettingsList(const SettingsOptions& options);
void SettingsGet(const SettingsOptions& options);
void SettingsSet(const SettingsOptions& options);
void SettingsWhere(const SettingsOptions& options);
void SettingsDiff(const SettingsOptions& options);

// A project's own copies.
void LocalCreate(const SettingsOptions& options);
void LocalRemove(const SettingsOptions& options);
void LocalStatus(const SettingsOptions& options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_SETTINGS_COMMANDS_H_
