#include "cli/settings/parameters.h"

#include "cli/input/text_lines.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/key_value_format.h"

namespace velmora::cli {
namespace {

struct Stored {
  CString key;
  CString value;
};

std::vector<Stored> Records(const ParameterFile& file, const CString& path) {
  std::vector<Stored> records;
  for (const TextLine& line : TextLinesOf(path)) {
    if (file.rig) {
      const Jb23Line values = ParseJb23Line(line.text.GetView());
      const Jb23Keys keys = Jb23KeysOfLine(static_cast<int>(line.number));
      records.push_back({keys.scale, values.scale});
      records.push_back({keys.step, values.step});
      continue;
    }
    const KeyValueLine parsed = ParseKeyValueLine(line.text.GetView());
    if (parsed.kind == KeyValueLine::Kind::kRecord) records.push_back({parsed.key, parsed.value});
  }
  return records;
}

}  // namespace

ParameterFile ParameterFileNamed(const CString& name) {
  if (name.CompareNoCase(CProjPath::TundrilParNamn) == 0)
    return {CProjPath::TundrilParNamn, TundrilDefaults()};
  if (name.CompareNoCase(CProjPath::StenParNamn) == 0) return {CProjPath::StenParNamn, KarskDefaults()};
  if (name.CompareNoCase(CProjPath::Jb23ParNamn) == 0) return {CProjPath::Jb23ParNamn, Jb23Defaults(), true};
  if (name.CompareNoCase(CProjPath::TundrilCfgNamn) == 0) return {CProjPath::TundrilCfgNamn, {}};
  return {name, {}};
}

Settings::Settings(const ParameterFile& file, const CString& path) {
  for (const DefaultSetting& setting : file.defaults)
    Add({setting.key, setting.value, CString(setting.value), false});
  KeyIndex seen;  // of equal keys in the file the first one counts, with or without a value
  for (const Stored& record : path.IsEmpty() ? std::vector<Stored>() : Records(file, path)) {
    if (seen.Find(record.key.GetView()) != nullptr) continue;
    seen.Add(record.key.GetView(), {});
    const bool stored = !record.value.IsEmpty();
    const KeyIndex::Place* place = places_.Find(record.key.GetView());
    if (place == nullptr) {
      Add({record.key, record.value, std::nullopt, stored});
    } else if (stored) {
      Setting& setting = all_[static_cast<size_t>(place->position) - 1];
      setting.stored = true;
      setting.value = record.value;
    }
  }
}

void Settings::Add(const Setting& setting) {
  all_.push_back(setting);
  places_.Add(setting.key.GetView(), {nullptr, static_cast<int>(all_.size())});
}

const Setting* Settings::Find(const CString& key) const {
  const KeyIndex::Place* place = places_.Find(key.GetView());
  return place == nullptr ? nullptr : &all_[static_cast<size_t>(place->position) - 1];
}

}  // namespace velmora::cli
