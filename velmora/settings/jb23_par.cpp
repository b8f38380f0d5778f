#include "velmora/settings/jb23_par.h"

#include "velmora/project/proj_path.h"
#include "velmora/settings/jb23_format.h"
#include "velmora/settings/settings_file.h"

namespace velmora {
namespace {

constexpr int kMostRigLines = 4096;  // eleven are known
constexpr size_t kLongestToken = 255;

}  // namespace

CJb23Par::CJb23Par(CTundrilIni* ini, CProjPath* proj) {
  const CString path = FindSettingsFile(ini, proj, CProjPath::Jb23ParNamn);
  if (!path.IsEmpty() && !Load(path)) {
    DeleteAll();
    ShowUnreadable(path, L"Läsning av Tundril - jb2/3 inställningar");
  }
}

bool CJb23Par::Load(const CString& path) {
  SettingsReader reader;
  if (!reader.Open(path)) return false;
  int number = 0;
  for (CString line; reader.ReadLine(&line);) {
    if (++number > kMostRigLines) return false;
    for (const auto& [key, value] : ParseJb23Line(number, line.GetView()))
      Append(key, value.GetView().substr(0, kLongestToken));
  }
  return !reader.Failed();
}

}  // namespace velmora
