#include "cli/link/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/output/options.h"

namespace velmora::cli {

void AddLinkCommands(CLI::App& app) {
  CLI::App* link = app.add_subcommand("link", "The conversation with the running field-data program");
  link->require_subcommand(1);
  const auto options = std::make_shared<LinkOptions>();

  CLI::App* send = link->add_subcommand("send", "Send it texts");
  send->add_option("TEXT", options->texts, "Text, each sent by itself")->required();
  send->add_option("--project", options->project, "Project folder to announce first")->type_name("DIR");
  send->callback([options] { LinkSend(*options); });

  CLI::App* listen =
      link->add_subcommand("listen", "Print its notifications, one a line, until interrupted (Ctrl-C)");
  listen->add_option("--count", options->count, "End after so many")
      ->type_name("N")
      ->check(CLI::PositiveNumber);
  AddFormatOptions(listen, &options->output);
  listen->callback([options] { LinkListen(*options); });

  CLI::App* serve = link->add_subcommand(
      "serve", "Stand in for it: greet, print what clients do, play a script to each of them");
  serve->add_option("--script", options->script, "What to play (docs/conversation.md)")
      ->required()
      ->type_name("FILE");
  serve->add_flag("--once", options->once, "End when the first client has gone");
  AddFormatOptions(serve, &options->output);
  serve->callback([options] { LinkServe(*options); });
}

}  // namespace velmora::cli
