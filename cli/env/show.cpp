#include <array>

#include "cli/context/environment.h"
#include "cli/env/commands.h"
#include "cli/terminal/error.h"
#include "velmora/environment/system_keys.h"
#include "velmora/platform/files.h"
#include "velmora/text/nearest.h"

namespace velmora::cli {
namespace {

// A field that a key of section SYSTEM fills.
struct KeyField {
  const char* name;
  const wchar_t* key;
  CString CTundrilIni::*text;
  int CTundrilIni::*number;
};

constexpr std::array<KeyField, 18> kKeyFields = {{
    {"m_cfgDir", L"TUNDRIL.CFG", &CTundrilIni::m_cfgDir, nullptr},
    {"m_msgPath", L"MSG", &CTundrilIni::m_msgPath, nullptr},
    {"m_acadExe", L"ACADEXE", &CTundrilIni::m_acadExe, nullptr},
    {"m_civilDrawingExe", L"CIVILDRAWINGEXE", &CTundrilIni::m_civilDrawingExe, nullptr},
    {"m_civilDrawingVer", L"CIVILDRAWINGVER", nullptr, &CTundrilIni::m_civilDrawingVer},
    {"m_acadLtExe", L"ACADLTEXE", &CTundrilIni::m_acadLtExe, nullptr},
    {"m_acadOpt", L"ACADOPT", &CTundrilIni::m_acadOpt, nullptr},
    {"m_acadVer", L"ACADVER", nullptr, &CTundrilIni::m_acadVer},
    {"m_scriptPath", L"SCRIPTPATH", &CTundrilIni::m_scriptPath, nullptr},
    {"m_mstationExe", L"MSTATIONEXE", &CTundrilIni::m_mstationExe, nullptr},
    {"m_zipExe", L"ZIPEXE", &CTundrilIni::m_zipExe, nullptr},
    {"m_unzipExe", L"UNZIPEXE", &CTundrilIni::m_unzipExe, nullptr},
    {"m_docExe", L"DOCEXE", &CTundrilIni::m_docExe, nullptr},
    {"m_autoGen", L"AUTOGEN", nullptr, &CTundrilIni::m_autoGen},
    {"m_postCadMstation", L"POSTCAD", nullptr, &CTundrilIni::m_postCadMstation},
    {"m_bankCadMstation", L"BANKCAD", nullptr, &CTundrilIni::m_bankCadMstation},
    {"m_cadPlatform", L"CADPLATFORM", &CTundrilIni::m_cadPlatform, nullptr},
    {"m_quorvalDrawingVer", L"QUORVALDRAWINGVER", nullptr, &CTundrilIni::m_quorvalDrawingVer},
}};

// Init misspells one key that the set-up reads, and does not read two.
const wchar_t* KeyReadBy(FoundBy found_by, const KeyField& field) {
  if (found_by == FoundBy::kRegistry) return field.key;
  if (field.text == &CTundrilIni::m_civilDrawingExe) return L"CIILDRAWINGEXE";
  const bool set_up_only =
      field.text == &CTundrilIni::m_cadPlatform || field.number == &CTundrilIni::m_quorvalDrawingVer;
  return set_up_only ? nullptr : field.key;
}

std::string FolderSource(FoundBy found_by) {
  switch (found_by) {
    case FoundBy::kRegistry:
      return "registry, InstallPath";
    case FoundBy::kVariable:
      return "environment variable TUNDRIL";
    case FoundBy::kNothing:
      break;
  }
  return "default";
}

// "; did you mean "SYSTEM"?", first for the section, or nothing.
std::string DidYouMeanKey(const EnvOptions& options) {
  const auto upper = [](const std::string& name) { return ToUtf8(FromUtf8(name).MakeUpper()); };
  const std::string section = DidYouMean(upper(options.section), IniSections());
  return section.empty() ? DidYouMean(upper(options.key), IniKeys(options.section)) : section;
}

}  // namespace

void EnvShow(const EnvOptions& options) {
  Environment environment;
  FindEnvironment(options.sub, &environment);
  const CTundrilIni& ini = environment.ini;
  OutputFile output(options.output.file, {PathForDisplay(ini.m_iniPath)});
  RecordWriter records(output, options.output.Format(),
                       {{"field", "field"}, {"value", "value"}, {"from", "from"}});
  const auto row = [&](const std::string& field, const std::string& value, const std::string& from) {
    records.Row({field, value, from});
  };
  row("m_programDir", PathForDisplay(ini.m_programDir), FolderSource(environment.found_by));
  row("m_iniPath", PathForDisplay(ini.m_iniPath),
      !environment.HasIni()                        ? "no such file"
      : environment.found_by == FoundBy::kRegistry ? "the user's application data"
                                                   : "program folder");
  row("m_package", ToUtf8(ini.m_package),
      ini.m_package[0] == 0 ? "set for programs in the program folder" : "registry, Package");
  row("m_today", ToUtf8(ini.m_today), "clock");
  std::vector<CString> keys;  // an empty one is not in the file
  for (const KeyField& field : kKeyFields) keys.emplace_back(KeyReadBy(environment.found_by, field));
  std::vector<CString> values(keys.size());
  if (environment.HasIni()) values = ReadKeys(ini, L"SYSTEM", keys);
  for (size_t i = 0; i < kKeyFields.size(); ++i) {
    const KeyField& field = kKeyFields[i];
    const CString& key = keys[i];
    const bool from_key = !values[i].IsEmpty();
    const std::string value =
        field.text != nullptr ? ToUtf8(ini.*(field.text)) : std::to_string(ini.*(field.number));
    std::string from = "default";
    if (from_key)
      from = "Velmora.ini, SYSTEM " + ToUtf8(key);
    else if (field.text == &CTundrilIni::m_cfgDir && environment.found_by != FoundBy::kNothing)
      from = environment.found_by == FoundBy::kRegistry ? "the user's application data" : "program folder";
    row(field.name, field.text == &CTundrilIni::m_cfgDir ? PathForDisplay(ini.m_cfgDir) : value, from);
  }
  records.Finish();
  output.Finish();
  if (environment.found_by != FoundBy::kNothing) return;
  if (!environment.missing_ini.IsEmpty())
    Warn(At(PathForDisplay(environment.missing_ini),
            "the current user's ini file is missing or not a file; defaults are shown"));
  else
    Warn("no installation found; defaults are shown. Create one: velmora env install --to DIR");
}

void EnvGet(const EnvOptions& options) {
  Environment environment;
  FindEnvironment(options.sub, &environment);
  RequireIni(environment);
  const CString value = environment.ini.ReadKey(FromUtf8(options.section), FromUtf8(options.key));
  if (value.IsEmpty())
    throw Refusal(At(PathForDisplay(environment.ini.m_iniPath), "has no key " + Quoted(options.key) +
                                                                    " in section " + Quoted(options.section) +
                                                                    DidYouMeanKey(options)));
  OutputFile output;
  output.Write(ToUtf8(value) + "\n");
  output.Finish();
}

void EnvSet(const EnvOptions& options) {
  Environment environment;
  FindEnvironment(options.sub, &environment);
  RequireIni(environment);
  const auto bad = [](const std::string& text, const char* forbidden) {
    return text.find_first_of(forbidden) != std::string::npos;
  };
  if (options.section.empty() || bad(options.section, "]\r\n") || options.key.empty() ||
      bad(options.key, "=\r\n") || bad(options.value, "\r\n"))
    throw Refusal(
        "a section cannot contain \"]\", a key \"=\", and none of them a line end; nothing was written");
  const CString value = FromUtf8(options.value);
  if (value.GetLength() > 254)
    throw Refusal("the value has " + std::to_string(value.GetLength()) +
                  " characters, at most 254 can be read back; nothing was written");
  if (environment.ini.WriteKey(FromUtf8(options.section), FromUtf8(options.key), value) == 0)
    throw Refusal(
        At(PathForDisplay(environment.ini.m_iniPath),
           "cannot be written (write-protected, disk full, or a letter outside its encoding); the file is "
           "unchanged"));
  if (const std::string meant = DidYouMeanKey(options); !meant.empty() && !value.IsEmpty())
    Warn("key " + Quoted(options.key) + " of section " + Quoted(options.section) +
         " is written but is not a known one" + meant);
}

}  // namespace velmora::cli
