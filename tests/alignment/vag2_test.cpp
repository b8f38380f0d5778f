#include "velmora/alignment/vag2.h"

#include <gtest/gtest.h>

#include "tests/alignment/shapes.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

class Vag2 : public AlignmentFiles {
 protected:
  Vag2() {
    project_.SetPath(folder_.Path());
    MakeFolder(project_.m_DbfKat);
  }
  CString InDbf(const CString& name) const { return project_.m_DbfKat + L"\\" + name; }
  int SaveArea(const wchar_t* alignment = L"V\u00E4g 1.VL") {
    CVag2 set;
    CopyToField(set.vlFil, alignment);
    set.omrSekMin = 10.0004;
    set.omrSekMax = 20;
    set.omrAvstMin = -5.5;
    return set.SaveOmr(&project_);
  }

  CProjPath project_;
};

TEST_F(Vag2, ACombinedFileFillsBothAndIsWrittenBack) {
  CVag2 set;
  ASSERT_EQ(Load(&set,
                 "0 0 0 100 1 $V\xE4g$x\r\nskr\xE4p\r\n0 50 0 150\r\n*\r\n1 2 3 4\r\n* inte ens h\xE4r\r\n"
                 "10 100 -0.1\r\n*\r\n1 2\r\n12 150 0 99\r\n\r\n"),
            0);
  EXPECT_STREQ(set.vlFil, L"A$P1.VL");
  const std::vector<kovltype> profile = PointsOf(set.profil);
  ASSERT_EQ(profile.size(), 2u);
  EXPECT_TRUE(profile[0].x == 10 && profile[0].y == 100 && profile[0].bulge == -0.1 && profile[0].sek == 100);
  EXPECT_EQ(profile[1].sek, 150.0);
  EXPECT_EQ(messages_.status,
            (std::vector<CString>{L"Fel rad : skr\u00E4p", L"Fel rad : 1 2", L"Fel rad : "}));
  EXPECT_TRUE(set.plan.omrSekMax == 150 && set.profil.omrSekMax == 150);

  ASSERT_EQ(set.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_),
            "0.0000 0.0000 0.0000 100.0000 1 $V\xE4g\r\n0.0000 50.0000 0.0000 150.0000\r\n"
            "*\r\nProfil\r\n*\r\n10.0000 100.0000 -0.1000\r\n12.0000 150.0000 0.0000\r\n");
  ASSERT_EQ(Load(&set, "1 2 0 3\n"), 0);  // replaces, and has no name
  EXPECT_TRUE(PointsOf(set.plan).size() == 1 && set.profil.Where() == -1 && set.vlNamn[0] == L'\0');
  EXPECT_EQ(set.Init(nullptr), 0);
  EXPECT_EQ(set.plan.Where(), -1);
}

TEST_F(Vag2, TheFirstTwoLinesTellAPlanFromAProfile) {
  const struct {
    const char* bytes;
    size_t plan, profile;
  } kCases[] = {
      {"100 5.0 0 5.1\n101 10.0 0 10.09\n", 0, 2},
      {"100 5.0 0 5.11\n101 10.0 0 10.0\n", 2, 0},
      {"100 0 0 0.1\n101 10.0 0 10.0\n", 0, 2},  // a tenth at most
      {"100 5.0 0 5.0\n101 0 0 0.1\n", 2, 0},    // less than a tenth
      {"100 5.0 0 5.0\nrubrik\n101 10.0 0 10.0\n", 2, 0},
      {"100 5.0 0 5.0\n", 1, 0},
      {"100 5.0 0 5.0 1\n101 10.0 0 10.0\n", 2, 0},
      {"100 5.0 0 7.0 10\n101 10.0 0 9.0\n", 0, 2},
      {"100 5.0 0 5.0 3\n101 10.0 0 10.0\n", 0, 2},
      {"*\nProfil\n*\n10 100 0\n", 0, 1},
      {"", 0, 0},
  };
  for (const auto& [bytes, plan, profile] : kCases) {
    CVag2 set;
    EXPECT_EQ(Load(&set, bytes), 0);
    EXPECT_EQ(PointsOf(set.plan).size(), plan) << bytes;
    EXPECT_EQ(PointsOf(set.profil).size(), profile) << bytes;
    EXPECT_TRUE(set.plan.typ == 1 && set.profil.typ == 10);
  }
}

TEST_F(Vag2, AProfileAloneIsWrittenWithItsType) {
  CVag2 set;
  for (wchar_t& c : set.vlNamn) c = L'n';  // no room for an end
  ASSERT_EQ(set.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_), "");
  AddPoints(&set.profil, {{10, 100, 0, 100}, {12, 150, 0, 150}});
  ASSERT_EQ(set.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_), "10.0000 100.0000 0.0000 100.0000 10 $" + std::string(255, 'n') +
                                  "\r\n12.0000 150.0000 0.0000 150.0000\r\n");
}

// --- the area file

TEST_F(Vag2, SavingTheAreaKeepsWhatOthersWrote) {
  const std::string area = "V\xE4g 1.VL\r\n10.000 20.000\r\n-5.500 30.000\r\n";
  const auto expect_saved = [&](const std::string& after) {
    EXPECT_EQ(SaveArea(), 0);
    EXPECT_EQ(ReadBytes(project_.m_VlPath), after);
    EXPECT_EQ(NamesIn(project_.m_DbfKat), std::vector<CString>{L"TUNDRIL.VL"});
  };
  WriteBytes(InDbf(L"vl.tmp"), "left by a program that was killed");
  expect_saved("*\r\n*\r\n" + area);  // a new file

  const std::string long_line = std::string(141, 'a') + "*" + std::string(400, 'b') + "\r\n";
  const std::pair<std::string, std::string> kKeptAndLost[] = {
      {"a b\r\n*\r\nannat\r\n* * \r\n", "old.vl\r\n1 2\r\n3 4\r\nmer\r\n*\r\nslut\r\n"},
      {long_line + "a*\r\n *\r\n*\r\n*\r\n", "old.vl"},
      {"\x81\x8D\r\n*\r\n*\r\n", ""},  // bytes that Windows-1252 leaves undefined
      {"*\r\na\r\n", ""},              // one star only
  };
  for (const auto& [kept, lost] : kKeptAndLost) {
    WriteBytes(project_.m_VlPath, kept + lost);
    expect_saved(kept + area);
  }
  WriteBytes(project_.m_VlPath, "*\r\n*");  // the second star has no line end
  expect_saved("*\r\n*\r\n" + area);
}

TEST_F(Vag2, TheAreaIsReadBackWithItsAlignment) {
  ASSERT_EQ(SaveArea(), 0);
  EXPECT_EQ(SaveArea(L"\u0416.vl"), -1);  // leaves the old one
  CVag2 set;
  EXPECT_EQ(set.ReadOmr(&project_), -1);  // no alignment file yet
  WriteBytes(InDbf(L"V\u00E4g 1.VL"), "0 0 0 10 1 $namn\r\n0 10 0 20\r\n");
  ASSERT_EQ(set.ReadOmr(&project_), 0);
  EXPECT_STREQ(set.vlFil, L"V\u00E4g 1.VL");
  EXPECT_TRUE(Near({set.omrSekMin, set.omrSekMax, set.omrAvstMin, set.omrAvstMax}, {10, 20, -5.5, 30}));
  EXPECT_EQ(PointsOf(set.plan).size(), 2u);
  EXPECT_EQ(NamesIn(project_.m_DbfKat), (std::vector<CString>{L"TUNDRIL.VL", L"V\u00E4g 1.VL"}));
}

TEST_F(Vag2, AnAreaFileWithoutItsThreeLinesIsRefused) {
  WriteBytes(InDbf(L"a.vl"), "0 0 0 10 1 $namn\r\n0 10 0 20\r\n");
  const std::pair<const char*, int> kCases[] = {
      {"*\n*\na.vl\n1 2\n3 4", 0},     {"x\n*\ny\n*\na.vl\n1 2 3\n3 4\n*\n5 6", 0},
      {"*\na.vl\n1 2\n3 4\n", -1},     {"*\n*\na.vl\n1 2\n", -1},
      {"*\n*\na.vl\n1\n3 4\n", -1},    {"*\n*\na.vl\n1 2\nx\n3 4\n", -1},
      {"*\n*\n\n1 2\n3 4\n", -1},      {"*\n*\n*\na.vl\n1 2\n3 4\n", -1},
      {"*\n*\na.vl\n*\n1 2\n3 4", -1}, {"", -1},
  };
  for (const auto& [bytes, result] : kCases) {
    WriteBytes(project_.m_VlPath, bytes);
    EXPECT_EQ(CVag2().ReadOmr(&project_), result) << bytes;
  }
  project_.SetPath(folder_.File(L"saknas"));
  EXPECT_EQ(CVag2().ReadOmr(&project_), -1);
  EXPECT_EQ(SaveArea(), -1);
  EXPECT_TRUE(messages_.boxes.empty());
}

}  // namespace
}  // namespace velmora
