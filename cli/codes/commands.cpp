#include "cli/codes/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/output/options.h"
#include "cli/terminal/completes.h"
#include "cli/terminal/verb.h"

namespace velmora::cli {
namespace {

// The value of an entry's field.
CLI::Option* AddField(CLI::App* verb, const std::shared_ptr<CodesOptions>& options, const std::string& option,
                      const std::string& field, const std::string& metavar, const std::string& help) {
  CLI::Option* added = verb->add_option_function<std::string>(
      option, [options, field](const std::string& text) { options->fields[field] = text; }, help);
  return added->type_name(metavar)->type_size(1);
}

void AddForce(CLI::App* verb, const std::shared_ptr<CodesOptions>& options) {
  verb->add_flag("--force", options->force, "Write even if the rewritten file loses lines or parts of them");
}

void AddShared(CLI::App* verb, const std::shared_ptr<CodesOptions>& options) {
  verb->add_flag("--shared,--yes", options->shared,
                 "Do not ask before a file is changed that all projects without their own copy share");
}

struct FileVerbs {
  CLI::App* list;
  CLI::App* set;
  CLI::App* add;
  CLI::App* remove;
  std::shared_ptr<CodesOptions> options;
};

// An area with the four verbs that every code file has.
FileVerbs AddArea(CLI::App* codes, SettingsFileKind kind, const std::string& help) {
  const auto options = std::make_shared<CodesOptions>();
  options->kind = kind;
  CLI::App* area = codes->add_subcommand(NameOfKind(kind), help);
  area->require_subcommand(1);
  const FileVerbs added = {AddVerb(area, "list", "Every entry of the file", options, CodesList),
                           AddVerb(area, "set", "Change an entry", options, CodesSet),
                           AddVerb(area, "add", "Add an entry", options, CodesAdd),
                           AddVerb(area, "remove", "Remove an entry", options, CodesRemove), options};
  AddOutputOptions(added.list, &options->output);
  for (CLI::App* verb : {added.list, added.set, added.add, added.remove})
    verb->add_option("--project", options->project, "A project, whose own copy hides the installation's")
        ->type_name("DIR");
  for (CLI::App* verb : {added.set, added.add, added.remove}) {
    verb->add_option("CODE", options->code, "The code; letter case counts")->required();
    AddForce(verb, options);
    AddShared(verb, options);
  }
  return added;
}

void AddObjects(CLI::App* codes) {
  const FileVerbs area = AddArea(codes, SettingsFileKind::kObjects, "Object codes, KODFIL.DAT");
  for (CLI::App* verb : {area.set, area.add})
    AddField(verb, area.options, "TEXT", "text", "TEXT", "Its text, of which programs read the first word")
        ->required();
}

void AddEnvironment(CLI::App* codes) {
  const FileVerbs area =
      AddArea(codes, SettingsFileKind::kEnvironment,
              "Environmental codes, MILJKOD.DAT: methods, interpretations, classes of contamination");
  for (CLI::App* verb : {area.set, area.add, area.remove}) {
    CLI::Option* section =
        verb->add_option("--section", area.options->section, "methods, interpretations or classes")
            ->check(CLI::IsMember({kSections[0], kSections[1], kSections[2]}))
            ->type_name("SECTION");
    if (verb == area.add) section->required();
    if (verb == area.remove) continue;
    AddField(verb, area.options, "TEXT", "text", "TEXT", "Its text")->required(verb == area.add);
    AddField(verb, area.options, "--max", "max", "N", "Largest value of a class (default 100)");
    AddField(verb, area.options, "--step", "step", "N", "Step of a class (default 20)");
  }
  CLI::App* update = AddVerb(area.list->get_parent(), "update", "Add the codes that every program relies on",
                             area.options, CodesUpdate);
  update->add_option("--project", area.options->project, "A project")->type_name("DIR");
  AddForce(update, area.options);
  AddShared(update, area.options);
  AddOutputOptions(update, &area.options->output);
}

void AddLines(CLI::App* codes) {
  const FileVerbs area = AddArea(codes, SettingsFileKind::kLines, "Line codes, LINKOD.PAR");
  for (CLI::App* verb : {area.set, area.add}) {
    const bool needed = verb == area.add;
    AddField(verb, area.options, "--word", "word", "WORD", "The word after the code")->required(needed);
    AddField(verb, area.options, "--number", "number", "N", "The number after the word")->required(needed);
    AddField(verb, area.options, "--value", "value", "N", "The whole number after that (default 0)");
    AddField(verb, area.options, "--text", "text", "TEXT", "The description");
  }
}

void AddStamp(CLI::App* codes) {
  const auto options = std::make_shared<CodesOptions>();
  options->kind = SettingsFileKind::kStamp;
  CLI::App* stamp = codes->add_subcommand("stamp", "The fields of a title-block file");
  stamp->require_subcommand(1);
  stamp->add_option("FILE", options->file, "Title-block file")->required()->check(CompletesFile(".dat"));
  AddOutputOptions(AddVerb(stamp, "list", "Every field", options, CodesList), &options->output);
  CLI::App* set =
      AddVerb(stamp, "set", "Change or add a field; a missing file is created", options, CodesSet);
  set->add_option("NAME", options->code, "Name of the field, such as DATUM or RITARE")->required();
  AddField(set, options, "WORD", "word", "WORD", "Its content: a key or a text without blanks")->required();
  AddField(set, options, "FIRST", "first", "N", "First number")->required();
  AddField(set, options, "SECOND", "second", "N", "Second number")->required();
  AddField(set, options, "THIRD", "third", "N", "Third number (default 3)");
  AddForce(set, options);
}

void AddCheck(CLI::App* codes) {
  const auto options = std::make_shared<CodesOptions>();
  CLI::App* check = AddVerb(
      codes, "check",
      "Lines that reading skips or cuts or that a rewrite cannot keep, and why; status 1 if there are any",
      options, CodesCheck);
  check->add_option("FILE", options->file, "A settings, code or title-block file")
      ->required()
      ->check(CompletesFile(".dat .par .cfg"));
  check
      ->add_option("--kind", options->kind_name,
                   "What the file is: objects, environment, lines, stamp, settings or rig (default: by its "
                   "usual name)")
      ->check(CLI::IsMember(std::vector<std::string>(std::begin(kKindNames), std::end(kKindNames))))
      ->type_name("KIND");
  AddOutputOptions(check, &options->output);
}

}  // namespace

void AddCodesCommands(CLI::App* codes) {
  codes->require_subcommand(1);
  AddObjects(codes);
  AddEnvironment(codes);
  AddLines(codes);
  AddStamp(codes);
  AddCheck(codes);
}

}  // namespace velmora::cli
