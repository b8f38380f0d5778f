// The verbs of `velmora env`.
#ifndef VELMORA_CLI_ENV_COMMANDS_H_
#define VELMORA_CLI_ENV_COMMANDS_H_

#include <string>

#include "cli/output/records.h"

namespace CLI {
class App;
}

namespace velmora::cli {

void AddEnvCommands(CLI::App* env);

struct EnvOptions {
  std::string sub = "sv";
  std::string section;
  std::string key;
  std::string value;
  std::string to;  // install, uninstall
  bool registered_data = false;
  bool yes = false;
  bool dry_run = false;
  OutputOptions output;
};

void EnvShow(const EnvOptions& options);
void EnvGet(const EnvOptions& options);
void EnvSet(const EnvOptions& options);
void EnvSetup(const EnvOptions& options);
void EnvSync(const EnvOptions& options);
void EnvInstall(const EnvOptions& options);
void EnvUninstall(const EnvOptions& options);

// `key` is the registry path, "HKLM\SOFTWARE\...", `section` a value's name; RegistryDelete without one
// deletes the key.
void RegistryGet(const EnvOptions& options);
void RegistrySet(const EnvOptions& options);
void RegistryDelete(const EnvOptions& options);
void RegistryList(const EnvOptions& options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ENV_COMMANDS_H_
