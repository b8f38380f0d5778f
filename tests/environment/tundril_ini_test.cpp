#include "velmora/environment/tundril_ini.h"

#include <algorithm>
#include <string>
#include <type_traits>

#include "tests/environment/installed.h"
#include "velmora/environment/date_text.h"
#include "velmora/platform/process.h"

namespace velmora {
namespace {

static_assert(std::has_virtual_destructor_v<CTundrilIni>);

class TundrilIni : public Installed {
 protected:
  // Makes `lines` the section SYSTEM of an ini file of its own and initialises from its folder.
  void InitFrom(CTundrilIni* ini, const std::string& lines) {
    const CString folder = L"prog" + CString(L'x', ++folders_);
    MakeFile(folder + L"\\Velmora.ini", "[SYSTEM]\r\n" + lines);
    const EnvironmentVariable variable(L"TUNDRIL", At(folder));
    EXPECT_EQ(ini->Init(1), 0);
    EXPECT_EQ(ini->m_iniPath, At(folder + L"\\Velmora.ini"));
  }

 private:
  int folders_ = 0;
};

TEST(DateText, YearCountUpTo79MeansTheNewCentury) {
  EXPECT_EQ(DateText(126, 7, 9), L"2026-07-09");
  EXPECT_EQ(DateText(80, 12, 31), L"1980-12-31");
  EXPECT_EQ(DateText(79, 1, 1), L"2079-01-01");
  EXPECT_EQ(DateText(0, 1, 1), L"2000-01-01");
}

TEST_F(TundrilIni, EveryKeyReachesItsField) {
  const struct {
    const char* key;
    CString CTundrilIni::*field;
  } kTexts[] = {
      {"TUNDRIL.CFG", &CTundrilIni::m_cfgDir},      {"MSG", &CTundrilIni::m_msgPath},
      {"ACADEXE", &CTundrilIni::m_acadExe},         {"CIILDRAWINGEXE", &CTundrilIni::m_civilDrawingExe},
      {"SCRIPTPATH", &CTundrilIni::m_scriptPath},   {"ACADLTEXE", &CTundrilIni::m_acadLtExe},
      {"ACADOPT", &CTundrilIni::m_acadOpt},         {"ZIPEXE", &CTundrilIni::m_zipExe},
      {"MSTATIONEXE", &CTundrilIni::m_mstationExe}, {"UNZIPEXE", &CTundrilIni::m_unzipExe},
      {"DOCEXE", &CTundrilIni::m_docExe},
  };
  std::string lines =
      "ACADVER=2018\r\nCIVILDRAWINGVER=25\r\nPOSTCAD=mstation\r\nBANKCAD=Mstation\r\nCIVILDRAWINGEXE="
      "wrong\r\n"
      "CADPLATFORM=set-up only\r\nQUORVALDRAWINGVER=7\r\n";
  for (const auto& a : kTexts) lines += std::string(a.key) + "=of " + a.key + "\r\n";
  CTundrilIni ini;
  InitFrom(&ini, lines);
  EXPECT_EQ(ini.m_programDir, At(L"progx"));
  for (const auto& a : kTexts) EXPECT_EQ(ini.*a.field, FromUtf8(std::string("of ") + a.key));
  EXPECT_EQ(ini.m_acadVer, 2018);
  EXPECT_EQ(ini.m_civilDrawingVer, 25);
  EXPECT_EQ(ini.m_postCadMstation, 1);
  EXPECT_EQ(ini.m_bankCadMstation, 1);
  EXPECT_EQ(ini.m_cadPlatform, L"");
  EXPECT_EQ(ini.m_quorvalDrawingVer, 24);
}

TEST_F(TundrilIni, EmptyKeysKeepWhatWasThere) {
  CTundrilIni ini;
  ini.m_acadExe = L"kept";
  ini.m_scriptPath = L"kept";
  ini.m_postCadMstation = 1;
  InitFrom(&ini, "ACADEXE=\r\nTUNDRIL.CFG=\r\nACADVER=\r\n");
  EXPECT_EQ(ini.m_acadExe, L"kept");
  EXPECT_EQ(ini.m_scriptPath, L"kept");
  EXPECT_EQ(ini.m_acadVer, 24);
  EXPECT_EQ(ini.m_cfgDir, At(L"progx"));
  EXPECT_EQ(ini.m_postCadMstation, 0);  // but these two follow also an empty key
}

TEST_F(TundrilIni, VersionIsTheNumberAtTheStart) {
  const struct {
    const char* text;
    int version;
  } kCases[] = {{"2018", 2018}, {"abc", 24}, {"25.6x", 25}, {"-3", -3}, {"99999999999", 24}, {"x7", 24}};
  for (const auto& a : kCases) {
    CTundrilIni ini;
    InitFrom(&ini, std::string("ACADVER=") + a.text + "\r\n");
    EXPECT_EQ(ini.m_acadVer, a.version) << a.text;
  }
}

TEST_F(TundrilIni, AutoGenIsNotClearedByNej) {
  const struct {
    int before;
    const char* text;
    int after;
  } kCases[] = {{0, "JA", 1}, {0, "ja", 1},  {1, "NEJ", 1}, {1, "nej", 1}, {0, "NEJ", 0},
                {1, "X", 0},  {1, "JAA", 0}, {1, "", 1},    {0, "", 0}};
  for (const auto& a : kCases) {
    CTundrilIni ini;
    ini.m_autoGen = a.before;
    InitFrom(&ini, std::string("AUTOGEN=") + a.text + "\r\n");
    EXPECT_EQ(ini.m_autoGen, a.after) << a.before << a.text;
  }
}

TEST_F(TundrilIni, ScriptPathLosesBlanksAndBackslashesAtItsEnd) {
  CTundrilIni ini;
  InitFrom(&ini, "SCRIPTPATH=\"  C:\\My Scripts\\\\  \"\r\nPOSTCAD=AUTOCAD\r\n");
  EXPECT_EQ(ini.m_scriptPath, L"C:\\My Scripts");
  EXPECT_EQ(ini.m_postCadMstation, 0);
}

TEST_F(TundrilIni, WithoutTheVariableTheDefaultFolderIsKept) {
  CTundrilIni ini;
  EXPECT_EQ(ini.Init(1), 0);
  EXPECT_EQ(ini.m_programDir, L"C:\\Tundril");
  EXPECT_EQ(ini.m_cfgDir, L"C:\\Tundril");
  EXPECT_EQ(ini.m_iniPath, L"Velmora.ini");  // none there: the system is to look for it
  ini.m_programDir = At(L"elsewhere");
  MakeFile(L"elsewhere\\Velmora.ini", "[SYSTEM]\r\nDOCEXE=viewer\r\n");
  EXPECT_EQ(ini.Init(1), 0);
  EXPECT_EQ(ini.m_iniPath, At(L"elsewhere\\Velmora.ini"));
  EXPECT_EQ(ini.m_docExe, L"viewer");
}

TEST_F(TundrilIni, CommandLineGivesTheFolderAndIsCutToIt) {
  const CString ini_path = MakeFile(L"My Programs\\bin\\Velmora.ini", "[SYSTEM]\r\nDOCEXE=viewer\r\n");
  SetCommandLine(L"  \"" + At(L"My Programs\\bin\\a.exe") + L"\" -x");
  SetApplicationProfile(L"before.ini");
  CTundrilIni ini;
  ini.m_iniPath = L"untouched";
  EXPECT_EQ(ini.Init(), 0);
  EXPECT_EQ(ini.m_programDir, At(L"My Programs\\bin"));
  EXPECT_EQ(CommandLine(), At(L"My Programs\\bin"));
  EXPECT_EQ(ApplicationProfile(), ini_path);
  EXPECT_EQ(ini.m_iniPath, L"untouched");
  EXPECT_EQ(ini.m_docExe, L"viewer");
  // The second time what stands there is taken for the program.
  EXPECT_EQ(ini.Init(0), 0);
  EXPECT_EQ(ini.m_programDir, At(L"My Programs"));
  EXPECT_EQ(ApplicationProfile(), L"Velmora.ini");
  SetCommandLine(L"a.exe");
  EXPECT_EQ(ini.Init(0), 0);
  EXPECT_EQ(ini.m_programDir, L"");
}

TEST_F(TundrilIni, NothingIsReadOrWrittenWithoutAnApplicationObject) {
  MakeFile(L"bin\\Velmora.ini", "[SYSTEM]\r\nDOCEXE=viewer\r\n");
  SetCommandLine(At(L"bin\\a.exe"));
  CTundrilIni ini;
  EXPECT_EQ(ini.Init(0), 0);
  EXPECT_EQ(ApplicationProfile(), L"");
  EXPECT_EQ(ini.m_docExe, L"");
  EXPECT_EQ(ini.ReadKey(L"SYSTEM", L"DOCEXE"), L"");
  EXPECT_EQ(ini.WriteKey(L"SYSTEM", L"DOCEXE", L"x"), 0);
}

TEST_F(TundrilIni, KeysAreWrittenReadAndDeleted) {
  CTundrilIni ini;
  InitFrom(&ini, "");
  EXPECT_NE(ini.WriteKey(L"LAYOUT", L"Format", L"A3 å"), 0);
  EXPECT_EQ(ini.ReadKey(L"layout", L"FORMAT"), L"A3 å");
  EXPECT_NE(ini.WriteKey(L"LAYOUT", L"Format", L""), 0);
  EXPECT_EQ(ini.ReadKey(L"LAYOUT", L"Format"), L"");
  EXPECT_EQ(ReadBytes(ini.m_iniPath).find("Format"), std::string::npos);
  ini.m_iniPath = At(L"no such folder\\Velmora.ini");
  EXPECT_EQ(ini.WriteKey(L"LAYOUT", L"Format", L"A3"), 0);
}

TEST_F(TundrilIni, BufferHoldsTheCutValueAndNoMore) {
  CTundrilIni ini;
  InitFrom(&ini, "LONG=" + std::string(400, 'v') + "\r\n");
  wchar_t value[256];
  std::fill(std::begin(value), std::end(value), L'#');
  EXPECT_EQ(ini.ReadKey(L"SYSTEM", L"LONG", value), 1);
  EXPECT_EQ(CString(value), CString(L'v', 254));
  EXPECT_EQ(value[255], L'#');
  EXPECT_EQ(ini.ReadKey(L"SYSTEM", L"MISSING", value), 0);
  EXPECT_EQ(CString(value), L"");
}

TEST(TundrilIniLayout, FieldsStandInTheirOrder) {
  const CTundrilIni i;
  const void* fields[] = {&i.m_useIniFile,      &i.m_iniPath,    &i.m_today,       &i.m_programDir,
                          &i.m_cfgDir,          &i.m_msgPath,    &i.m_acadExe,     &i.m_civilDrawingExe,
                          &i.m_civilDrawingVer, &i.m_reserved,   &i.m_acadLtExe,   &i.m_acadOpt,
                          &i.m_acadVer,         &i.m_scriptPath, &i.m_mstationExe, &i.m_zipExe,
                          &i.m_unzipExe,        &i.m_docExe,     &i.m_autoGen,     &i.m_postCadMstation,
                          &i.m_bankCadMstation, &i.m_package,    &i.m_cadPlatform, &i.m_quorvalDrawingVer};
  EXPECT_TRUE(std::is_sorted(std::begin(fields), std::end(fields)));
  EXPECT_EQ(i.m_today.GetLength(), 10);
}

TEST_F(TundrilIni, CopyIsIndependent) {
  CTundrilIni copy;
  {
    CTundrilIni ini;
    InitFrom(&ini, "ACADEXE=acad\r\nACADVER=7\r\n");
    CopyToField(ini.m_package, L"BASE");
    ini.m_reserved = 5;
    copy = ini;
    const CTundrilIni constructed(ini);
    ini.m_acadExe = L"changed";
    ini.InstallPackage()[0] = L'X';
    EXPECT_EQ(constructed.m_acadExe, L"acad");
    EXPECT_EQ(CString(constructed.m_package), L"BASE");
  }
  EXPECT_EQ(copy.m_acadExe, L"acad");
  EXPECT_EQ(copy.m_acadVer, 7);
  EXPECT_EQ(copy.m_reserved, 5);
  EXPECT_EQ(CString(copy.InstallPackage()), L"BASE");
}

}  // namespace
}  // namespace velmora
