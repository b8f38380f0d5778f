#include "velmora/environment/tundril_ini.h"

#include <algorithm>
#include <string>

#include "tests/environment/installed.h"
#include "velmora/environment/running_program.h"
#include "velmora/platform/process.h"

namespace velmora {
namespace {

class TundrilIni : public Installed {
 protected:
  // Makes `lines` the section SYSTEM of an ini file of its own and initialises from its folder.
  void InitFrom(const std::string& lines) {
    const CString folder = L"prog" + CString(L'x', ++folders_);
    const CString path = MakeIni(folder, lines);
    const EnvironmentVariable variable(L"TUNDRIL", At(folder));
    EXPECT_EQ(ini_.Init(1), 0);
    EXPECT_EQ(ini_.m_iniPath, path);
  }

  CTundrilIni ini_;
  int folders_ = 0;
};

TEST(DateText, YearCountUpTo79MeansTheNewCentury) {
  EXPECT_EQ(DateText(126, 7, 9), L"2026-07-09");
  EXPECT_EQ(DateText(80, 12, 31), L"1980-12-31");
  EXPECT_EQ(DateText(79, 1, 1), L"2079-01-01");
  EXPECT_EQ(CTundrilIni().m_today.GetLength(), 10);
}

TEST_F(TundrilIni, KeysReachTheirFieldsAndEmptyOnesKeepThem) {
  InitFrom(
      "TUNDRIL.CFG=cfg\r\nMSG=msg\r\nACADEXE=acad\r\nCIILDRAWINGEXE=civil\r\nCIVILDRAWINGEXE=wrong\r\n"
      "SCRIPTPATH=\"  C:\\My Scripts\\\\  \"\r\nACADLTEXE=lt\r\nACADOPT=opt\r\nMSTATIONEXE=mstation\r\n"
      "ZIPEXE=zip\r\nUNZIPEXE=unzip\r\nDOCEXE=doc\r\nCADPLATFORM=set-up only\r\n");
  EXPECT_EQ(ini_.m_cfgDir, L"cfg");
  const auto others = [this] {
    return ini_.m_msgPath + L" " + ini_.m_acadExe + L" " + ini_.m_civilDrawingExe + L" " + ini_.m_scriptPath +
           L" " + ini_.m_acadLtExe + L" " + ini_.m_acadOpt + L" " + ini_.m_mstationExe + L" " +
           ini_.m_zipExe + L" " + ini_.m_unzipExe + L" " + ini_.m_docExe + L" " + ini_.m_cadPlatform;
  };
  const CString values = L"msg acad civil C:\\My Scripts lt opt mstation zip unzip doc ";
  EXPECT_EQ(others(), values);
  InitFrom("TUNDRIL.CFG=\r\nACADEXE=\r\nSCRIPTPATH=\r\n");
  EXPECT_EQ(ini_.m_programDir, At(L"progxx"));
  EXPECT_EQ(ini_.m_cfgDir, At(L"progxx"));
  EXPECT_EQ(others(), values);
}

TEST_F(TundrilIni, NumbersAndFlagsFromTheirText) {
  const auto version = &CTundrilIni::m_acadVer;
  const auto auto_gen = &CTundrilIni::m_autoGen;
  const auto post_cad = &CTundrilIni::m_postCadMstation;
  const struct {
    const char* line;
    int CTundrilIni::*field;
    int before, after;
  } kCases[] = {
      {"ACADVER=25.6x", version, 24, 25},
      {"ACADVER=-3", version, 24, -3},
      {"ACADVER=x7", version, 24, 24},
      {"ACADVER=99999999999", version, 24, 24},
      {"CIVILDRAWINGVER=7", &CTundrilIni::m_civilDrawingVer, 24, 7},
      {"AUTOGEN=ja", auto_gen, 0, 1},
      {"AUTOGEN=JAA", auto_gen, 1, 0},
      {"AUTOGEN=NEJ", auto_gen, 0, 0},
      {"AUTOGEN=nej", auto_gen, 1, 1},  // does not clear it
      {"AUTOGEN=", auto_gen, 1, 1},
      {"POSTCAD=Mstation", post_cad, 0, 1},
      {"POSTCAD=", post_cad, 1, 0},  // follows an empty key too
      {"BANKCAD=MSTATION", &CTundrilIni::m_bankCadMstation, 0, 1},
  };
  for (const auto& a : kCases) {
    ini_.*a.field = a.before;
    InitFrom(std::string(a.line) + "\r\n");
    EXPECT_EQ(ini_.*a.field, a.after) << a.before << " " << a.line;
  }
}

TEST_F(TundrilIni, WithoutTheVariableTheProgramFolderIsKept) {
  ini_.m_programDir = At(L"elsewhere");
  const CString ini_path = MakeIni(L"elsewhere");
  EXPECT_EQ(ini_.Init(1), 0);
  EXPECT_EQ(ini_.m_iniPath, ini_path);
}

TEST_F(TundrilIni, CommandLineGivesTheFolderAndIsCutToIt) {
  const CString ini_path = MakeIni(L"My Programs\\bin", "DOCEXE=viewer\r\n");
  const CString line = L"  \"" + At(L"My Programs\\bin\\a.exe") + L"\" -x";
  SetCommandLine(line);
  EXPECT_EQ(ini_.Init(), 0);
  EXPECT_EQ(ini_.m_programDir, At(L"My Programs\\bin"));
  // Without an application object nothing is read or written.
  EXPECT_EQ(ApplicationProfile(), L"");
  EXPECT_EQ(ini_.m_docExe, L"");
  EXPECT_EQ(ini_.WriteKey(L"SYSTEM", L"DOCEXE", L"x"), 0);

  SetApplicationProfile(L"before.ini");
  SetCommandLine(line);
  EXPECT_EQ(ini_.Init(0), 0);
  EXPECT_EQ(CommandLine(), At(L"My Programs\\bin"));
  EXPECT_EQ(ApplicationProfile(), ini_path);
  EXPECT_EQ(ini_.m_iniPath, L"");
  EXPECT_EQ(ini_.m_docExe, L"viewer");
  // The second time what stands there is taken for the program.
  EXPECT_EQ(ini_.Init(0), 0);
  EXPECT_EQ(ini_.m_programDir, At(L"My Programs"));
  EXPECT_EQ(ApplicationProfile(), L"Velmora.ini");
}

TEST_F(TundrilIni, KeysAreWrittenReadAndDeleted) {
  InitFrom("LONG=" + std::string(400, 'v') + "\r\n");
  EXPECT_EQ(ini_.WriteKey(L"LAYOUT", L"Format", L"A3 å"), 1);
  EXPECT_EQ(ini_.ReadKey(L"layout", L"FORMAT"), L"A3 å");
  EXPECT_EQ(ini_.WriteKey(L"LAYOUT", L"Format", L""), 1);
  EXPECT_EQ(ReadBytes(ini_.m_iniPath).find("Format"), std::string::npos);
  wchar_t value[256];
  std::fill(std::begin(value), std::end(value), L'#');
  EXPECT_EQ(ini_.ReadKey(L"SYSTEM", L"LONG", value), 1);
  EXPECT_EQ(CString(value), CString(L'v', 254));
  EXPECT_EQ(value[255], L'#');
  EXPECT_EQ(ini_.ReadKey(L"SYSTEM", L"MISSING", value), 0);
  EXPECT_EQ(value[0], L'\0');
  ini_.m_iniPath = At(L"no such folder\\Velmora.ini");
  EXPECT_EQ(ini_.WriteKey(L"LAYOUT", L"Format", L"A3"), 0);
}

}  // namespace
}  // namespace velmora
