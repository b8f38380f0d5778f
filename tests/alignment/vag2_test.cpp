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
  CProjPath project_;
};

TEST_F(Vag2, AFileReplacesWhatWasRead) {
  CVag2 set;
  ASSERT_EQ(Load(&set,
                 "0 0 0 100 1 $V\xE4g$x\r\n0 50 0 150\r\n*\r\n\r\n*\r\n10.0000 100.0000 -0.1000\r\n"
                 "12.0000 150.0000 0.0000\r\n"),
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

// What is read and written otherwise is recorded in files.txt.
TEST_F(Vag2, AnAreaThatCannotBeReadOrSavedIsLeftAlone) {
  CVag2 set;
  const auto save = [&](const wchar_t* alignment) {
    CopyToField(set.vlFil, alignment);
    return set.SaveOmr(&project_);
  };
  ASSERT_EQ(save(L"V\u00E4g 1.VL"), 0);
  EXPECT_EQ(save(L"\u0416.vl"), -1);
  EXPECT_EQ(set.ReadOmr(&project_), -1);  // no alignment file yet
  WriteBytes(project_.m_DbfKat + L"\\V\u00E4g 1.VL", "0 0 0 10 1 $namn\r\n0 10 0 20\r\n");
  EXPECT_EQ(set.ReadOmr(&project_), 0);
  EXPECT_STREQ(set.vlFil, L"V\u00E4g 1.VL");
  messages_.boxes.clear();
  project_.SetPath(folder_.File(L"saknas"));
  EXPECT_EQ(set.ReadOmr(&project_) + save(L"A.VL"), -2);
  EXPECT_TRUE(messages_.boxes.empty());
}

}  // namespace
}  // namespace velmora
