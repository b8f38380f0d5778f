// The facade: parameters, JB2/3 settings and a project's own files.
#include "velmora/settings/tundril_inst.h"

#include <clocale>
#include <string>
#include <thread>

#include "tests/settings/settings_folders.h"
#include "velmora/settings/jb23_format.h"

namespace velmora {
namespace {

using TundrilInst = SettingsFolders;

constexpr wchar_t kTundril[] = L"TUNDRIL.PAR";
constexpr wchar_t kKarsk[] = L"KARSK.PAR";
constexpr wchar_t kJb23[] = L"JB23.PAR";

TEST_F(TundrilInst, ValuesNumbersAndTheirDefaults) {
  Put(L"cfg\\TUNDRIL.PAR",
      "LSKALA=\r\nVASKALA=max\r\nVASTEG=abc\r\nIDHOJD= 4.25x\r\nTRSTEG=3.9\r\nEGEN=1e3\r\n");
  EXPECT_EQ(inst_.ReadKey(L"tundril.par", L"HSKALA"), L"100");
  EXPECT_EQ(inst_.ReadKey(kTundril, L"LSKALA"), L"100");
  EXPECT_EQ(inst_.ReadKey(kTundril, L"egen"), L"1e3");
  EXPECT_EQ(inst_.ReadKey(L"OTHER.PAR", L"HSKALA"), L"");
  EXPECT_EQ(inst_.Default(L"OTHER.PAR", L"HSKALA"), L"");
  EXPECT_EQ(inst_.WriteKey(L"OTHER.PAR", L"HSKALA", L"1"), 0);
  const struct {
    const wchar_t* key;
    int only_default, integer;
    double real;
  } kCases[] = {{L"PORESKALA", 0, -1, -1}, {L"VASKALA", 0, -1, -9}, {L"VASTEG", 0, -9, -9},
                {L"VASTEG", 1, 20, 20},    {L"IDHOJD", 0, 4, 4.25}, {L"IDHOJD", 1, 3, 3.5},
                {L"TRSTEG", 0, 3, 3.9},    {L"EGEN", 0, 1, 1000},   {L"FONT", 0, -9, -9},
                {L"saknas", 0, -9, -9}};
  for (const auto& c : kCases) {
    EXPECT_EQ(inst_.ReadKeyInt(kTundril, c.key, c.only_default), c.integer) << ToUtf8(c.key);
    EXPECT_EQ(inst_.ReadKeyDouble(kTundril, c.key, c.only_default), c.real) << ToUtf8(c.key);
  }
  // The same key, by file.
  EXPECT_TRUE(inst_.Default(kTundril, L"qtskala") == L"10" && inst_.Default(kJb23, L"QTSKALA") == L"14");
  EXPECT_TRUE(inst_.ReadKey(kKarsk, L"LINJEBREDD") == L"F\u00C4RG" &&
              inst_.ReadKey(kTundril, L"LINJEBREDD") == L"NEJ");
  EXPECT_TRUE(inst_.Default(kKarsk, L"KBSTEG4") == L"0.0" && inst_.Default(kTundril, L"U0") == L"0.1");
}

TEST_F(TundrilInst, WritesTextIntegersAndNumbers) {
  const CString path = Put(L"cfg\\TUNDRIL.PAR", "HSKALA=100\r\n");
  EXPECT_EQ(inst_.WriteKey(kTundril, L"VBSKALA", -1), 0);
  EXPECT_EQ(inst_.WriteKey(kTundril, L"TOTSPYLE", -1), 0);
  EXPECT_EQ(inst_.WriteKey(kTundril, L"skala", -1), 0);
  EXPECT_EQ(inst_.WriteKey(kTundril, L"IDHOJD", 2.5, 3), 0);
  EXPECT_EQ(inst_.WriteKey(kTundril, CString(L"FONT"), L"R\u00D6D"), 0);
  EXPECT_EQ(ReadBytes(path),
            "HSKALA=100\r\nVBSKALA=MAX\r\nTOTSPYLE=-1\r\nskala=-1\r\nIDHOJD=2.500\r\nFONT=R\xD6"
            "D\r\n");
  // Another program's change is seen after Init only; the stone program's file always.
  Put(L"cfg\\TUNDRIL.PAR", "HSKALA=1\r\n");
  EXPECT_EQ(inst_.ReadKey(kTundril, L"HSKALA"), L"100");
  const CTundrilInst copy = inst_;
  inst_.Init(&ini_, &project_);
  EXPECT_EQ(inst_.ReadKey(kTundril, L"HSKALA"), L"1");
  EXPECT_EQ(CTundrilInst(copy).ReadKey(kTundril, L"HSKALA"), L"100");
  Put(L"cfg\\KARSK.PAR", "JBMAX=1\r\n");
  EXPECT_EQ(inst_.ReadKeyInt(kKarsk, L"JBMAX", 0), 1);
  EXPECT_EQ(inst_.WriteKey(kKarsk, L"JBMAX", 2), 0);
  EXPECT_EQ(Bytes(L"cfg\\KARSK.PAR"), "JBMAX=2\r\n");
}

TEST(Jb23Format, KeysAndPlaces) {
  for (int line = 1; line <= 11; ++line) {
    const Jb23Keys keys = Jb23KeysOfLine(line);
    EXPECT_TRUE(FieldOfJb23Key(keys.scale).line == line && !FieldOfJb23Key(keys.scale).step);
    EXPECT_TRUE(FieldOfJb23Key(keys.step).line == line && FieldOfJb23Key(keys.step).step);
  }
  EXPECT_TRUE(FieldOfJb23Key(L"hastskala").line == 1 && FieldOfJb23Key(L"xSTEG").step);
}

TEST_F(TundrilInst, Jb23ValuesOnDisk) {
  EXPECT_EQ(inst_.Jb23ReadKey(L"HASTSTEG"), L"");
  // Without a file: only the first line's scale makes one.
  EXPECT_EQ(inst_.Jb23WriteKey(L"HASTSKALA", L"1"), L"1");
  EXPECT_FALSE(FileOrFolderExists(At(L"cfg\\JB23.PAR")));
  EXPECT_EQ(inst_.Jb23WriteKey(L"SJUNKSKALA", L"120"), L"120");
  EXPECT_EQ(Bytes(L"cfg\\JB23.PAR"), "120   50\r\n");
  // A line beyond the last lands behind it.
  inst_.Jb23WriteKey(L"QTSTEG", L"3");
  EXPECT_EQ(Bytes(L"cfg\\JB23.PAR"), "120   50\r\n0   3\r\n");

  Put(L"proj\\JB23.PAR", "100 50\n40 10\nkvar  som den \xE4r \n4");
  EXPECT_TRUE(inst_.Jb23ReadKey(L"HASTSKALA") == L"40" && inst_.Jb23ReadKey(L"HASTSTEG") == L"10");
  EXPECT_TRUE(inst_.Jb23ReadKey(L"hastskala") == L"100" && inst_.Jb23ReadKey(L"USTEG") == L"");
  Put(L"proj\\JB23.tmp", "skr\xE4p");
  inst_.Jb23WriteKey(L"HASTSTEG", L"5");
  inst_.Jb23WriteKey(L"RPMSTEG", L"6");
  EXPECT_EQ(Bytes(L"proj\\JB23.PAR"), "100 50\r\n40   5\r\nkvar  som den \xE4r \r\n4   6\r\n");
  EXPECT_EQ(inst_.Jb23WriteKey(L"HASTSTEG", L"\u0416"), L"\u0416");
  EXPECT_EQ(Bytes(L"proj\\JB23.PAR"), "100 50\r\n40   5\r\nkvar  som den \xE4r \r\n4   6\r\n");
  EXPECT_EQ(NamesIn(At(L"proj")), std::vector<CString>{L"JB23.PAR"});
  EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(TundrilInst, Jb23ThroughTheFacade) {
  Put(L"cfg\\JB23.PAR", "100 50\r\n");
  EXPECT_EQ(inst_.ReadKey(kJb23, L"SJUNKSTEG"), L"50");
  EXPECT_EQ(inst_.ReadKey(kJb23, L"HASTSTEG"), L"10");  // built in
  EXPECT_EQ(inst_.WriteKey(kJb23, L"SJUNKSTEG", 60), 0);
  EXPECT_EQ(inst_.WriteKey(kJb23, L"HASTSTEG", L"20"), -1);
  EXPECT_EQ(Bytes(L"cfg\\JB23.PAR"), "100   60\r\n0   20\r\n");
  EXPECT_EQ(inst_.WriteKey(kJb23, L"SJUNKSKALA", -1), 0);
  EXPECT_EQ(inst_.ReadKeyInt(kJb23, L"SJUNKSKALA", 0), -1);
  EXPECT_EQ(inst_.Jb23ReadKey(L"SJUNKSKALA"), L"MAX");
}

TEST_F(TundrilInst, AProjectGetsAndLosesItsOwnFiles) {
  EXPECT_TRUE(inst_.ProjInst() == 0 && inst_.ProjStenInst() == 0 && NamesIn(At(L"proj")).empty());
  EXPECT_EQ(inst_.CreateLokalaFiler(0, 1), 0);
  EXPECT_EQ(NamesIn(At(L"proj")), (std::vector<CString>{L"JB23.PAR", L"KODFIL.DAT", L"LINKOD.PAR",
                                                        L"MILJKOD.DAT", L"TUNDRIL.PAR"}));
  EXPECT_EQ(Bytes(L"proj\\JB23.PAR"), "*\r\n");
  EXPECT_EQ(Bytes(L"proj\\KODFIL.DAT"), "*\r\n*\r\n");
  EXPECT_EQ(Bytes(L"proj\\MILJKOD.DAT"), "*\r\n*\r\n*\r\n*\r\n*\r\n");
  EXPECT_EQ(Bytes(L"proj\\TUNDRIL.PAR") + Bytes(L"proj\\LINKOD.PAR"), "*\r\n*\r\n");

  for (const wchar_t* name : {L"TUNDRIL.PAR", L"LINKOD.PAR", L"KODFIL.DAT", L"Stenkod.dat", L"StenkodN.dat",
                              L"JB23.PAR", L"KARSK.PAR"})
    Put(CString(L"prog\\") + name, "prog");
  Put(L"cfg\\KODFIL.DAT", "cfg");
  Put(L"proj\\StenkodN.dat", "egen");
  EXPECT_EQ(inst_.ProjInst(), 1);  // only what is missing
  EXPECT_EQ(Bytes(L"proj\\Stenkod.dat") + Bytes(L"proj\\StenkodN.dat") + Bytes(L"proj\\KODFIL.DAT"),
            "progegen*\r\n*\r\n");
  EXPECT_EQ(inst_.CreateLokalaFiler(1, 1), 0);
  EXPECT_EQ(Bytes(L"proj\\TUNDRIL.PAR"), "*\r\n");
  EXPECT_EQ(Bytes(L"proj\\StenkodN.dat"), "egen");
  EXPECT_EQ(Bytes(L"proj\\KODFIL.DAT") + Bytes(L"proj\\LINKOD.PAR") + Bytes(L"proj\\JB23.PAR"),
            "cfgprogprog");
  EXPECT_EQ(Bytes(L"proj\\MILJKOD.DAT"), "*\r\n*\r\n*\r\n*\r\n*\r\n");

  EXPECT_TRUE(inst_.CreateLokalStenFil(0) == 0 && inst_.ProjStenInst() == 1 &&
              Bytes(L"proj\\KARSK.PAR") == "prog");
  Put(L"proj\\KARSK.PAR", "egen");
  inst_.CreateLokalStenFil(1);
  EXPECT_EQ(Bytes(L"proj\\KARSK.PAR"), "egen");
  EXPECT_EQ(inst_.RemoveLokalaFiler(), 0);
  EXPECT_EQ(NamesIn(At(L"proj")), std::vector<CString>{L"KARSK.PAR"});
  EXPECT_TRUE(inst_.RemoveLokalStenFil() == 0 && inst_.RemoveLokalaFiler() == 0 &&
              NamesIn(At(L"proj")).empty());
}

TEST(LocaleCheckAndFix, APointAfterAnyLocale) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  const std::string text = std::setlocale(LC_CTYPE, nullptr);
  for (const char* name : {"Swedish", "sv_SE.UTF-8", "de_DE.UTF-8"}) std::setlocale(LC_NUMERIC, name);
  if (std::string(std::localeconv()->decimal_point) == ".")
    GTEST_SKIP() << "no locale here has a decimal comma";
  EXPECT_EQ(CTundrilInst::LocaleCheckAndFix(), 0);
  EXPECT_STREQ(std::localeconv()->decimal_point, ".");
  EXPECT_EQ(std::setlocale(LC_CTYPE, nullptr), text);
  std::setlocale(LC_NUMERIC, before.c_str());
}

// Each of two writers finds its own value after every write, also while the other one writes another line.
TEST_F(TundrilInst, TwoWritersOfRigSettingsLoseNothing) {
  Put(L"cfg\\JB23.PAR", "1 1\r\n1 1\r\n1 1\r\n");
  const auto write = [this](const wchar_t* key) {
    CTundrilInst inst;
    inst.Init(&ini_, &project_);
    for (int i = 100; i < 160; ++i) {
      CString value;
      value.Format(L"%d", i);
      inst.Jb23WriteKey(key, value);
      EXPECT_EQ(inst.Jb23ReadKey(key), value);
    }
  };
  std::thread other([&] { write(L"SJUNKSTEG"); });
  write(L"SJUNKSKALA");
  other.join();
  EXPECT_EQ(Bytes(L"cfg\\JB23.PAR").substr(0, 3), "159");
}

}  // namespace
}  // namespace velmora
