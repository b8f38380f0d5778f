// Files of lines "key=value": reading, look-ups and writes beside a plain model. Arguments: pairs of a key
// and its new value.
#include "fuzz/support/code_rows.h"
#include "fuzz/support/scratch.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/text/letters.h"

namespace velmora::fuzz {
namespace {

struct Setting {
  std::wstring key;
  std::wstring value;
  bool operator==(const Setting&) const = default;
};
using Settings = std::vector<Setting>;

void TakeLine(std::wstring_view line, Settings* settings) {
  const size_t equals = line.find(L'=');
  if (equals == 0 || equals == std::wstring_view::npos) return;
  const bool fits = equals < 40 && line.size() - equals - 1 < 259;
  settings->push_back(
      fits ? Setting{std::wstring(line.substr(0, equals)), std::wstring(line.substr(equals + 1))}
           : Setting{});
}

Settings Held(CTundrilCFG* file) {
  Settings settings;
  for (int at = file->Home(); at == 0; at = (*file)++ == nullptr ? -1 : 0)
    settings.push_back(
        {std::wstring(FieldText(file->pael->nyckel)), std::wstring(FieldText(file->pael->varde))});
  return settings;
}

Setting* Find(Settings* settings, std::wstring_view key) {
  for (Setting& setting : *settings)
    if (!key.empty() && EqualNoCase(setting.key, key)) return &setting;
  return nullptr;
}

// What CTundrilCFG::WriteKey does in memory; its result, were there no file.
int Write(Settings* settings, const std::wstring& key, const std::wstring& value) {
  Setting* setting = Find(settings, key);
  if (setting == nullptr) {
    if (key.empty() || key.size() >= 40) return -1;
    setting = &settings->emplace_back(Setting{key, L""});
  }
  if (setting->value == value) return 0;
  if (value.size() >= 260) return -1;
  setting->value = value;
  return 0;
}

struct Written {
  Settings settings;  // as they are read again
  std::wstring text;
};

Written AsWritten(const Settings& settings) {
  Written written;
  for (const Setting& setting : settings) {
    if (setting.value.empty()) continue;
    const std::wstring line = setting.key + L"=" + setting.value;
    TakeLine(line, &written.settings);
    written.text += line + L"\n";
  }
  return written;
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"TUNDRIL.PAR", input.File());
  Settings model;
  for (const CString& line : LinesOf(path)) TakeLine(UpToZero(line).GetView(), &model);
  CTundrilCFG file(L"Fuzz", path);
  Require(Held(&file) == model, "every line becomes the record that it is");

  ProjectSettings settings;
  CTundrilInst& facade = settings.facade;
  for (size_t i = 0; i + 1 < input.Arguments(); i += 2) {
    const CString key = input.Text(i);
    const CString value = input.Text(i + 1);
    const Setting* found = Find(&model, key.GetView());
    Require(file.ReadKey(key).GetView() == (found == nullptr ? L"" : found->value),
            "ReadKey finds the first");
    facade.ReadKeyInt(L"TUNDRIL.PAR", key, 0);
    facade.ReadKeyDouble(L"TUNDRIL.PAR", key, 0);

    const std::string before = ReadBytes(path);
    const bool kept = Write(&model, std::wstring(key.GetView()), std::wstring(value.GetView())) == 0;
    const int result = file.WriteKey(key, value);
    Require(Held(&file) == model, "a write changes its record and no other");
    const Written written = AsWritten(model);
    Require(result == (kept && CanHold(before, written.text) ? 0 : -1),
            "a write is refused for its reasons only");
    if (result == 0) {
      CTundrilCFG again(L"Fuzz", path);
      Require(Held(&again) == written.settings, "what was written is read");
    } else {
      Require(ReadBytes(path) == before, "a refused write leaves the file");
    }
  }
}

}  // namespace velmora::fuzz
