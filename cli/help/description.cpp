#include "cli/help/description.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/output/records.h"
#include "cli/terminal/completes.h"
#include "velmora/version.h"

namespace velmora::cli {
namespace {

// The parser gives the value's name and its checks as one text: "KIND:{a,b}", "N:INT in [1 - 256]".
void TakeType(const std::string& type, OptionText* option) {
  const size_t colon = type.find(":{");
  const size_t range = type.find(":INT in [");
  option->value = type.substr(0, std::min(colon, range));
  if (colon != std::string::npos) {
    option->values = CLI::detail::split(type.substr(colon + 2, type.find('}', colon) - colon - 2), ',');
  } else if (range != std::string::npos) {
    const size_t from = type.find('[', range) + 1;
    option->range = type.substr(from, type.find(']', from) - from);
    const size_t between = option->range.find(" - ");
    if (between != std::string::npos) option->range.replace(between, 3, " to ");
  }
}

// "(default: 500 m)", "(default 20)", "name (default), size or date"
std::string DefaultIn(const std::string& help) {
  const size_t at = help.find("(default");
  const size_t end = help.find(')', at);
  if (at == std::string::npos || end == std::string::npos) return {};
  std::string text = help.substr(at + 8, end - at - 8);
  if (text.empty() && at > 0) {
    const size_t word = help.find_last_of(" ,:", at - 2);
    return help.substr(word + 1, at - 2 - word);
  }
  text.erase(0, text.find_first_not_of(": "));
  return text;
}

// What values of these names are wherever they occur; others have a mark.
std::string UsualMark(const std::string& value) {
  if (value == "DIR") return kCompletesFolder;
  if (value == "LIST") return kCompletesFile + std::string(".csv .txt .ags .gpkg");
  if (value == "SVG") return kCompletesFile + std::string(".svg");
  if (value == "VL") return kCompletesFile + std::string(".vl");
  return {};
}

std::string MarkOf(CLI::Option* option) {
  try {
    for (int i = 0;; ++i) {
      const std::string& name = option->get_validator(i)->get_name();
      for (const char* mark : {kCompletesFile, kCompletesFolder, kCompletesWord})
        if (name.starts_with(mark)) return name;
    }
  } catch (const CLI::OptionNotFound&) {  // after the last one
    return {};
  }
}

OptionText OptionOf(CLI::Option* from) {
  OptionText option;
  option.positional = from->get_positional();
  if (option.positional) option.names = {from->get_name(true)};
  for (const std::string& name : from->get_snames()) option.names.push_back("-" + name);
  for (const std::string& name : from->get_lnames()) option.names.push_back("--" + name);
  if (from->get_items_expected_max() > 0) {
    TakeType(from->get_type_name(), &option);
    if (option.positional) option.value = option.names[0];
    option.repeats = from->get_items_expected_max() > 1;
  }
  option.help = from->get_description();
  option.default_value = DefaultIn(option.help);
  option.required = from->get_required();
  option.completes = MarkOf(from);
  if (option.completes.empty()) option.completes = UsualMark(option.value);
  for (const CLI::Option* other : from->get_excludes()) option.excludes.push_back(other->get_name());
  std::sort(option.excludes.begin(), option.excludes.end());
  return option;
}

VerbText DescribeVerb(CLI::App& app, const std::string& call) {
  VerbText verb{app.get_name(), call, app.get_description(), app.get_footer(), {}, {}};
  std::string positionals;
  for (const bool positional : {true, false})
    for (CLI::Option* option : app.get_options()) {
      if (option->get_positional() != positional || option->get_group().empty()) continue;
      verb.options.push_back(OptionOf(option));
      if (positional) positionals += " " + verb.options.back().names[0];
    }
  for (CLI::App* below : app.get_subcommands([](const CLI::App*) { return true; }))
    verb.verbs.push_back(
        DescribeVerb(*below, (call.empty() ? "" : call + positionals + " ") + below->get_name()));
  return verb;
}

nlohmann::ordered_json TextOrNull(const std::string& text) {
  if (text.empty()) return nullptr;
  return text;
}

nlohmann::ordered_json JsonOfOption(const OptionText& option) {
  nlohmann::ordered_json json;
  json["names"] = option.names;
  json["positional"] = option.positional;
  json["value"] = TextOrNull(option.value);
  json["help"] = option.help;
  json["default"] = TextOrNull(option.default_value);
  json["values"] = option.values;
  json["range"] = TextOrNull(option.range);
  json["excludes"] = option.excludes;
  json["required"] = option.required;
  json["repeats"] = option.repeats;
  json["completes"] = TextOrNull(option.completes);
  return json;
}

nlohmann::ordered_json JsonOfVerb(const VerbText& verb) {
  nlohmann::ordered_json json;
  json["name"] = verb.name;
  json["usage"] = UsageLine(verb);
  json["help"] = verb.help;
  json["options"] = nlohmann::ordered_json::array();
  for (const OptionText& option : verb.options) json["options"].push_back(JsonOfOption(option));
  json["verbs"] = nlohmann::ordered_json::array();
  for (const VerbText& below : verb.verbs) json["verbs"].push_back(JsonOfVerb(below));
  return json;
}

}  // namespace

VerbText Describe(CLI::App& app) { return DescribeVerb(app, ""); }

std::string OptionHeading(const OptionText& option) {
  std::string heading;
  for (const std::string& name : option.names) heading += (heading.empty() ? "" : ", ") + name;
  return option.positional || option.value.empty() ? heading : heading + " " + option.value;
}

std::string UsageLine(const VerbText& verb) {
  std::string usage = "velmora" + (verb.call.empty() ? "" : " " + verb.call);
  bool optional = false;
  for (const OptionText& option : verb.options) {
    const std::string word =
        option.positional || option.value.empty() ? option.names[0] : option.names[0] + " " + option.value;
    const std::string dots = option.positional && option.repeats ? "..." : "";
    if (option.required)
      usage += " " + word + dots;
    else if (option.positional)
      usage += " [" + word + dots + "]";
    else
      optional = true;
  }
  return usage + (optional ? " [OPTIONS]" : "") + (verb.verbs.empty() ? "" : " VERB");
}

std::string DescriptionJson(const VerbText& command) {
  nlohmann::ordered_json json = JsonOfVerb(command);
  json["version"] = VersionText();
  return JsonText(json, 2) + "\n";
}

}  // namespace velmora::cli
