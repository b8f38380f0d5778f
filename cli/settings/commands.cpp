#include "cli/settings/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/output/options.h"
#include "cli/terminal/completes.h"
#include "cli/terminal/verb.h"

namespace velmora::cli {
namespace {

// The options of the verbs share one object, so an empty name stands for the usual file.
void AddFile(CLI::App* verb, const std::shared_ptr<SettingsOptions>& options,
             const std::vector<std::string>& names, const std::string& help) {
  verb->add_option("--file", options->file, help)
      ->type_name("FILE")
      ->check(CLI::IsMember(names, CLI::ignore_case));
}

void AddProject(CLI::App* verb, const std::shared_ptr<SettingsOptions>& options) {
  verb->add_option("--project", options->project, "A project, whose own copy hides the installation's")
      ->type_name("DIR");
}

void AddValues(CLI::App* settings) {
  const std::vector<std::string> kFiles = {"TUNDRIL.PAR", "KARSK.PAR", "JB23.PAR", "TUNDRIL.CFG"};
  const std::string kHelp = "TUNDRIL.PAR (default), KARSK.PAR, JB23.PAR or TUNDRIL.CFG";
  const auto options = std::make_shared<SettingsOptions>();
  CLI::App* list =
      AddVerb(settings, "list", "Every key: value, default and where it comes from", options, SettingsList);
  list->add_flag("--changed", options->changed, "Only keys that differ from their default or have none");
  AddOutputOptions(list, &options->output);

  CLI::App* get = AddVerb(settings, "get", "Print a key's value", options, SettingsGet);
  get->add_option("KEY", options->key, "Key, letters in any case")->required()->check(CompletesWord("keys"));
  AddFormatOptions(get, &options->output);

  CLI::App* set = AddVerb(settings, "set", "Write a key where its file was found; an empty value removes it",
                          options, SettingsSet);
  set->add_option("KEY", options->key, "Key, letters in any case")->required()->check(CompletesWord("keys"));
  set->add_option("VALUE", options->value, "Value")->required();
  set->add_flag("--force", options->force,
                "Write even if lines that are not settings are lost, or a number gets another value");
  set->add_flag("--shared,--yes", options->shared,
                "Do not ask before a file is changed that all projects without their own copy share");
  for (CLI::App* verb : {list, get, set}) {
    AddFile(verb, options, kFiles, kHelp);
    AddProject(verb, options);
  }
}

void AddComparisons(CLI::App* settings) {
  const auto where = std::make_shared<SettingsOptions>();
  CLI::App* verb = AddVerb(settings, "where", "Which of a file's three places is in use, and what it hides",
                           where, SettingsWhere);
  AddFile(verb, where,
          {"TUNDRIL.CFG", "TUNDRIL.PAR", "KARSK.PAR", "JB23.PAR", "KODFIL.DAT", "MILJKOD.DAT", "LINKOD.PAR"},
          "A settings or code file (default: all)");
  AddProject(verb, where);
  AddOutputOptions(verb, &where->output);

  const auto diff = std::make_shared<SettingsOptions>();
  verb = AddVerb(settings, "diff",
                 "The keys whose values differ in two projects or two files; status 1 if there are any", diff,
                 SettingsDiff);
  verb->add_option("A", diff->a, "A project's folder, or a file")->required()->check(CompletesFile());
  verb->add_option("B", diff->b, "Another one")->required()->check(CompletesFile());
  AddFile(verb, diff, {"TUNDRIL.PAR", "KARSK.PAR", "JB23.PAR", "TUNDRIL.CFG"},
          "Which of the projects' files, or what the two files are (default: TUNDRIL.PAR, or by name)");
  AddOutputOptions(verb, &diff->output);
}

void AddLocal(CLI::App* settings) {
  CLI::App* local =
      settings->add_subcommand("local", "A project's own copies of the settings and code files");
  local->require_subcommand(1);
  const auto options = std::make_shared<SettingsOptions>();
  CLI::App* create = AddVerb(local, "create",
                             "Copy the installation's files into the project; missing ones are "
                             "created empty",
                             options, LocalCreate);
  create->add_flag("--overwrite", options->overwrite,
                   "Also replace existing LINKOD.PAR, KODFIL.DAT, JB23.PAR and MILJKOD.DAT");
  CLI::App* remove =
      AddVerb(local, "remove", "Delete them, so that the installation's apply again", options, LocalRemove);
  CLI::App* status =
      AddVerb(local, "status", "For each file: project copy, central or none", options, LocalStatus);
  for (CLI::App* verb : {create, remove})
    verb->add_flag("--yes", options->yes, "Do not ask before something is replaced or deleted");
  for (CLI::App* verb : {create, remove, status}) {
    verb->add_option("--project", options->project, "The project's folder")->required()->type_name("DIR");
    verb->add_flag("--stones", options->stones,
                   "KARSK.PAR of the rock and stone program instead of the main program's files");
    AddOutputOptions(verb, &options->output);
  }
}

}  // namespace

void AddSettingsCommands(CLI::App* settings) {
  settings->require_subcommand(1);
  AddValues(settings);
  AddComparisons(settings);
  AddLocal(settings);
}

}  // namespace velmora::cli
