#include "cli/command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/align/commands.h"
#include "cli/codes/commands.h"
#include "cli/env/commands.h"
#include "cli/formats/commands.h"
#include "cli/link/commands.h"
#include "cli/output/output_file.h"
#include "cli/points/show.h"
#include "cli/project/commands.h"
#include "cli/settings/commands.h"
#include "cli/terminal/error.h"
#include "velmora/common/messages.h"
#include "velmora/lists/list_error.h"
#include "velmora/platform/dialog.h"
#include "velmora/version.h"

namespace velmora::cli {
namespace {

constexpr int kDone = 0;
constexpr int kRefused = 1;
constexpr int kWrongUsage = 2;

void PrintLine(std::string line) {
  if (!line.ends_with('\n')) line += '\n';
  OutputFile output;
  output.Write(line);
  output.Finish();
}

// The innermost area or verb that was recognised, and its words on the command line.
struct Understood {
  const CLI::App* app;
  std::string called_as;  // without "velmora"
};

int RefuseUsage(const Understood& at, const std::string& problem) {
  Warn(problem + " (see velmora " + at.called_as + (at.called_as.empty() ? "" : " ") + "--help)");
  return kWrongUsage;
}

Understood Deepest(const CLI::App& app) {
  Understood deepest{&app, ""};
  while (!deepest.app->get_subcommands().empty()) {
    deepest.app = deepest.app->get_subcommands().front();
    deepest.called_as += (deepest.called_as.empty() ? "" : " ") + deepest.app->get_name();
  }
  return deepest;
}

std::string Joined(const std::vector<std::string>& words, const char* between) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : between) + word;
  return all;
}

// An unknown or missing word is answered with the possible words; for other errors the parser's
// own text is enough.
std::string UsageError(const CLI::App& app, const Understood& at, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  std::vector<std::string> verbs;
  for (const CLI::App* verb : at.app->get_subcommands([](const CLI::App*) { return true; }))
    verbs.push_back(verb->get_name());
  if (!verbs.empty()) {
    const std::string known = "\"velmora" + (at.called_as.empty() ? "" : " " + at.called_as) +
                              "\" takes one of " + Joined(verbs, ", ");
    return unknown.empty() ? known : "unknown word " + Quoted(unknown.front()) + ": " + known;
  }
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError))
    return "unexpected: " + Joined(unknown, " ");
  return error.what();
}

int Parse(CLI::App& app, std::vector<std::string> arguments) {
  std::reverse(arguments.begin(), arguments.end());  // CLI11 takes them from the back
  try {
    app.parse(std::move(arguments));
    return kDone;
  } catch (const CLI::CallForHelp&) {
    const Understood asked = Deepest(app);
    // The parser appends the name to the text that it is given.
    const std::string called_as = "velmora " + asked.called_as;
    PrintLine(asked.app->help(asked.called_as.empty() ? "" : called_as.substr(0, called_as.rfind(' '))));
    return kDone;
  } catch (const CLI::CallForVersion&) {
    PrintLine(app.version());
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

// The area that the first word names, else all of them: describing every verb takes as long as starting.
void AddAreas(const std::string& word, CLI::App* app) {
  const std::pair<const char*, void (*)(CLI::App&)> kAreas[] = {
      {"env", AddEnvCommands},           {"project", AddProjectCommands}, {"align", AddAlignCommands},
      {"points", AddPointsCommands},     {"formats", AddFormatsCommand},  {"link", AddLinkCommands},
      {"settings", AddSettingsCommands}, {"codes", AddCodesCommands}};
  const auto named = [&](const auto& area) { return word == area.first; };
  const bool one = std::any_of(std::begin(kAreas), std::end(kAreas), named);
  for (const auto& area : kAreas)
    if (!one || named(area)) area.second(*app);
}

}  // namespace

int RunCommand(std::vector<std::string> arguments) {
  // The library's message boxes are not shown: every operation's result is checked, and the command's own
  // error line says more than the box.
  SetMessageBoxHandler([](const MessageBoxCall& call) { return DefaultButton(call.style); });

  CLI::App app("Geotechnical field data: borings and soundings placed along road alignments.", "velmora");
  app.set_version_flag("--version", std::string("velmora ") + VersionText());
  app.require_subcommand(1);
  app.get_formatter()->column_width(34);
  app.footer(
      "Exit status: 0 done, 1 not found or refused, 2 wrong usage. \"-\" reads an alignment or a list from "
      "standard input.");
  AddAreas(arguments.empty() ? "" : arguments.front(), &app);
  try {
    return Parse(app, std::move(arguments));
  } catch (const Refusal& refusal) {
    Warn(refusal.what());
    return kRefused;
  } catch (const ExitWith& exit) {
    return exit.status;
  } catch (const wchar_t*) {  // thrown by the library's lists when memory runs out
    Warn("out of memory; try a smaller file");
    return kRefused;
  } catch (const std::bad_alloc&) {
    Warn("out of memory; try a smaller file");
    return kRefused;
  }
}

}  // namespace velmora::cli
