// The folder list of a new project: nothing is created outside the project.
#include <filesystem>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/project/proj_path.h"

namespace velmora::fuzz {

void Run(const Input& input) {
  const CString list = Put(L"MAPPAR.TXT", input.File());
  CTundrilIni ini;
  ini.m_useIniFile = 1;
  ini.m_iniPath = Scratch(L"Velmora.ini");
  if (!FileOrFolderExists(ini.m_iniPath)) ini.WriteKey(L"ARKIV", L"MAPPAR", list);
  const CString box = Scratch(L"box");
  MakeFolder(box);
  const std::vector<CString> around = NamesIn(ScratchFolder());
  CProjPath project;
  const int made = project.CreateProjectStructure(box + L"\\proj", &ini, 1, 0, 0, 0, 0, 0, 1);
  Require(made == 0 || made == 1, "a result");
  const std::vector<CString> in_box = NamesIn(box);
  Require(in_box.size() == 1 && in_box[0] == L"proj", "nothing beside the project");
  Require(NamesIn(ScratchFolder()) == around, "nor above it");
  std::filesystem::remove_all(PathForDisplay(box));
}

}  // namespace velmora::fuzz
