// The configuration and the parameter files.
#include <cstdlib>
#include <cwchar>

#include "tests/settings/settings_folders.h"
#include "velmora/settings/jb23_par.h"
#include "velmora/settings/tundril_cfg.h"
#include "velmora/settings/tundril_par.h"

namespace velmora {
namespace {

using KeyValue = SettingsFolders;

TEST_F(KeyValue, AConfigurationIsReadLookedUpAndWrittenBackByTheByte) {
  ini_.m_iniPath = Put(L"cfg\\Velmora.ini", "");
  const CString path =
      Put(L"cfg\\TUNDRIL.CFG",
          "SPR\xC5K=svenska\nA=B=C\r\n=X\r\nskr\xE4p\r\n\r\nTOM=\r\n NYCKEL = 5\r\nA=tv\xE5\r\nSIST=1");
  CTundrilCFG cfg(&ini_);
  EXPECT_EQ(cfg.ReadKey(L"spr\u00E5k"), L"svenska");
  EXPECT_EQ(cfg.ReadKey(L"a"), L"B=C");
  EXPECT_EQ(cfg.ReadKey(L"NYCKEL"), L"");
  EXPECT_EQ(cfg.ReadKey(L" NYCKEL "), L" 5");
  EXPECT_EQ(cfg.FindKey(L"TOM"), 0);
  EXPECT_EQ(cfg.ReadKey(L"TOM"), L"");
  EXPECT_EQ(cfg.FindKey(L""), -1);
  EXPECT_EQ(cfg.WriteKey(L"a", L"\u00C4"), 0);
  EXPECT_EQ(cfg.WriteKey(L"NY", L"2"), 0);
  EXPECT_EQ(cfg.WriteKey(L"SIST", L""), 0);
  EXPECT_EQ(ReadBytes(path), "SPR\xC5K=svenska\r\nA=\xC4\r\n NYCKEL = 5\r\nA=tv\xE5\r\nNY=2\r\n");
  EXPECT_EQ(cfg.FindKey(L"SIST"), 0);
  // A letter that the file cannot hold, and a file that may not be written.
  EXPECT_EQ(cfg.WriteKey(L"NY", L"\u0416"), -1);
  EXPECT_EQ(cfg.ReadKey(L"NY"), L"\u0416");
  SetWriteProtected(path, true);
  EXPECT_EQ(cfg.WriteKey(L"NY", L"3"), -1);
  SetWriteProtected(path, false);
  EXPECT_EQ(ReadBytes(path), "SPR\xC5K=svenska\r\nA=\xC4\r\n NYCKEL = 5\r\nA=tv\xE5\r\nNY=2\r\n");
  EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(KeyValue, LimitsOfKeysAndValues) {
  const std::string key39(39, 'k'), value258(258, 'v');
  Put(L"a.cfg", key39 + "=1\r\nX" + key39 + "=2\r\nV=" + value258 + "\r\nW=" + value258 + "v\r\nEFTER=3\r\n");
  CTundrilCFG cfg(L"P", At(L"a.cfg"));
  EXPECT_EQ(cfg.ReadKey(CString(L'K', 39)), L"1");
  EXPECT_EQ(cfg.ReadKey(L"V"), CString(L'v', 258));
  EXPECT_EQ(cfg.FindKey(L"W"), -1);
  EXPECT_EQ(cfg.FindKey(L"EFTER"), 0);
  int count = 0;
  EXPECT_EQ(cfg.Where(&count), 5);  // the blank records keep their places
  EXPECT_EQ(count, 5);

  EXPECT_EQ(cfg.WriteKey(CString(L'k', 40), L"1"), -1);
  EXPECT_EQ(cfg.WriteKey(L"", L"1"), -1);
  EXPECT_EQ(cfg.WriteKey(L"EFTER", CString(L'v', 260)), -1);
  EXPECT_EQ(cfg.ReadKey(L"EFTER"), L"3");
  EXPECT_EQ(cfg.WriteKey(L"LANG", CString(L'v', 260)), -1);
  EXPECT_EQ(cfg.FindKey(L"LANG"), 0);
  EXPECT_EQ(cfg.WriteKey(L"LANG", CString(L'v', 259)), 0);
  EXPECT_EQ(Bytes(L"a.cfg"), key39 + "=1\r\nV=" + value258 + "\r\nEFTER=3\r\nLANG=" + value258 + "v\r\n");
}

TEST_F(KeyValue, WithoutAFileTheListLivesInMemory) {
  ini_.m_iniPath = L"Velmora.ini";  // no folder
  CTundrilCFG below_root(&ini_);
  CTundrilCFG cfg(L"P", L"");
  CTundrilPAR par(nullptr, nullptr);
  EXPECT_TRUE(cfg.WriteKey(L"A", L"1") == 0 && cfg.ReadKey(L"a") == L"1");
  EXPECT_TRUE(par.WriteKey(L"A", L"1") == 0 && par.ReadKey(L"a") == L"1" && par.GetParFilNamn().IsEmpty());
  EXPECT_EQ(below_root.ReadKey(L"A"), L"");
  EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(KeyValue, WhatCannotBeReadIsToldAndNeverReplaced) {
  const CString folder = At(L"proj\\TUNDRIL.PAR");
  MakeFolder(folder);
  MakeFolder(At(L"proj\\KARSK.PAR"));
  MakeFolder(At(L"proj\\JB23.PAR"));
  MakeFolder(At(L"x.cfg"));
  CTundrilCFG cfg(L"Karsk", At(L"x.cfg"));
  CTundrilPAR par(&ini_, &project_), karsk(&ini_, &project_, 1);
  CJb23Par jb23(&ini_, &project_);
  EXPECT_EQ(cfg.WriteKey(L"A", L"1"), -1);
  EXPECT_EQ(par.WriteKey(L"A", L"1"), -1);
  EXPECT_EQ(
      TakeMessages(),
      (std::vector<CString>{L"L\u00E4sning av Karsk - konfigurering|Kan inte \u00F6ppna "
                            L"CFG-filen\n@\\x.cfg\nAvbryter l\u00E4sning!",
                            L"L\u00E4sning av Tundril - inst\u00E4llningar|Kan inte \u00F6ppna "
                            L"-filen\n@\\proj\\TUNDRIL.PAR\nAvbryter l\u00E4sning!",
                            L"L\u00E4sning av Karsk - inst\u00E4llningar|Kan inte \u00F6ppna "
                            L"-filen\n@\\proj\\KARSK.PAR\nAvbryter l\u00E4sning!",
                            L"L\u00E4sning av Tundril - jb2/3 inst\u00E4llningar|Kan inte \u00F6ppna "
                            L"-filen\n@\\proj\\JB23.PAR\nAvbryter l\u00E4sning!",
                            L"Update Velmora Settings|Could not open file for write\n@\\proj\\TUNDRIL.PAR"}));
  // A line that never ends: nothing of the file is taken, and what is on disk stays.
  std::string endless = "A=1\r\nB=";
  endless.resize(size_t{65} << 20, 'x');
  Put(L"endless.cfg", endless);
  CTundrilCFG whole_or_nothing(L"P", At(L"endless.cfg"));
  EXPECT_EQ(whole_or_nothing.ReadKey(L"A"), L"");
  EXPECT_EQ(whole_or_nothing.WriteKey(L"C", L"3"), -1);
  EXPECT_EQ(GetFileStatus(At(L"endless.cfg"))->size, endless.size());
  EXPECT_EQ(TakeMessages().size(), 1u);
}

TEST_F(KeyValue, WhichFile) {
  Put(L"prog\\TUNDRIL.PAR", "A=prog\r\nB=prog\r\n");
  Put(L"prog\\KARSK.PAR", "A=karsk\r\n");
  EXPECT_EQ(CTundrilPAR(&ini_, &project_).ReadKey(L"A"), L"prog");
  Put(L"cfg\\TUNDRIL.PAR", "A=cfg\r\n");
  EXPECT_EQ(CTundrilPAR(&ini_, &project_).ReadKey(L"A"), L"cfg");
  Put(L"proj\\TUNDRIL.PAR", "C=proj\r\n");
  CTundrilPAR par(&ini_, &project_);
  EXPECT_EQ(par.GetParFilNamn(), At(L"proj\\TUNDRIL.PAR"));
  EXPECT_EQ(par.ReadKey(L"A"), L"");
  const auto modified = GetFileStatus(At(L"proj\\TUNDRIL.PAR"))->modified;
  EXPECT_EQ(par.WriteKey(L"C", L"proj"), 0);
  EXPECT_EQ(GetFileStatus(At(L"proj\\TUNDRIL.PAR"))->modified, modified);
  EXPECT_EQ(par.WriteKey(L"c", L"PROJ"), 0);
  EXPECT_EQ(Bytes(L"proj\\TUNDRIL.PAR"), "C=PROJ\r\n");
  EXPECT_EQ(CTundrilPAR(&ini_, &project_, 1).ReadKey(L"A"), L"karsk");
  for (const int which : {0, 2}) {
    CTundrilPAR empty(&ini_, &project_, which);
    EXPECT_TRUE(empty.ReadKey(L"C").IsEmpty() && empty.GetParFilNamn().IsEmpty() && empty.Where() == -1);
  }
}

TEST_F(KeyValue, Jb23HasNoFileName) {
  std::string lines;
  for (int line = 1; line <= 13; ++line)
    lines += " " + std::to_string(line) + "\t\t" + std::to_string(line * 100) + " rest\r\n";
  Put(L"cfg\\JB23.PAR", lines);
  CJb23Par par(&ini_, &project_);
  EXPECT_TRUE(par.ReadKey(L"SJUNKSKALA") == L"1" && par.ReadKey(L"ustep").IsEmpty() &&
              par.ReadKey(L"usteg") == L"1100");
  EXPECT_TRUE(par.ReadKey(L"UNKNOWN1") == L"12" && par.ReadKey(L"UNKNOWN2") == L"1200");
  int count = 0;
  par.Where(&count);
  EXPECT_EQ(count, 26);
  EXPECT_EQ(par.GetParFilNamn(), L"");
  EXPECT_EQ(par.WriteKey(L"USTEG", L"7"), 0);
  EXPECT_EQ(par.WriteKey(CString(L'k', 40), L"7"), -1);
  EXPECT_EQ(Bytes(L"cfg\\JB23.PAR"), lines);
  // Every line counts, also one with too few words.
  Put(L"cfg\\JB23.PAR", "*\r\n\r\n5");
  CJb23Par short_lines(&ini_, &project_);
  EXPECT_TRUE(short_lines.ReadKey(L"SJUNKSKALA") == L"*" && short_lines.ReadKey(L"KRAFTSKALA") == L"5");
  EXPECT_TRUE(short_lines.FindKey(L"KRAFTSTEG") == 0 && short_lines.FindKey(L"RPMSKALA") == -1);
}

// The first match in list order, found without the index.
int PlaceOf(CTundrilCFG& cfg, const wchar_t* key) {
  for (bool more = cfg.Home() == 0; more; more = cfg++ != nullptr)
    if (CString(cfg.pael->nyckel).CompareNoCase(key) == 0 && *key != 0) return cfg.Where();
  return -1;
}

TEST_F(KeyValue, TheIndexNeverDisagreesWithTheList) {
  // A few keys only, so that they are doubled, renamed and deleted all the time.
  const wchar_t* const keys[] = {L"a", L"B", L"\u00C5", L"aa", L"", L"c"};
  const auto any = [](int below) { return std::rand() % below; };
  std::srand(7);
  for (int round = 0; round < 40; ++round) {
    CTundrilCFG cfg(L"P", L"");
    for (int step = 0, more = 1; step < 200; ++step, more = any(3)) {
      const wchar_t* key = keys[any(6)];
      cfgtype record{};
      CopyToField(record.nyckel, key);
      switch (any(9)) {
        case 0:
          cfg.Ny(any(2), &record);
          break;
        case 1:
          cfg.Delete();
          break;
        case 2:
          if (cfg.pael != nullptr) CopyToField(cfg.pael->nyckel, key);
          break;
        case 3:
          if (cfg.pmark != nullptr) CopyToField(cfg.pmark->nyckel, key);
          break;
        case 4:
          cfg.Set_mark();
          break;
        case 5:
          cfg.Goto_mark();
          break;
        default:
          cfg.WriteKey(key, L"v");
      }
      if (more > 0) continue;  // another change first
      const wchar_t* wanted = keys[any(6)];
      int count = 0;
      const int found = cfg.FindKey(wanted);
      const int where = cfg.Where(&count);
      const int place = PlaceOf(cfg, wanted);
      ASSERT_EQ(found, place > 0 ? 0 : -1);
      ASSERT_EQ(where, place > 0 ? place : count == 0 ? -1 : count);
      cfg.FindKey(wanted);
    }
  }
}

}  // namespace
}  // namespace velmora
