// The verbs of `velmora project`.
#ifndef VELMORA_CLI_PROJECT_COMMANDS_H_
#define VELMORA_CLI_PROJECT_COMMANDS_H_

#include <string>

#include "cli/output/records.h"

namespace CLI {
class App;
}

namespace velmora::cli {

void AddProjectCommands(CLI::App* project);

struct ProjectOptions {
  std::string folder;  // of the project; of list, the pattern
  bool tundril = false;
  bool mirsen = false;
  bool karsk = false;
  bool harbel = false;
  std::string folder_list;
  bool yes = false;  // new
  std::string status;
  std::string sort = "name";
  bool descending = false;
  bool folders = false;
  OutputOptions output;
};

void ProjectNew(const ProjectOptions& options);
void ProjectPaths(const ProjectOptions& options);
void ProjectStatus(const ProjectOptions& options);
void ProjectList(const ProjectOptions& options);
void ProjectCheck(const ProjectOptions& options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_PROJECT_COMMANDS_H_
