#include "cli/command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "cli/align/commands.h"
#include "cli/env/commands.h"
#include "cli/error.h"
#include "cli/points/show.h"
#include "cli/project/commands.h"
#include "cli/terminal.h"
#include "velmora/common/messages.h"

namespace velmora::cli {
namespace {

constexpr int kDone = 0;
constexpr int kRefused = 1;
constexpr int kWrongUsage = 2;

void PrintLine(std::FILE* to, const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), to);
  if (line.empty() || line.back() != '\n') std::fputc('\n', to);
}

std::string OneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

int Parse(CLI::App& app, std::vector<std::string> arguments) {
  std::reverse(arguments.begin(), arguments.end());  // CLI11 takes them from the back
  try {
    app.parse(std::move(arguments));
    return kDone;
  } catch (const CLI::CallForHelp&) {
    const CLI::App* asked = &app;
    std::string called_as;
    for (; !asked->get_subcommands().empty(); asked = asked->get_subcommands().front())
      called_as += (called_as.empty() ? "" : " ") + asked->get_name();
    PrintLine(stdout, asked->help(called_as));
    return kDone;
  } catch (const CLI::CallForVersion&) {
    PrintLine(stdout, app.version());
    return kDone;
  } catch (const CLI::ParseError& error) {
    PrintLine(stderr, "velmora: " + OneLine(error.what()) + " (velmora --help tells what there is)");
    return kWrongUsage;
  }
}

}  // namespace

int RunCommand(std::vector<std::string> arguments) {
  // The library's boxes have no window here: every operation's result is looked at, and the line that
  // the user gets says more than the box does.
  SetMessageBoxHandler([](const MessageBoxCall& call) { return DefaultButton(call.style); });

  CLI::App app("Geotechnical field data: borings and soundings placed along road alignments.", "velmora");
  app.set_version_flag("--version", "velmora " VELMORA_VERSION);
  app.require_subcommand(1);
  app.get_formatter()->column_width(34);
  app.footer("Exit status: 0 done, 1 not found or refused, 2 wrong usage. \"-\" reads standard input.");
  AddEnvCommands(app);
  AddProjectCommands(app);
  AddAlignCommands(app);
  AddPointsCommands(app);
  try {
    return Parse(app, std::move(arguments));
  } catch (const Refusal& refusal) {
    PrintLine(stderr, "velmora: " + OneLine(refusal.what()));
    return kRefused;
  } catch (const ExitWith& exit) {
    return exit.status;
  } catch (const wchar_t*) {  // the library's lists, when memory runs out
    PrintLine(stderr, "velmora: out of memory; try a smaller file");
    return kRefused;
  } catch (const std::bad_alloc&) {
    PrintLine(stderr, "velmora: out of memory; try a smaller file");
    return kRefused;
  }
}

}  // namespace velmora::cli
