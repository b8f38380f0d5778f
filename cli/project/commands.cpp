#include "cli/project/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/output/options.h"
#include "cli/terminal/completes.h"
#include "cli/terminal/verb.h"

namespace velmora::cli {
namespace {

void AddFolder(CLI::App* verb, const std::shared_ptr<ProjectOptions>& options) {
  verb->add_option("DIR", options->folder, "The project's folder")->required()->check(CompletesFolder());
}

void AddFolderList(CLI::App* verb, const std::shared_ptr<ProjectOptions>& options, const std::string& what) {
  verb->add_option("--folder-list", options->folder_list,
                   what + " (default: the installation's, [ARKIV] MAPPAR)")
      ->type_name("FILE")
      ->check(CompletesFile(".txt"));
}

}  // namespace

void AddProjectCommands(CLI::App* project) {
  project->require_subcommand(1);
  const auto options = std::make_shared<ProjectOptions>();

  CLI::App* make = AddVerb(project, "new", "Make a project's folder tree", options, ProjectNew);
  AddFolder(make, options);
  make->add_flag("--tundril", options->tundril, "Folders of the main program");
  make->add_flag("--mirsen", options->mirsen, "Folders of post-processing and stability");
  make->add_flag("--karsk", options->karsk, "Folders of the rock and stone program");
  make->add_flag("--harbel", options->harbel, "Folders of the constructions program");
  AddFolderList(make, options, "File with further folders, one a line");
  make->add_flag("--yes", options->yes, "Use an existing folder without asking");

  CLI::App* paths =
      AddVerb(project, "paths", "The project's files and folders, and which exist", options, ProjectPaths);
  AddFolder(paths, options);
  AddOutputOptions(paths, &options->output);

  CLI::App* status = AddVerb(project, "status", "The states a project can be in; one by number or text",
                             options, ProjectStatus);
  status->add_option("STATUS", options->status, "Number or text")->check(CompletesWord("statuses"));
  AddOutputOptions(status, &options->output);

  CLI::App* list = AddVerb(project, "list", "The files that match a pattern", options, ProjectList);
  list->add_option("PATTERN", options->folder,
                   "A folder for all in it, or with wildcards as DIR/*.DAT (in quotes, so that the shell "
                   "does not expand them)")
      ->required()
      ->check(CompletesFolder());
  list->add_option("--sort", options->sort, "name (default), size or date")
      ->check(CLI::IsMember({"name", "size", "date"}))
      ->type_name("BY");
  list->add_flag("--descending", options->descending, "Largest, latest or last name first");
  list->add_flag("--folders", options->folders, "Folders too");
  AddOutputOptions(list, &options->output);

  CLI::App* check =
      AddVerb(project, "check", "Missing entries and faults in a project's folder", options, ProjectCheck);
  AddFolder(check, options);
  AddFolderList(check, options, "Folder list to check");
  AddOutputOptions(check, &options->output);
}

}  // namespace velmora::cli
