#include "velmora/settings/parameter_files.h"

#include <string>

#include "velmora/project/proj_path.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/text/letters.h"
#include "velmora/text/nearest.h"
#include "velmora/text/numbers.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

void ReadKeyValue(const TextLines& lines, const TextLine& line, KeyIndex* seen, StoredSettings* read) {
  const std::wstring_view text = line.text.GetView();
  const KeyValueLine parsed = ParseKeyValueLine(text);
  const auto add = [&](const std::string& what, bool misread = true, bool lost = true) {
    read->findings.push_back({line.number, what, misread, lost});
  };
  if (parsed.kind == KeyValueLine::Kind::kNone) {
    if (!TrimBlanks(text).empty() && TrimBlanks(text) != L"*")
      add("is not \"key=value\" and is skipped: " + Quoted(text), !IsStarLine(text));
    return;
  }
  if (parsed.kind == KeyValueLine::Kind::kBlank) {
    const bool key = parsed.key.size() >= kKeyRoom;
    add(std::string("is skipped: its ") + (key ? "key" : "value") + " is longer than " +
        std::to_string(key ? kKeyRoom - 1 : kValueRoom - 2) + " characters");
    return;
  }
  const KeyIndex::Position* first = seen->Find(parsed.key);
  read->settings.push_back({parsed.key, parsed.value, line.number, first == nullptr});
  if (TrimBlanks(parsed.key).size() != parsed.key.size())
    add("the blanks around the key are part of it: " + Quoted(parsed.key), true, false);
  else if (first != nullptr) {
    add("is skipped: the key " + Quoted(parsed.key) + " is in line " + std::to_string(first->number) +
            " already",
        true, false);
    const std::wstring_view first_line = lines[static_cast<size_t>(first->number) - 1].text.GetView();
    if (first_line.size() == parsed.key.size() + 1 && !parsed.value.empty())
      read->findings.push_back({first->number,
                                "has no value and hides the same key in line " + std::to_string(line.number),
                                /*misread=*/false, /*lost=*/true});
  }
  seen->Add(parsed.key, {nullptr, static_cast<int>(line.number)});
}

// What is wrong with a line of two values, and whether a rewrite of the line would lose it.
void CheckRigLine(const TextLine& line, const Jb23Line& values, std::wstring_view rest, Findings* findings) {
  const auto add = [&](const std::string& what, bool lost = false) {
    findings->push_back({line.number, what, true, lost});
  };
  if (static_cast<size_t>(line.number) > kJb23Lines.size())
    return add("is line " + std::to_string(line.number) + "; only the first " +
               std::to_string(kJb23Lines.size()) + " are used");
  for (const auto& [key, value] : values) {
    const std::string name = ToUtf8(CString(key));
    if (value.IsEmpty()) return add("has no " + name + ", so the built-in value applies");
    if (!ParseWholeNumber(value.GetView())) return add(name + " is not a number: " + Quoted(value.GetView()));
  }
  if (!TrimBlanks(rest).empty()) add("only two words are read, not " + Quoted(TrimBlanks(rest)), true);
}

}  // namespace

ParameterFile ParameterFileNamed(const CString& name) {
  const ParameterFile kFiles[] = {{CProjPath::TundrilParNamn, TundrilDefaults()},
                                  {CProjPath::StenParNamn, KarskDefaults()},
                                  {CProjPath::Jb23ParNamn, Jb23Defaults(), true},
                                  {CProjPath::TundrilCfgNamn, {}}};
  for (const ParameterFile& file : kFiles)
    if (name.CompareNoCase(file.name) == 0) return file;
  return {name, {}};
}

StoredSettings ReadStoredSettings(bool rig, const TextLines& lines) {
  StoredSettings read;
  KeyIndex seen;
  // The placeholder that a project's copy is made with.
  const bool vacant = lines.size() == 1 && IsStarLine(lines[0].text.GetView());
  for (const TextLine& line : lines) {
    if (!rig) {
      ReadKeyValue(lines, line, &seen, &read);
      continue;
    }
    std::wstring_view rest;
    const Jb23Line values = ParseJb23Line(static_cast<int>(line.number), line.text.GetView(), &rest);
    for (const auto& [key, value] : values) {
      read.settings.push_back({key, value, line.number, seen.Find(key) == nullptr});
      seen.Add(key, {});
    }
    if (!vacant) CheckRigLine(line, values, rest, &read.findings);
  }
  CompleteFindings(lines, &read.findings);
  return read;
}

Settings::Settings(const ParameterFile& file, const TextLines& lines) {
  for (const DefaultSetting& setting : file.defaults)
    Add({setting.key, setting.value, CString(setting.value), false});
  StoredSettings read = ReadStoredSettings(file.rig, lines);
  findings_ = std::move(read.findings);
  for (const StoredSetting& record : read.settings) {
    if (!record.first) continue;
    const bool stored = !record.value.IsEmpty();
    const KeyIndex::Position* at = index_.Find(record.key.GetView());
    if (at == nullptr) {
      Add({record.key, record.value, std::nullopt, stored, stored ? record.line : 0});
    } else if (stored) {
      Setting& setting = all_[static_cast<size_t>(at->number) - 1];
      setting.stored = true;
      setting.value = record.value;
      setting.line = record.line;
    }
  }
}

void Settings::Add(const Setting& setting) {
  all_.push_back(setting);
  index_.Add(setting.key.GetView(), {nullptr, static_cast<int>(all_.size())});
}

std::string Settings::DidYouMeanKey(const CString& key) const {
  std::vector<std::string> keys;
  for (const Setting& setting : all_) keys.push_back(ToUtf8(setting.key));
  return DidYouMean(ToUtf8(key), keys);
}

const Setting* Settings::Find(const CString& key) const {
  const KeyIndex::Position* at = index_.Find(key.GetView());
  return at == nullptr ? nullptr : &all_[static_cast<size_t>(at->number) - 1];
}

}  // namespace velmora
