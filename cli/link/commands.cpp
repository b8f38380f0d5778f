#include "cli/link/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/output/options.h"
#include "cli/terminal/completes.h"

namespace velmora::cli {

void AddLinkCommands(CLI::App* link) {
  link->require_subcommand(1);
  const auto options = std::make_shared<LinkOptions>();

  CLI::App* send = link->add_subcommand("send", "Send texts to the field-data program");
  send->add_option("TEXT", options->texts, "Texts; each is sent separately")->required();
  send->add_option("--project", options->project, "Project folder to announce first")->type_name("DIR");
  send->callback([options] { LinkSend(*options); });

  CLI::App* listen = link->add_subcommand(
      "listen", "Print the program's notifications, one per line, until interrupted (Ctrl-C)");
  listen->add_option("--count", options->count, "Stop after N notifications")
      ->type_name("N")
      ->check([](const std::string& text) {
        std::int64_t count = 0;
        const bool good = CLI::detail::lexical_cast(text, count) && count > 0;
        return good ? std::string() : "\"" + text + "\" is not a number from 1 on";
      });
  AddFormatOptions(listen, &options->output);
  listen->callback([options] { LinkListen(*options); });

  CLI::App* serve = link->add_subcommand(
      "serve", "Simulate the field-data program: run a script for each client and print what clients do");
  serve->add_option("--script", options->script, "Script to run (docs/conversation.md)")
      ->required()
      ->type_name("FILE")
      ->check(CompletesFile(".txt"));
  serve->add_flag("--once", options->once, "Stop when the first client has disconnected");
  AddFormatOptions(serve, &options->output);
  serve->callback([options] { LinkServe(*options); });
}

}  // namespace velmora::cli
