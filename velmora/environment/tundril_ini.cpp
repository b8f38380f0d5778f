#include "velmora/environment/tundril_ini.h"

#include <algorithm>

#include "velmora/common/paths.h"
#include "velmora/environment/running_program.h"
#include "velmora/environment/system_keys.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/files.h"
#include "velmora/platform/process.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/shell_folders.h"

namespace velmora {
namespace {

constexpr size_t kLongestValue = 254;  // characters, without the terminating zero

// Hook for converting the characters of a section, a key or a value.
CString ConvertProfileText(const CString& text) { return text; }

// The profile of ReadKey and WriteKey; empty when there is none.
CString ProfileOf(const CTundrilIni& ini) {
  return ini.m_useIniFile != 0 ? ini.m_iniPath : ApplicationProfile();
}

// False when the environment variable is not set.
bool FindProgramFolder(int mode, CString* folder) {
  if (mode != 0) return ReadEnvironment(L"TUNDRIL", folder);
  SplitPath(CommandLine(), folder, nullptr);
  // Required: the folder replaces the command line. A second Init(0) therefore finds the parent folder.
  SetCommandLine(*folder);
  return true;
}

}  // namespace

CTundrilIni::CTundrilIni() : m_today(TodayText()) {}
CTundrilIni::~CTundrilIni() = default;

int CTundrilIni::Init(int mode) {
  m_useIniFile = mode;
  CString folder;
  if (FindProgramFolder(mode, &folder)) {
    m_programDir = folder;
    m_cfgDir = folder;
  }
  CString path = JoinPath(m_programDir, kIniName);
  if (!FileOrFolderExists(path)) path = kIniName;
  if (mode != 0)
    m_iniPath = path;
  else
    ReplaceApplicationProfile(path);
  ReadSystemKeys(SystemKeySet::kPlain, this);
  return 0;
}

std::vector<CString> ReadKeys(const CTundrilIni& ini, const CString& section, std::span<const CString> keys) {
  const CString profile = ProfileOf(ini);
  if (profile.IsEmpty()) return std::vector<CString>(keys.size());
  std::vector<CString> converted;
  for (const CString& key : keys) converted.push_back(ConvertProfileText(key));
  std::vector<CString> values = ReadProfileKeys(ConvertProfileText(section), converted, profile);
  for (CString& value : values) value = ConvertProfileText(value);
  return values;
}

CString CTundrilIni::ReadKey(const CString& section, const CString& key) const {
  return ReadKeys(*this, section, std::span(&key, 1))[0];
}

int CTundrilIni::ReadKey(const wchar_t* section, const wchar_t* key, wchar_t* value) const {
  const CString read = ReadKey(CString(section), CString(key));
  const std::wstring_view text = read.GetView().substr(0, kLongestValue);
  if (value != nullptr) *std::copy(text.begin(), text.end(), value) = L'\0';
  return text.empty() ? 0 : 1;
}

int CTundrilIni::WriteKey(const CString& section, const CString& key, const CString& value) const {
  const CString profile = ProfileOf(*this);
  if (profile.IsEmpty()) return 0;
  const wchar_t* text = value.IsEmpty() ? nullptr : value.GetString();
  return WriteProfile(ConvertProfileText(section), ConvertProfileText(key), text, profile) ? 1 : 0;
}

}  // namespace velmora
