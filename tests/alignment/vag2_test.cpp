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

TEST_F(Vag2, AFileReplacesWhatWasRead) {
  CVag2 set;
  ASSERT_EQ(Load(&set, "0 0 0 100 1 $V\xE4g$x\r\n0 50 0 150\r\n*\r\n\r\n*\r\n10 100 -0.1\r\n12 150 0\r\n"),
            0);
  EXPECT_STREQ(set.vlFil, L"A$P1.VL");
  EXPECT_TRUE(set.profil.Points()[0].sek == 100 && set.profil.Points()[1].sek == 150);
  EXPECT_TRUE(set.plan.omrSekMax == 150 && set.profil.omrSekMax == 150);
  ASSERT_EQ(Load(&set, "1 2 0 3\n"), 0);
  EXPECT_TRUE(set.plan.Points().size() == 1 && set.profil.Where() == -1 && set.vlNamn[0] == L'\0');
  EXPECT_TRUE(set.plan.typ == 1 && set.profil.typ == 10);
  EXPECT_EQ(set.Init(nullptr), 0);
  EXPECT_EQ(set.plan.Where(), -1);
  for (wchar_t& c : set.vlNamn) c = L'n';  // no room for an end
  AddPoints(&set.profil, {{10, 100, 0, 100}});
  ASSERT_EQ(set.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_), "10.0000 100.0000 0.0000 100.0000 10 $" + std::string(255, 'n') + "\r\n");
}

// --- the area file

TEST_F(Vag2, SavingTheAreaMakesTheFileAndLeavesNoOther) {
  WriteBytes(InDbf(L"vl.tmp"), "left by a program that was killed");
  EXPECT_EQ(SaveArea(), 0);
  EXPECT_EQ(ReadBytes(project_.m_VlPath), "*\r\n*\r\nV\xE4g 1.VL\r\n10.000 20.000\r\n-5.500 30.000\r\n");
  EXPECT_EQ(NamesIn(project_.m_DbfKat), std::vector<CString>{L"TUNDRIL.VL"});
  project_.SetPath(folder_.File(L"saknas"));
  EXPECT_EQ(CVag2().ReadOmr(&project_), -1);
  EXPECT_EQ(SaveArea(), -1);
  EXPECT_TRUE(messages_.boxes.empty());
}

TEST_F(Vag2, TheAreaIsReadBackWithItsAlignment) {
  ASSERT_EQ(SaveArea(), 0);
  EXPECT_EQ(SaveArea(L"\u0416.vl"), -1);  // leaves the old one
  CVag2 set;
  EXPECT_EQ(set.ReadOmr(&project_), -1);  // no alignment file yet
  WriteBytes(InDbf(L"V\u00E4g 1.VL"), "0 0 0 10 1 $namn\r\n0 10 0 20\r\n");
  ASSERT_EQ(set.ReadOmr(&project_), 0);
  EXPECT_STREQ(set.vlFil, L"V\u00E4g 1.VL");
  EXPECT_TRUE(set.omrSekMin == 10 && set.omrSekMax == 20 && set.omrAvstMin == -5.5 && set.omrAvstMax == 30);
  EXPECT_EQ(set.plan.Points().size(), 2u);
  EXPECT_EQ(NamesIn(project_.m_DbfKat), (std::vector<CString>{L"TUNDRIL.VL", L"V\u00E4g 1.VL"}));
}

}  // namespace
}  // namespace velmora
