#include "cli/help/usage_error.h"

#include <algorithm>

#include "cli/help/topics.h"
#include "cli/terminal/error.h"
#include "velmora/text/nearest.h"

namespace velmora::cli {
namespace {

std::string Joined(const std::vector<std::string>& words, const char* between) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : between) + word;
  return all;
}

std::vector<std::string> VerbsOf(const CLI::App& app) {
  std::vector<std::string> verbs;
  for (const CLI::App* verb : app.get_subcommands([](const CLI::App*) { return true; }))
    verbs.push_back(verb->get_name());
  return verbs;
}

// Those of the verb and of what it belongs to.
std::vector<std::string> OptionsOf(const CLI::App* app) {
  std::vector<std::string> names;
  for (; app != nullptr; app = app->get_parent())
    for (const CLI::Option* option : app->get_options())
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  return names;
}

// "; did you mean --points?" for the first option that is not known but like one.
std::string DidYouMeanOption(const CLI::App* verb, const std::vector<std::string>& unknown) {
  for (const std::string& word : unknown) {
    std::string name = word.substr(0, word.find('='));
    if (name.size() > 2 && name[1] != '-') name.insert(0, "-");  // "-points"
    if (name.starts_with("--") && !Nearest(name, OptionsOf(verb)).empty())
      return "; did you mean " + Nearest(name, OptionsOf(verb)) + "?";
  }
  return {};
}

std::string UnknownWord(const Understood& at, const std::string& word,
                        const std::vector<std::string>& verbs) {
  const std::string known = "\"velmora" + (at.called_as.empty() ? "" : " " + at.called_as) +
                            "\" takes one of " + Joined(verbs, ", ");
  if (word.empty()) return known;
  const std::string meant =
      word.starts_with("-") ? DidYouMeanOption(at.app, {word}) : DidYouMean(word, verbs);
  return "unknown word " + Quoted(word) + ": " + known + meant;
}

// The first of the words after "help" is not an area.
[[noreturn]] void RefuseHelpOn(const CLI::App& app, const std::vector<std::string>& words) {
  std::vector<std::string> known = Topics();
  if (std::find(known.begin(), known.end(), words[0]) != known.end())
    throw WrongUsage(Quoted(words[0]) + " is a topic and has no " + Quoted(words[1]));
  const std::vector<std::string> verbs = VerbsOf(app);
  known.insert(known.begin(), verbs.begin(), verbs.end());
  throw WrongUsage(UnknownWord({&app, "help"}, words[0], known));
}

// "--kind: objcts not in {objects,lines}"
std::string DidYouMeanValue(const std::string& problem) {
  const size_t colon = problem.find(": ");
  const size_t list = problem.find(" not in {", colon);
  if (list == std::string::npos) return {};
  const size_t from = problem.find('{', list) + 1;
  return DidYouMean(problem.substr(colon + 2, list - colon - 2),
                    CLI::detail::split(problem.substr(from, problem.find('}', from) - from), ','));
}

}  // namespace

Understood Deepest(const CLI::App& app) {
  Understood deepest{&app, ""};
  while (!deepest.app->get_subcommands().empty()) {
    deepest.app = deepest.app->get_subcommands().front();
    deepest.called_as += (deepest.called_as.empty() ? "" : " ") + deepest.app->get_name();
  }
  return deepest;
}

Understood FindVerb(const CLI::App& app, const std::vector<std::string>& words) {
  Understood at{&app, ""};
  for (const std::string& word : words) {
    const auto verbs =
        at.app->get_subcommands([&](const CLI::App* verb) { return verb->get_name() == word; });
    if (verbs.empty() && VerbsOf(*at.app).empty())
      throw WrongUsage("\"velmora " + at.called_as + "\" is a verb and has no " + Quoted(word));
    if (verbs.empty() && at.app == &app) RefuseHelpOn(app, words);
    if (verbs.empty()) throw WrongUsage(UnknownWord(at, word, VerbsOf(*at.app)));
    at.app = verbs.front();
    at.called_as += (at.called_as.empty() ? "" : " ") + word;
  }
  return at;
}

std::string UsageError(const CLI::App& app, const Understood& at, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  const std::vector<std::string> verbs = VerbsOf(*at.app);
  if (!verbs.empty()) return UnknownWord(at, unknown.empty() ? "" : unknown.front(), verbs);
  const std::string meant = DidYouMeanOption(at.app, unknown);
  // A misspelled option is reported before what it leaves missing.
  if (!meant.empty() || error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError))
    return "unexpected: " + Joined(unknown, " ") + meant;
  return error.what() + DidYouMeanValue(error.what());
}

std::string HelpText(const Understood& verb) {
  // The parser's own help() of the whole command is that of the verb that is running.
  const std::string called_as = "velmora" + (verb.called_as.empty() ? "" : " " + verb.called_as);
  return verb.app->get_formatter()->make_help(verb.app, called_as, CLI::AppFormatMode::Normal);
}

}  // namespace velmora::cli
