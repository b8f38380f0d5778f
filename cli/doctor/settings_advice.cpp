#include "cli/doctor/checks.h"

#include <algorithm>
#include <map>

#include "cli/codes/commands.h"
#include "cli/context/settings_lines.h"
#include "velmora/common/paths.h"
#include "velmora/platform/console.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/code_files.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/settings/parameter_files.h"
#include "velmora/settings/setting_write.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

constexpr char kInEditor[] = "change the line in an editor";

struct Advice {
  std::string meaning;
  std::string command;
};

// The folder of a path in the system's spelling, as --project takes it.
std::string FolderOf(const std::string& shown) {
  const std::wstring path(PathFromSystem(shown).GetView());
  const size_t end = path.find_last_of(PathSeparators());
  return end == std::wstring::npos ? "." : PathForDisplay(CString(path.substr(0, std::max<size_t>(end, 1))));
}

class SettingsAdvice {
 public:
  SettingsAdvice(SettingsFileKind kind, const TextLines& lines, const std::string& shown, Owner owner)
      : kind_(kind), owner_(owner), lines_(lines), shown_(shown), name_(NameOfPath(PathFromSystem(shown))) {
    where_ = owner_ == Owner::kInstallation ? " --shared" : " --project " + ShellArgument(FolderOf(shown));
    const Findings all = CheckSettingsText(kind, lines);
    if (std::any_of(all.begin(), all.end(), [](const Finding& finding) { return finding.lost; }))
      force_ = " --force";
    if (kind_ != SettingsFileKind::kSettings && kind_ != SettingsFileKind::kRig)
      codes_ = ReadCodeFile(kind, lines);
  }

  Advice Of(const Finding& finding) const {
    if (finding.line == 0) return {"programs read no code of it; write that line in an editor", ""};
    if (finding.repair == Repair::kEndMark) return {kRemoveEndMark, ""};
    const TextLine& line = lines_[static_cast<size_t>(finding.line) - 1];
    if (IsReadElsewhere())
      return {std::string("programs read such a file beside Velmora.ini only; ") + kInEditor, ""};
    if (kind_ == SettingsFileKind::kSettings) return OfSetting(line);
    return kind_ == SettingsFileKind::kRig ? OfRig(line) : OfCode(line);
  }

  // "velmora settings set KEY VALUE --project DIR"
  std::string Set(const std::string& key, const std::string& value) const {
    const bool usual = name_.CompareNoCase(CProjPath::TundrilParNamn) == 0;
    return "velmora settings set " + key + " " + value +
           (usual ? "" : " --file " + ShellArgument(ToUtf8(name_))) + where_ + force_;
  }

  // The commands do not write TUNDRIL.CFG in a project either.
  bool IsReadElsewhere() const {
    return owner_ == Owner::kFolder && name_.CompareNoCase(CProjPath::TundrilCfgNamn) == 0;
  }

  std::string Update() const { return "velmora codes environment update" + where_ + force_; }
  const CodeEntries& Codes() const { return codes_.entries; }

 private:
  Advice OfSetting(const TextLine& line) const {
    const KeyValueLine parsed = ParseKeyValueLine(line.text.GetView());
    if (parsed.kind != KeyValueLine::Kind::kRecord)
      return {"the line sets nothing; the command sets what it is meant to and removes the line",
              Set("KEY", "VALUE")};
    const std::string key = ToUtf8(CString(parsed.key));
    if (TrimBlanks(parsed.key).size() != parsed.key.size())
      return {std::string("programs do not find the key, and its built-in value applies; ") + kInEditor, ""};
    if (line.cut)
      return {"the value ends there; the command sets it whole", Set(ShellArgument(key), "VALUE")};
    if (!WhyNoNumber(ParameterFileNamed(name_), CString(parsed.key), CString(parsed.value)).empty())
      return {"the earlier line applies; remove this line in an editor", ""};
    return {"the earlier line applies; the command removes that one, so that this one applies",
            Set(ShellArgument(key), "\"\"")};
  }

  Advice OfRig(const TextLine& line) const {
    const auto [scale, step] = ParseJb23Line(static_cast<int>(line.number), line.text.GetView());
    const bool has_scale = ParseWholeNumber(scale.value.GetView()).has_value();
    if (static_cast<size_t>(line.number) > kJb23Lines.size() ||
        (has_scale && ParseWholeNumber(step.value.GetView())))
      return {std::string("programs do not use it; ") + kInEditor, ""};
    return {"programs draw with another scale than the one meant",
            Set(ToUtf8(CString(has_scale ? step.key : scale.key)), "VALUE")};
  }

  Advice OfCode(const TextLine& line) const {
    const CodeEntries& entries = codes_.entries;
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [&](const CodeEntry& each) { return each.line == line.number; });
    if (entry != entries.end() && kind_ == SettingsFileKind::kStamp)
      return {std::string("programs do not use it; ") + kInEditor, ""};
    if (entry != entries.end() && !entry->code.GetView().starts_with(L'*'))
      return {"programs show something else than the line says; the command writes the entry anew",
              Command("set", ShellArgument(ToUtf8(entry->code)), entry->section)};
    return {"programs do not read the line; the command writes what it is meant to say and removes the line",
            Command("add", "CODE", 0)};
  }

  std::string Command(const std::string& verb, const std::string& code, int section) const {
    const std::string area = std::string("velmora codes ") + NameOfKind(kind_) + " ";
    switch (kind_) {
      case SettingsFileKind::kObjects:
        return area + verb + " " + code + " TEXT" + where_ + force_;
      case SettingsFileKind::kEnvironment:
        return area + verb + " " + code + (section == kClassSection ? "" : " TEXT") + " --section " +
               (section == 0 ? "SECTION" : kSections[section - 1]) +
               (section == kClassSection ? " --max N --step N" : "") + where_ + force_;
      case SettingsFileKind::kLines:
        return area + verb + " " + code + (verb == "add" ? " --word WORD --number N" : " --value N") +
               " --text TEXT" + where_ + force_;
      default:
        return area + ShellArgument(shown_) + " set NAME WORD FIRST SECOND" + force_;
    }
  }

  SettingsFileKind kind_;
  Owner owner_;
  const TextLines& lines_;
  std::string shown_;
  CString name_;
  std::string where_;
  std::string force_;
  CodeFile codes_;
};

// Values that no program reads as the number that they must be.
void DiagnoseNumbers(const TextLines& lines, const std::string& shown, const SettingsAdvice& advice,
                     DoctorReport* report) {
  const ParameterFile file = ParameterFileNamed(NameOfPath(PathFromSystem(shown)));
  const Settings settings(file, lines);
  std::map<std::int64_t, const Setting*> by_line;
  for (const Setting& setting : settings.All())
    if (setting.stored) by_line[setting.line] = &setting;
  Findings found;
  for (const auto& [line, setting] : by_line)
    if (const std::string why = WhyNoNumber(file, setting->key, setting->value); !why.empty())
      found.push_back({line, why});
  report->AddAll(shown, found, "", [&](const Finding& finding) {
    return Diagnosis{shown, finding.line, finding.text, "programs draw with another value than the one meant",
                     advice.Set(ShellArgument(ToUtf8(by_line.at(finding.line)->key)), "VALUE")};
  });
}

// Codes that are not in the file.
void DiagnoseMissingCodes(const std::string& shown, const SettingsAdvice& advice, DoctorReport* report) {
  std::string codes;
  for (const CodeEntry& code : MissingMiljkods(advice.Codes()))
    codes += (codes.empty() ? "" : ", ") + ToUtf8(code.code);
  if (!codes.empty())
    report->Add({shown, 0, "lacks codes that every program relies on: " + codes,
                 "programs look these codes up and do not find them; the command adds them",
                 advice.Update()});
}

}  // namespace

void DiagnoseSettings(SettingsFileKind kind, const TextLines& lines, const std::string& shown, Owner owner,
                      DoctorReport* report) {
  const SettingsAdvice advice(kind, lines, shown, owner);
  report->AddAll(
      shown, MisreadLines(kind, lines), "velmora codes check " + ShellArgument(shown),
      [&](const Finding& finding) {
        Advice of = advice.Of(finding);
        return Diagnosis{shown, finding.line, finding.text, std::move(of.meaning), std::move(of.command)};
      });
  if (kind == SettingsFileKind::kSettings) DiagnoseNumbers(lines, shown, advice, report);
  if (kind == SettingsFileKind::kEnvironment) DiagnoseMissingCodes(shown, advice, report);
}

}  // namespace velmora::cli
