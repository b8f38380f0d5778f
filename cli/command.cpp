#include "cli/command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/align/commands.h"
#include "cli/codes/commands.h"
#include "cli/doctor/commands.h"
#include "cli/env/commands.h"
#include "cli/formats/commands.h"
#include "cli/help/commands.h"
#include "cli/help/usage_error.h"
#include "cli/link/commands.h"
#include "cli/points/show.h"
#include "cli/project/commands.h"
#include "cli/report/commands.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "cli/terminal/file_log.h"
#include "velmora/common/messages.h"
#include "velmora/lists/list_error.h"
#include "velmora/platform/dialog.h"
#include "velmora/version.h"

namespace velmora::cli {
namespace {

constexpr int kDone = 0;
constexpr int kRefused = 1;
constexpr int kWrongUsage = 2;

int RefuseUsage(const Understood& at, const std::string& problem) {
  PrintError(problem + " (see velmora " + at.called_as + (at.called_as.empty() ? "" : " ") + "--help)");
  return kWrongUsage;
}

int Parse(CLI::App& app, std::vector<std::string> arguments) {
  std::reverse(arguments.begin(), arguments.end());  // CLI11 takes them from the back
  try {
    app.parse(std::move(arguments));
    return kDone;
  } catch (const CLI::CallForHelp&) {
    PrintText(HelpText(Deepest(app)));
    return kDone;
  } catch (const CLI::CallForVersion&) {
    PrintText(app.version());
    return kDone;
  } catch (const CLI::ParseError& error) {
    const Understood at = Deepest(app);
    return RefuseUsage(at, UsageError(app, at, error));
  } catch (const WrongUsage& error) {
    return RefuseUsage(Deepest(app), error.what());
  } catch (const ListError& error) {
    if (error.is_usage) return RefuseUsage(Deepest(app), error.text);
    throw Refusal(At(error.list, error.line, error.text));
  }
}

struct Area {
  const char* name;
  const char* description;
  void (*add)(CLI::App*);
};
constexpr Area kAreas[] = {
    {"env", "The installation: ini file, set-up, user data, registry", AddEnvCommands},
    {"project", "A project's folder: make, check, list", AddProjectCommands},
    {"align", "Road alignments: information, station and offset, levels, drawing", AddAlignCommands},
    {"report", "Plan and profile sheets to scale, a report to look at, or the table of the borings",
     AddReportCommand},
    {"points", "Support points", AddPointsCommands},
    {"formats", "The drawing sheets: innermost area, frame and sheet in millimetres", AddFormatsCommand},
    {"link", "Exchange texts with the running field-data program", AddLinkCommands},
    {"settings", "Parameters: values, defaults, where they are, a project's own", AddSettingsCommands},
    {"codes", "Code files: objects, environment, lines, title blocks, and checks", AddCodesCommands},
    {"doctor", "What is wrong with the installation, a project or files, and what corrects it",
     AddDoctorCommand}};

// Describing every verb takes as long as starting: where the first word names an area it is that one alone,
// and nothing but the areas' names for the help and the version of the whole.
void AddAreas(const std::vector<std::string>& arguments, CLI::App* app) {
  const std::string word = arguments.empty() ? "" : arguments.front();
  const auto is_word = [&](const auto& other) { return word == other; };
  const bool one =
      std::any_of(std::begin(kAreas), std::end(kAreas), [&](const Area& area) { return is_word(area.name); });
  constexpr const char* kOfTheWhole[] = {"-h", "--help", "help", "-V", "--version", "version"};
  const bool names_only =
      arguments.size() == 1 && std::any_of(std::begin(kOfTheWhole), std::end(kOfTheWhole), is_word);
  for (const Area& area : kAreas) {
    if (one && !is_word(area.name)) continue;
    CLI::App* const added = app->add_subcommand(area.name, area.description);
    if (!names_only) area.add(added);
  }
  if (!one) AddHelpCommands(*app);
}

}  // namespace

int RunCommand(std::vector<std::string> arguments) {
  // The library's message boxes are not shown: every operation's result is checked, and the command's own
  // error line says more than the box.
  SetMessageBoxHandler([](const MessageBoxCall& call) { return DefaultButton(call.style); });

  CLI::App app("Geotechnical field data: borings and soundings placed along road alignments.", "velmora");
  app.set_version_flag("-V,--version", std::string("velmora ") + VersionText());
  app.require_subcommand(1);
  app.fallthrough();  // the options of the command are taken behind a verb too
  SetQuiet(false);
  CLI::Option* quiet = app.add_flag_callback(
      "-q,--quiet", [] { SetQuiet(true); }, "Print errors only: no notes and no progress");
  app.add_flag_callback("-v,--verbose", LogFiles, "Print which files are read and written")->excludes(quiet);
  app.get_formatter()->column_width(34);
  app.footer(
      "Exit status: 0 done, 1 not found or refused, 2 wrong usage. \"-\" reads an alignment or a list from "
      "standard input.");
  AddAreas(arguments, &app);
  try {
    return Parse(app, std::move(arguments));
  } catch (const Refusal& refusal) {
    PrintError(refusal.what());
    return kRefused;
  } catch (const ExitWith& exit) {
    return exit.status;
  } catch (const wchar_t*) {  // thrown by the library's lists when memory runs out
    PrintError("out of memory; try a smaller file");
    return kRefused;
  } catch (const std::bad_alloc&) {
    PrintError("out of memory; try a smaller file");
    return kRefused;
  }
}

}  // namespace velmora::cli
