#include "cli/help/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/help/completion.h"
#include "cli/help/description.h"
#include "cli/help/man_page.h"
#include "cli/help/topics.h"
#include "cli/help/usage_error.h"
#include "cli/output/output_file.h"
#include "cli/output/records.h"
#include "cli/terminal/wrap.h"
#include "velmora/platform/console.h"
#include "velmora/version.h"

namespace velmora::cli {
namespace {

struct HelpOptions {
  std::vector<std::string> words;
  std::string man_pages;
  bool description = false;
  bool complete = false;
};

void WriteManPages(const VerbText& command, const std::string& folder) {
  for (const ManPage& page : ManPages(command)) {
    OutputFile output(folder + "/" + page.file, {});
    output.Write(page.text);
    output.Finish();
  }
}

void Print(const std::string& text) {
  OutputFile output;
  output.Write(text);
  output.Finish();
}

void Help(CLI::App& app, const HelpOptions& options) {
  const std::vector<std::string> topics = Topics();
  if (options.complete) {
    Print(CompletionLines(Complete(Describe(app), options.words)));
  } else if (options.description) {
    Print(DescriptionJson(Describe(app)));
  } else if (!options.man_pages.empty()) {
    WriteManPages(Describe(app), options.man_pages);
  } else if (options.words.size() == 1 &&
             std::find(topics.begin(), topics.end(), options.words[0]) != topics.end()) {
    constexpr size_t kReadable = 80;
    const size_t width = TerminalWidth(StandardStream::kOutput);
    Print(PlainText(TextFor(options.words[0]), width == 0 ? kReadable : std::min(width, kReadable)));
  } else {
    PrintText(HelpText(FindVerb(app, options.words)));
  }
}

void PrintVersion(bool json) {
  if (!json) {
    Print(std::string("velmora ") + VersionText() + "\n");
    return;
  }
  nlohmann::ordered_json version;
  version["version"] = VersionText();
  version["number"] = Version();
  Print(JsonText(version) + "\n");
}

}  // namespace

void PrintText(const std::string& text) {
  Print(WrapLines(text + (text.ends_with('\n') ? "" : "\n"), TerminalWidth(StandardStream::kOutput)));
}

void AddHelpCommands(CLI::App& app) {
  const auto options = std::make_shared<HelpOptions>();
  CLI::App* help = app.add_subcommand("help", "The help of an area, a verb or a topic");
  help->add_option("WORD", options->words, "Area and verb, as align locate, or a topic, as formats-of-files");
  help->add_option("--man-pages", options->man_pages, "Write the manual pages into DIR")->type_name("DIR");
  help->add_flag("--description", options->description, "All verbs and options as JSON");
  help->add_flag("--complete", options->complete, "What fits as the last WORD, for the completion of shells");
  help->callback([&app, options] { Help(app, *options); });

  CLI::App* version = app.add_subcommand("version", "The version of the command");
  const auto json = std::make_shared<bool>(false);
  version->add_flag("--json", *json, "Result as JSON");
  version->callback([json] { PrintVersion(*json); });

  // Verbs take over the footer that is there when they are added: this one is the command's alone.
  std::string topics;
  for (const std::string& topic : Topics()) topics += (topics.empty() ? "" : ", ") + topic;
  app.footer(app.get_footer() + "\n\nTopics of velmora help: " + topics);
}

}  // namespace velmora::cli
