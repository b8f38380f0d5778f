#include "bench/hostile/readers.h"

#include "cli/command.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/vag2.h"
#include "velmora/environment/tundril_ini.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/jb23_par.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/settings/tundril_inst.h"
#include "velmora/settings/tundril_par.h"

namespace velmora::bench {
namespace {

constexpr wchar_t kAreaFile[] = L"TUNDRIL.DBF\\TUNDRIL.VL";

CString In(const CString& folder, const wchar_t* name) { return folder + L"\\" + name; }

CProjPath ProjectIn(const CString& folder) {
  CProjPath project;
  project.SetPath(folder);
  return project;
}

// The settings of a project without an installation.
class Settings {
 public:
  explicit Settings(const CString& folder) : project_(ProjectIn(folder)) { inst_.Init(nullptr, &project_); }
  CTundrilInst* operator->() { return &inst_; }

 private:
  CProjPath project_;
  CTundrilInst inst_;
};

void ReadObjectCodes(const CString& folder) {
  Settings settings(folder);
  wchar_t code[40];
  wchar_t text[260];
  while (settings->KodfilDatRead(code, text) == 0) {
  }
}

void ReadEnvironmentCodes(const CString& folder) {
  Settings settings(folder);
  wchar_t name[10];
  wchar_t text[260];
  int max = 0;
  int step = 0;
  for (int section = 0; section < 4; ++section)
    while (settings->MiljkodRead(section, name, text, &max, &step) == 0) {
    }
}

void ReadLineCodes(const CString& folder) {
  Settings settings(folder);
  wchar_t code[40];
  wchar_t word[40];
  wchar_t text[260];
  double number = 0;
  int value = 0;
  for (int result = 1; result != 0 && result != -1;)
    result = settings->LinkodRead(code, word, text, &number, &value);
}

void ReadTitleBlock(const CString& folder) {
  CTundrilInst settings;
  wchar_t name[40];
  wchar_t word[260];
  double number = 0;
  for (int result = 1; result == 1 || result == -2;)
    result = settings.StampParRead(In(folder, L"STAMPEL1.DAT"), name, word, &number, &number, &number);
}

void MakeListedFolders(const CString& folder) {
  CTundrilIni ini;
  ini.m_useIniFile = 1;
  ini.m_iniPath = In(folder, L"Velmora.ini");
  (void)WriteProfile(L"ARKIV", L"MAPPAR", In(folder, L"MAPPAR.TXT"), ini.m_iniPath);
  CProjPath().CreateProjectStructure(In(folder, L"made"), &ini, 1, 0, 0, 0, 0, 0, 1);
}

// A command with the file, as its user gives it, after the arguments.
std::function<void(const CString&)> Command(std::vector<std::string> arguments, const wchar_t* file,
                                            std::vector<std::string> more = {}) {
  return [arguments, file, more](const CString& folder) {
    std::vector<std::string> all = arguments;
    all.push_back(PathForDisplay(*file == L'\0' ? folder : In(folder, file)));
    all.insert(all.end(), more.begin(), more.end());
    cli::RunCommand(all);
  };
}

// The same for a list beside an alignment.
std::function<void(const CString&)> WithRoad(const char* verb, const char* option) {
  return [verb, option](const CString& folder) {
    cli::RunCommand({"align", verb, PathForDisplay(In(folder, L"road.vl")), option,
                     PathForDisplay(In(folder, L"list.csv"))});
  };
}

}  // namespace

std::vector<Reader> Readers() {
  const std::vector<std::pair<std::string, std::string>> road = {
      {"road.vl", "0 0 0 0 1 $Road\r\n0 1000 0 1000\r\n1000 2000 0 2414.2\r\n"}};
  return {
      {"CVaglinje::Init", "a.vl", [](const CString& f) { CVaglinje().Init(In(f, L"a.vl")); }},
      {"CVag2::Init", "a.vl", [](const CString& f) { CVag2().Init(In(f, L"a.vl")); }},
      {"CVag2::ReadOmr", "TUNDRIL.DBF/TUNDRIL.VL",
       [](const CString& f) {
         CProjPath project = ProjectIn(f);
         CVag2().ReadOmr(&project);
       }},
      {"CVag2::SaveOmr", "TUNDRIL.DBF/TUNDRIL.VL",
       [](const CString& f) {
         CProjPath project = ProjectIn(f);
         CVag2().SaveOmr(&project);
       }},
      {"CStodPunkt", "a.stp", [](const CString& f) { CStodPunkt(In(f, L"a.stp")); }},
      {"CTundrilCFG", "TUNDRIL.CFG",
       [](const CString& f) { CTundrilCFG(L"bench", In(f, L"TUNDRIL.CFG")).WriteKey(L"KEY", L"value"); }},
      {"CTundrilPAR", "TUNDRIL.PAR",
       [](const CString& f) {
         CProjPath project = ProjectIn(f);
         CTundrilPAR(nullptr, &project).WriteKey(L"KEY", L"value");
       }},
      {"CJb23Par", "JB23.PAR",
       [](const CString& f) {
         CProjPath project = ProjectIn(f);
         CJb23Par(nullptr, &project).FindKey(L"USTEG");
       }},
      {"Jb23ReadKey", "JB23.PAR", [](const CString& f) { Settings(f)->Jb23ReadKey(L"USTEG"); }},
      {"Jb23WriteKey", "JB23.PAR", [](const CString& f) { Settings(f)->Jb23WriteKey(L"USTEG", L"7"); }},
      {"KodfilDatRead", "KODFIL.DAT", ReadObjectCodes},
      {"KodfilDatWrite", "KODFIL.DAT",
       [](const CString& f) { Settings(f)->KodfilDatWrite(3, L"K1", L"text"); }},
      {"MiljkodRead", "MILJKOD.DAT", ReadEnvironmentCodes},
      {"MiljkodUppdatX", "MILJKOD.DAT", [](const CString& f) { Settings(f)->MiljkodUppdatX(); }},
      {"LinkodRead", "LINKOD.PAR", ReadLineCodes},
      {"StampParRead", "STAMPEL1.DAT", ReadTitleBlock},
      {"ReadProfile", "a.ini",
       [](const CString& f) { (void)ReadProfile(L"SYSTEM", L"KEY", In(f, L"a.ini")); }},
      {"WriteProfile", "a.ini",
       [](const CString& f) { (void)WriteProfile(L"SYSTEM", L"KEY", L"value", In(f, L"a.ini")); }},
      {"folder list", "MAPPAR.TXT", MakeListedFolders},
      {"align info", "a.vl", Command({"align", "info"}, L"a.vl")},
      {"align plot", "a.vl", Command({"align", "plot"}, L"a.vl")},
      {"align locate, its list", "list.csv", WithRoad("locate", "--points"), road},
      {"align plot, its list", "list.csv", WithRoad("plot", "--points"), road},
      {"align place, its list", "list.csv", WithRoad("place", "--stations"), road},
      {"points show", "a.stp", Command({"points", "show"}, L"a.stp")},
      {"project check, code file", "KODFIL.DAT", Command({"project", "check"}, L"")},
      {"project check, settings", "TUNDRIL.PAR", Command({"project", "check"}, L"")},
      {"project check, area", "TUNDRIL.DBF/TUNDRIL.VL", Command({"project", "check"}, L"")},
      {"codes check, objects", "a.dat", Command({"codes", "check"}, L"a.dat", {"--kind", "objects"})},
      {"codes check, environment", "a.dat", Command({"codes", "check"}, L"a.dat", {"--kind", "environment"})},
      {"codes check, lines", "a.dat", Command({"codes", "check"}, L"a.dat", {"--kind", "lines"})},
      {"codes check, stamp", "a.dat", Command({"codes", "check"}, L"a.dat", {"--kind", "stamp"})},
      {"codes check, rig", "a.dat", Command({"codes", "check"}, L"a.dat", {"--kind", "rig"})},
      {"codes stamp list", "a.dat", Command({"codes", "stamp"}, L"a.dat", {"list"})},
      {"settings list", "TUNDRIL.PAR", Command({"settings", "list", "--project"}, L"")},
      {"settings set", "TUNDRIL.PAR", Command({"settings", "set", "IDHOJD", "3", "--project"}, L"")},
  };
}

}  // namespace velmora::bench
