#include "cli/input/list_options.h"
#include "velmora/text/nearest.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace velmora::cli {
namespace {

// "id=Hole,n=3" into columns[key].
void TakeColumns(const std::string& text, const std::vector<Role>& roles, ListOptions* options) {
  std::string keys;
  std::vector<std::string> known;
  for (const Role& role : roles) {
    keys += (keys.empty() ? "" : ", ") + role.key;
    known.push_back(role.key);
  }
  for (const std::string& part : CLI::detail::split(text, ',')) {
    const size_t cut = part.find('=');
    const std::string key = CLI::detail::trim_copy(part.substr(0, cut));
    const std::string column =
        cut == std::string::npos ? std::string() : CLI::detail::trim_copy(part.substr(cut + 1));
    const auto role = std::find_if(roles.begin(), roles.end(),
                                   [&](const Role& each) { return each.key == key || each.name == key; });
    if (role == roles.end() || column.empty())
      throw CLI::ValidationError("--columns: \"" + part + "\" does not name a column; write KEY=TITLE or " +
                                 "KEY=NUMBER with a key of " + keys +
                                 (role == roles.end() ? DidYouMean(key, known) : ""));
    options->columns[role->key] = column;
  }
}

char ToDelimiter(const std::string& text) {
  const std::map<std::string, char> names = {
      {"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}, {"\\t", '\t'}};
  if (const auto name = names.find(text); name != names.end()) return name->second;
  if (text.size() == 1 && std::string_view(",;\t|:").find(text[0]) != std::string_view::npos) return text[0];
  throw CLI::ValidationError("--delimiter: \"" + text +
                             "\" does not separate columns; write comma, semicolon, tab, \"|\" or \":\"");
}

// A choice by name.
template <class Value>
void AddChoice(CLI::App* verb, const char* name, const char* metavar,
               const std::map<std::string, Value>& values, const char* help,
               std::function<void(Value)> take) {
  std::vector<std::string> names;
  for (const auto& [each, value] : values) names.push_back(each);
  verb->add_option_function<std::string>(
          name, [values, take = std::move(take)](const std::string& text) { take(values.at(text)); }, help)
      ->check(CLI::IsMember(names))
      ->type_name(metavar)
      ->type_size(1);
}

}  // namespace

void AddListOptions(CLI::App* verb, const std::vector<Role>& roles, ListOptions* options) {
  std::string columns;
  for (const Role& role : roles) columns += (columns.empty() ? "" : ",") + role.key + "=COLUMN";
  const auto require_one_order = [options] {
    if (options->east_first && (options->columns.contains("n") || options->columns.contains("e")))
      throw CLI::ValidationError("--axes: --columns says already which column is n and which is e");
  };
  verb->add_option_function<std::string>(
          "--columns",
          [=](const std::string& text) {
            TakeColumns(text, roles, options);
            require_one_order();
          },
          "Columns of the list, each by its title or its number from 1")
      ->type_name(columns)
      ->type_size(1);
  verb->add_option_function<std::string>(
          "--delimiter", [options](const std::string& text) { options->delimiter = ToDelimiter(text); },
          "What is between the list's columns: comma, semicolon, tab, \"|\" or \":\" (default: from its "
          "first row)")
      ->type_name("D")
      ->type_size(1);
  AddChoice<DecimalSign>(verb, "--decimal", "SIGN",
                         {{"comma", DecimalSign::kComma}, {"point", DecimalSign::kPoint}},
                         "Decimal sign of the list (default: either; a point where commas separate)",
                         [options](DecimalSign sign) { options->decimal = sign; });
  AddChoice<TextEncoding>(
      verb, "--encoding", "E",
      {{"utf-8", TextEncoding::kUtf8},
       {"windows-1252", TextEncoding::kWindows1252},
       {"utf-16le", TextEncoding::kUtf16Le},
       {"utf-16be", TextEncoding::kUtf16Be}},
      "Encoding of a list without a byte-order mark (default: UTF-8 where it is valid, else "
      "Windows-1252)",
      [options](TextEncoding encoding) { options->encoding = encoding; });
  if (&roles != &PointRoles()) return;
  AddChoice<bool>(
      verb, "--axes", "AXES", {{"ne", false}, {"en", true}},
      "en: the column taken as northing holds the easting and the other way round, as x and y of GIS",
      [=](bool east_first) {
        options->east_first = east_first;
        require_one_order();
      });
}

void AddOnlyOption(CLI::App* verb, ListOptions* options) {
  verb->add_flag("--only", options->only, "Leave out the list's other columns");
}

}  // namespace velmora::cli
