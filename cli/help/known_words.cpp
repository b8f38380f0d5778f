#include "cli/help/known_words.h"

#include <set>

#include "cli/context/environment.h"
#include "velmora/common/string_table.h"
#include "velmora/drawing/ritnings_format.h"
#include "velmora/project/projekt_status.h"
#include "velmora/settings/parameter_files.h"

namespace velmora::cli {
namespace {

std::vector<std::string> SettingKeys(const std::string& file) {
  std::set<std::string> keys;
  for (const wchar_t* name : {L"TUNDRIL.PAR", L"KARSK.PAR", L"JB23.PAR"})
    if (FromUtf8(file).CompareNoCase(name) == 0)
      for (const DefaultSetting& setting : ParameterFileNamed(name).defaults)
        keys.insert(ToUtf8(setting.key));
  return {keys.begin(), keys.end()};
}

std::vector<std::string> Statuses() {
  CProjektStatus states;
  states.SetHandle(LibraryModule());
  states.Load();
  std::vector<std::string> texts;
  for (int at = states.Home(); at == 0; at = states++ == nullptr ? -1 : 0)
    texts.push_back(ToUtf8(states.pael->text));
  return texts;
}

std::vector<std::string> Sheets() {
  const CRitningsFormat table;
  std::vector<std::string> names;
  for (int i = 0; i < table.antal; ++i) names.push_back(ToUtf8(table.formater[i].namn));
  return names;
}

}  // namespace

std::vector<std::string> KnownWords(const std::string& list, const std::string& of) {
  if (list == "keys") return SettingKeys(of.empty() ? "TUNDRIL.PAR" : of);
  if (list == "ini sections") return IniSections();
  if (list == "ini keys") return IniKeys(of);
  if (list == "statuses") return Statuses();
  if (list == "sheets") return Sheets();
  return {};
}

}  // namespace velmora::cli
