#include "velmora/settings/settings_file.h"

#include <algorithm>

#include "velmora/common/last_message.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"

namespace velmora {
namespace {

std::vector<SettingsPlace> Candidates(const CTundrilIni* ini, const CProjPath* project, const CString& name) {
  std::vector<SettingsPlace> places;
  const auto add = [&](const char* place, const CString& folder, bool of_project = false) {
    if (folder.IsEmpty()) return;
    const CString path = JoinPath(folder, name);
    if (std::none_of(places.begin(), places.end(),
                     [&](const SettingsPlace& other) { return other.path.CompareNoCase(path) == 0; }))
      places.push_back({place, path, of_project});
  };
  if (name.CompareNoCase(CProjPath::TundrilCfgNamn) == 0) {
    CString folder;
    if (ini != nullptr) SplitPath(ini->m_iniPath, &folder, nullptr);
    add("beside Velmora.ini", folder);
    return places;
  }
  if (project != nullptr) add("project copy", project->m_ProjKat, true);
  if (ini == nullptr) return places;
  add("configuration folder", ini->m_cfgDir);
  add("program folder", ini->m_programDir);
  return places;
}

}  // namespace

bool HasFolder(const CProjPath* project) { return project != nullptr && !project->m_ProjKat.IsEmpty(); }

std::vector<SettingsPlace> SettingsPlaces(const CTundrilIni* ini, const CProjPath* project,
                                          const CString& name) {
  std::vector<SettingsPlace> places = Candidates(ini, project, name);
  for (SettingsPlace& place : places) place.exists = FileOrFolderExists(place.path);
  return places;
}

const SettingsPlace* PlaceInUse(const std::vector<SettingsPlace>& places) {
  for (const SettingsPlace& place : places)
    if (place.exists) return &place;
  return nullptr;
}

CString FindSettingsFile(const CTundrilIni* ini, const CProjPath* project, const CString& name) {
  for (const SettingsPlace& place : Candidates(ini, project, name))
    if (FileOrFolderExists(place.path)) return place.path;
  return {};
}

CString TemporaryPathFor(const CString& path) {
  constexpr int kExtension = 4;
  return path.Left(path.GetLength() - kExtension) + L".tmp";
}

void ShowFileMessage(const wchar_t* text, const CString& path, const CString& caption) {
  ShowOwnerlessMessage(FormatForUser(text, path), MB_OK | MB_ICONEXCLAMATION, caption);
}

void ShowUnreadable(const CString& path, const CString& caption) {
  ShowFileMessage(L"Kan inte öppna -filen\n%s\nAvbryter läsning!", path, caption);
}

void ShowUnwritable(const CString& path, const CString& caption) {
  ShowFileMessage(L"Kan inte öppna -filen\n%s\nAvbryter!", path, caption);
}

}  // namespace velmora
