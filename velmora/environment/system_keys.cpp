#include "velmora/environment/system_keys.h"

#include "velmora/environment/tundril_ini.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

template <CString CTundrilIni::*kField>
void TakeText(const CString& value, CTundrilIni* ini) {
  if (!value.IsEmpty()) ini->*kField = value;
}

template <CString CTundrilIni::*kField>
void TakeFolder(const CString& value, CTundrilIni* ini) {
  if (!value.IsEmpty()) ini->*kField = CString(value).Trim().TrimRight(L'\\');
}

template <int CTundrilIni::*kField>
void TakeVersion(const CString& value, CTundrilIni* ini) {
  (void)NumberScanner(value.GetView()).Next(&(ini->*kField));  // other text leaves the field unchanged
}

template <int CTundrilIni::*kField>
void TakeMicroStation(const CString& value, CTundrilIni* ini) {
  ini->*kField = EqualNoCase(value.GetView(), L"MSTATION") ? 1 : 0;
}

// Required: NEJ, unlike any other word, leaves the flag as it was.
void TakeAutoGen(const CString& value, CTundrilIni* ini) {
  if (value.IsEmpty() || EqualNoCase(value.GetView(), L"NEJ")) return;
  ini->m_autoGen = EqualNoCase(value.GetView(), L"JA") ? 1 : 0;
}

struct SystemKey {
  const wchar_t* plain;   // its name for Init; null: not read there
  const wchar_t* set_up;  // its name for InitXPWay
  void (*take)(const CString& value, CTundrilIni* ini);
};

// In the order in which they are read.
constexpr SystemKey kSystemKeys[] = {
    {L"TUNDRIL.CFG", L"TUNDRIL.CFG", TakeText<&CTundrilIni::m_cfgDir>},
    {L"MSG", L"MSG", TakeText<&CTundrilIni::m_msgPath>},
    {L"ACADEXE", L"ACADEXE", TakeText<&CTundrilIni::m_acadExe>},
    // Required misspelling for Init: ini files in use have it.
    {L"CIILDRAWINGEXE", L"CIVILDRAWINGEXE", TakeText<&CTundrilIni::m_civilDrawingExe>},
    {L"SCRIPTPATH", L"SCRIPTPATH", TakeFolder<&CTundrilIni::m_scriptPath>},
    {L"ACADLTEXE", L"ACADLTEXE", TakeText<&CTundrilIni::m_acadLtExe>},
    {L"ACADOPT", L"ACADOPT", TakeText<&CTundrilIni::m_acadOpt>},
    {L"ACADVER", L"ACADVER", TakeVersion<&CTundrilIni::m_acadVer>},
    {L"CIVILDRAWINGVER", L"CIVILDRAWINGVER", TakeVersion<&CTundrilIni::m_civilDrawingVer>},
    {L"MSTATIONEXE", L"MSTATIONEXE", TakeText<&CTundrilIni::m_mstationExe>},
    {L"ZIPEXE", L"ZIPEXE", TakeText<&CTundrilIni::m_zipExe>},
    {L"UNZIPEXE", L"UNZIPEXE", TakeText<&CTundrilIni::m_unzipExe>},
    {L"DOCEXE", L"DOCEXE", TakeText<&CTundrilIni::m_docExe>},
    {L"AUTOGEN", L"AUTOGEN", TakeAutoGen},
    {L"POSTCAD", L"POSTCAD", TakeMicroStation<&CTundrilIni::m_postCadMstation>},
    {L"BANKCAD", L"BANKCAD", TakeMicroStation<&CTundrilIni::m_bankCadMstation>},
    {nullptr, L"CADPLATFORM", TakeText<&CTundrilIni::m_cadPlatform>},
    {nullptr, L"QUORVALDRAWINGVER", TakeVersion<&CTundrilIni::m_quorvalDrawingVer>},
};

}  // namespace

std::vector<CString> SystemKeyNames() {
  std::vector<CString> names;
  for (const SystemKey& key : kSystemKeys) {
    names.emplace_back(key.set_up);
    if (key.plain != nullptr && names.back() != key.plain) names.emplace_back(key.plain);
  }
  return names;
}

void ReadSystemKeys(SystemKeySet set, CTundrilIni* ini) {
  const auto name_of = [set](const SystemKey& key) {
    return set == SystemKeySet::kPlain ? key.plain : key.set_up;
  };
  std::vector<CString> names;
  for (const SystemKey& key : kSystemKeys)
    if (name_of(key) != nullptr) names.emplace_back(name_of(key));
  const std::vector<CString> values = ReadKeys(*ini, L"SYSTEM", names);
  auto value = values.begin();
  for (const SystemKey& key : kSystemKeys)
    if (name_of(key) != nullptr) key.take(*value++, ini);
}

}  // namespace velmora
