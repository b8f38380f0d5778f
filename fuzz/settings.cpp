// The content as TUNDRIL.PAR and as JB23.PAR: the classes hold the model's settings, and a write changes its
// setting and no other. Arguments: pairs of a key and its new value.
#include <algorithm>

#include "fuzz/support/project_settings.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/jb23_par.h"
#include "velmora/settings/parameter_files.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/text/letters.h"

namespace velmora::fuzz {
namespace {

using Stored = std::vector<StoredSetting>;

Stored StoredIn(const CString& path, bool rig) {
  const auto kind = rig ? SettingsFileKind::kRig : SettingsFileKind::kSettings;
  return ReadStoredSettings(rig, CheckedLines(kind, path)).settings;
}

// The list's records, without the empty ones that lines too long for a record leave.
template <class List>
Stored Held(List* list) {
  Stored held;
  for (int at = list->Home(); at == 0; at = (*list)++ == nullptr ? -1 : 0)
    if (const auto key = FieldText(list->pael->nyckel); !key.empty())
      held.push_back({CString(key), CString(FieldText(list->pael->varde))});
  return held;
}

StoredSetting* Find(Stored* settings, const CString& key) {
  for (StoredSetting& setting : *settings)
    if (!key.IsEmpty() && setting.key.CompareNoCase(key) == 0) return &setting;
  return nullptr;
}

// What CTundrilCFG::WriteKey does in memory; its result, were there no file.
int Write(Stored* settings, const CString& key, const CString& value) {
  StoredSetting* setting = Find(settings, key);
  if (setting == nullptr) {
    if (key.IsEmpty() || key.GetLength() >= kKeyRoom) return -1;
    setting = &settings->emplace_back(StoredSetting{key, CString()});
  }
  if (setting->value != value && value.GetLength() >= kValueRoom) return -1;
  setting->value = value;
  return 0;
}

void TryParameters(const Input& input) {
  const CString path = Put(L"TUNDRIL.PAR", input.File());
  Stored model = StoredIn(path, false);
  CTundrilCFG file(L"Fuzz", path);
  Require(Held(&file) == model, "every line becomes the record that it is");
  for (size_t i = 0; i + 1 < input.Arguments(); i += 2) {
    const CString key = input.Text(i);
    const CString value = input.Text(i + 1);
    const StoredSetting* found = Find(&model, key);
    Require(file.ReadKey(key) == (found == nullptr ? CString() : found->value), "ReadKey finds the first");
    const std::string before = ReadBytes(path);
    const bool kept = Write(&model, key, value) == 0;
    const int result = file.WriteKey(key, value);
    Require(Held(&file) == model, "a write changes its record and no other");
    CString text;
    for (const StoredSetting& setting : model)
      if (!setting.value.IsEmpty()) text += setting.key + L"=" + setting.value + L"\n";
    Require(result == (kept && CanHold(before, text.GetView()) ? 0 : -1),
            "a write is refused for its reasons only");
    if (result != 0) {
      Require(ReadBytes(path) == before, "a refused write leaves the file");
      continue;
    }
    Stored written;
    for (const StoredSetting& setting : model) {
      const CString line = setting.key + L"=" + setting.value;
      const KeyValueLine parsed = ParseKeyValueLine(line.GetView());
      if (!setting.value.IsEmpty() && parsed.kind == KeyValueLine::Kind::kRecord)
        written.push_back({parsed.key, parsed.value});
    }
    Require(StoredIn(path, false) == written, "what was written is read");
  }
}

void TryRig(const Input& input) {
  ProjectSettings settings;
  CTundrilInst& facade = settings.facade;
  const CString path = Put(L"JB23.PAR", input.File());
  Stored stored = StoredIn(path, true);
  Stored cut = stored;
  for (StoredSetting& setting : cut) setting.value = setting.value.Left(255);
  CJb23Par records(nullptr, &settings.project);
  Require(Held(&records) == cut || stored.size() > 8192, "two records a line");
  for (size_t i = 0; i < 2 * kJb23Lines.size(); ++i) {
    Require(facade.Jb23ReadKey(kJb23Lines[i / 2][i % 2]) == (i < stored.size() ? stored[i].value : CString()),
            "a value is a word of its line");
  }
  for (size_t i = 0; i + 1 < input.Arguments(); i += 2) {
    const CString key = input.Text(i);
    const CString value = input.Text(i + 1);
    const std::string before = ReadBytes(path);
    const std::vector<CString> lines = LinesOf(path);
    facade.Jb23WriteKey(key, value);
    const Jb23Field field = FieldOfJb23Key(key.GetView());
    const bool at_start = field.line == 1 && !field.step;
    if (!CanHold(before, (at_start ? value : L" " + value).GetView())) {
      Require(ReadBytes(path) == before, "a refused write leaves the file");
      continue;
    }
    const std::vector<CString> after = LinesOf(path);
    const auto line = static_cast<size_t>(field.line) - 1;
    const size_t at = std::min(line, lines.size());
    Require(after.size() == std::max(lines.size(), at + 1), "a missing line is added");
    for (size_t j = 0; j < lines.size(); ++j)
      Require(j == at || after[j] == lines[j], "every other line is kept");
    // A line with its values, or the next one after the last, takes the value where it is read.
    const bool whole = at == lines.size() || lines[at].Find(L'\0') < 0;
    const bool has_scale = !field.step || at == lines.size() || !WordsOf(lines[at]).empty();
    if (line == at && whole && has_scale && WordsOf(value).size() == 1)
      Require(facade.Jb23ReadKey(key) == WordsOf(value)[0], "what was written is read");
  }
}

}  // namespace

void Run(const Input& input) {
  TryParameters(input);
  TryRig(input);
}

}  // namespace velmora::fuzz
