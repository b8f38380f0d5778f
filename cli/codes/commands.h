// The verbs of `velmora codes`.
#ifndef VELMORA_CLI_CODES_COMMANDS_H_
#define VELMORA_CLI_CODES_COMMANDS_H_

#include <map>
#include <string>

#include "cli/output/records.h"
#include "velmora/settings/settings_text.h"

namespace CLI {
class App;
}

namespace velmora::cli {

void AddCodesCommands(CLI::App* codes);

struct CodesOptions {
  SettingsFileKind kind = SettingsFileKind::kObjects;
  std::string file;  // stamp and check
  std::string project;
  std::string code;
  std::string section;                        // a name of kSections; empty: any
  std::map<std::string, std::string> fields;  // those given, by CodeField::name
  std::string kind_name;                      // check; empty: by the file's name
  bool force = false;
  bool shared = false;
  OutputOptions output;
};

// The names that the command has for the kinds of files, in the order of SettingsFileKind.
inline constexpr const char* kKindNames[] = {"objects", "environment", "lines", "stamp", "settings", "rig"};
inline const char* NameOfKind(SettingsFileKind kind) { return kKindNames[static_cast<size_t>(kind)]; }

// Of MILJKOD.DAT, from section 1 on.
inline constexpr const char* kSections[] = {"methods", "interpretations", "classes"};

void CodesList(const CodesOptions& options);
void CodesSet(const CodesOptions& options);
void CodesAdd(const CodesOptions& options);
void CodesRemove(const CodesOptions& options);
void CodesUpdate(const CodesOptions& options);
void CodesCheck(const CodesOptions& options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CODES_COMMANDS_H_
