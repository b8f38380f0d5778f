#include "velmora/alignment/vag2.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/alignment/shapes.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

class Vag2 : public testing::Test {
 protected:
  Vag2() {
    project_.SetPath(folder_.Path());
    MakeFolder(project_.m_DbfKat);
  }
  CString InDbf(const CString& name) const { return project_.m_DbfKat + L"\\" + name; }
  int Load(CVag2* set, std::string_view bytes) {
    WriteBytes(file_, bytes);
    return set->Init(file_);
  }
  // SaveOmr of a fixed area over an area file of these bytes.
  int Save(std::string_view old_bytes) {
    WriteBytes(project_.m_VlPath, old_bytes);
    return Save();
  }
  int Save() {
    CVag2 set;
    CopyToField(set.vlFil, L"V\u00E4g 1.VL");
    set.omrSekMin = 10.0004;
    set.omrSekMax = 20;
    set.omrAvstMin = -5.5;
    return set.SaveOmr(&project_);
  }
  static constexpr char kArea[] = "V\xE4g 1.VL\r\n10.000 20.000\r\n-5.500 30.000\r\n";

  TemporaryFolder folder_;
  CProjPath project_;
  CString file_ = folder_.File(L"ROAD.VL");
  RecordedMessages messages_;
};

TEST_F(Vag2, ANewSetIsAPlanAndAProfileWithAThirtyMetreArea) {
  const CVag2 set;
  EXPECT_EQ(set.plan.typ, 1);
  EXPECT_EQ(set.profil.typ, 10);
  EXPECT_TRUE(set.omrSekMin == 0 && set.omrSekMax == 0 && set.omrAvstMin == -30 && set.omrAvstMax == 30);
  EXPECT_STREQ(set.vlFil, L"");
  EXPECT_STREQ(set.vlNamn, L"");
}

TEST_F(Vag2, ACombinedFileFillsBoth) {
  CVag2 set;
  ASSERT_EQ(Load(&set,
                 "0 0 0 100 1 $V\xE4g$x\r\nskr\xE4p\r\n0 50 0 150\r\n*\r\n1 2 3 4\r\n* inte ens h\xE4r\r\n"
                 "10 100 -0.1\r\n*\r\n1 2\r\n12 150 0 99\r\n\r\n"),
            0);
  EXPECT_STREQ(set.vlFil, L"ROAD.VL");
  EXPECT_STREQ(set.vlNamn, L"V\u00E4g");
  const std::vector<kovltype> plan = PointsOf(set.plan), profile = PointsOf(set.profil);
  ASSERT_EQ(plan.size(), 2u);
  EXPECT_EQ(plan[1].sek, 150.0);
  ASSERT_EQ(profile.size(), 2u);
  EXPECT_TRUE(profile[0].x == 10 && profile[0].y == 100 && profile[0].bulge == -0.1 && profile[0].sek == 100);
  EXPECT_EQ(profile[1].sek, 150.0);
  EXPECT_EQ(messages_.status,
            (std::vector<CString>{L"Fel rad : skr\u00E4p", L"Fel rad : 1 2", L"Fel rad : "}));
  EXPECT_TRUE(set.plan.omrSekMin == 100 && set.plan.omrSekMax == 150 && set.plan.omrAvstMax == 30);
  EXPECT_TRUE(set.profil.omrSekMin == 100 && set.profil.omrSekMax == 150);

  ASSERT_EQ(Load(&set, "1 2 0 3\n"), 0);  // replaces, and has no name
  EXPECT_EQ(PointsOf(set.plan).size(), 1u);
  EXPECT_EQ(PointsOf(set.profil).size(), 0u);
  EXPECT_STREQ(set.vlNamn, L"");
  EXPECT_EQ(set.Init(nullptr), 0);
  EXPECT_EQ(PointsOf(set.plan).size(), 0u);
}

struct KindCase {
  const char* bytes;
  size_t plan, profile;
};
TEST_F(Vag2, TheFirstTwoLinesTellAPlanFromAProfile) {
  const KindCase kCases[] = {
      {"100 5.0 0 5.0\n101 10.0 0 10.0\n", 0, 2},
      {"100 5.0 0 5.1\n101 10.0 0 10.09\n", 0, 2},
      {"100 5.0 0 5.11\n101 10.0 0 10.0\n", 2, 0},
      {"100 0 0 0.1\n101 10.0 0 10.0\n", 0, 2},  // a tenth at most
      {"100 5.0 0 5.0\n101 0 0 0.1\n", 2, 0},    // less than a tenth
      {"100 5.0 0 5.0\nrubrik\n101 10.0 0 10.0\n", 2, 0},
      {"100 5.0 0 5.0\n", 1, 0},
      {"rubrik\n100 5.0 0 5.0\n101 10.0 0 10.0\n", 2, 0},
      {"100 5.0 0 5.0 1\n101 10.0 0 10.0\n", 2, 0},
      {"100 5.0 0 7.0 10\n101 10.0 0 9.0\n", 0, 2},
      {"100 5.0 0 5.0 3\n101 10.0 0 10.0\n", 0, 2},
      {"100 5.0 0 7.0 0\n101 10.0 0 10.0\n", 2, 0},
      {"*\nProfil\n*\n10 100 0\n", 0, 1},
      {"*\n10 100 0\n10 100 0\n10 100 0", 0, 1},
      {"", 0, 0},
  };
  for (const KindCase& c : kCases) {
    SCOPED_TRACE(c.bytes);
    CVag2 set;
    EXPECT_EQ(Load(&set, c.bytes), 0);
    EXPECT_EQ(PointsOf(set.plan).size(), c.plan);
    EXPECT_EQ(PointsOf(set.profil).size(), c.profile);
    EXPECT_TRUE(set.plan.typ == 1 && set.profil.typ == 10);
  }
}

TEST_F(Vag2, AFileComesBackAsItWas) {
  const std::string bytes =
      "0.0000 0.0000 0.0000 100.0000 1 $V\xE4g\r\n0.0000 50.0000 0.0000 150.0000\r\n"
      "*\r\nProfil\r\n*\r\n10.0000 100.0000 -0.1000\r\n12.0000 150.0000 0.0000\r\n";
  CVag2 set;
  ASSERT_EQ(Load(&set, bytes), 0);
  WriteBytes(file_, "");
  ASSERT_EQ(set.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_), bytes);
  EXPECT_TRUE(messages_.status.empty());
}

TEST_F(Vag2, AProfileAloneIsWrittenWithItsType) {
  CVag2 set;
  CopyToField(set.vlNamn, L"Profil 1");
  ASSERT_EQ(set.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_), "");
  AddPoints(&set.profil, "10 100 0 100; 12 150 0 150");
  ASSERT_EQ(set.Uppdat(file_), 0);
  EXPECT_STREQ(set.profil.namn, L"Profil 1");
  EXPECT_EQ(ReadBytes(file_),
            "10.0000 100.0000 0.0000 100.0000 10 $Profil 1\r\n12.0000 150.0000 0.0000 150.0000\r\n");
}

// The position number goes stale by Set_aktel; a plan is not empty because its number is 0.
TEST_F(Vag2, APlanIsWrittenWhereverItsCursorStands) {
  CVag2 set;
  AddPoints(&set.plan, "0 0 0 1; 0 5 0 6; 0 9 0 10");
  kovltype* last = set.plan.pael;
  set.plan.Home();
  set.plan.Set_aktel(last);
  set.plan.Delete();
  AddPoints(&set.profil, "10 1 0 1");
  ASSERT_EQ(set.Uppdat(file_), 0);
  CVag2 read;
  ASSERT_EQ(read.Init(file_), 0);
  EXPECT_EQ(PointsOf(read.plan).size(), 2u);
  EXPECT_EQ(PointsOf(read.profil).size(), 1u);
}

TEST_F(Vag2, FilesThatCannotBeOpenedAreReported) {
  CVag2 set;
  AddPoints(&set.plan, "0 0 0 1");
  AddPoints(&set.profil, "0 0 0 1");
  const CString missing = folder_.File(L"saknas.vl");
  EXPECT_EQ(set.Init(missing), -1);
  EXPECT_EQ(set.plan.Where(), -1);
  EXPECT_EQ(set.profil.Where(), -1);
  AddPoints(&set.plan, "0 0 0 1");
  EXPECT_EQ(set.Uppdat(folder_.Path()), -1);
  CopyToField(set.vlNamn, L"\u0416");
  WriteBytes(file_, "old");
  EXPECT_EQ(set.Uppdat(file_), -1);
  EXPECT_EQ(ReadBytes(file_), "old");
  ASSERT_EQ(messages_.boxes.size(), 3u);
  EXPECT_EQ(messages_.boxes[0].text, CString(L"Kan ej \u00F6ppna v\u00E4glinje : ") + missing);
  EXPECT_EQ(messages_.boxes[2].text, CString(L"Kan ej \u00F6ppna v\u00E4glinje : ") + file_);
}

// --- the area file

struct AreaCase {
  const char* why;
  const char* before;
  std::string after;
};
TEST_F(Vag2, SavingTheAreaKeepsWhatOthersWrote) {
  const std::string area = kArea;
  const std::string long_line = std::string(141, 'a') + "*" + std::string(400, 'b');
  const std::string long_before = long_line + "\r\n*\r\nannat\r\n*\r\ngammal.vl\r\n";
  const AreaCase kCases[] = {
      {"an old area is replaced", "a b\r\n*\r\nannat\r\n* * \r\nold.vl\r\n1 2\r\n3 4\r\nmer\r\n*\r\nslut\r\n",
       "a b\r\n*\r\nannat\r\n* * \r\n" + area},
      {"the second star has no line end", "*\r\nannat\r\n*", "*\r\nannat\r\n*\r\n" + area},
      {"stars within a line are none", "a*\r\n *\r\n*\r\n*\r\n", "a*\r\n *\r\n*\r\n*\r\n" + area},
      {"also in a long line", long_before.c_str(), long_line + "\r\n*\r\nannat\r\n*\r\n" + area},
      {"bytes that Windows-1252 leaves undefined", "\x81\x8D\r\n*\r\n*\r\n", "\x81\x8D\r\n*\r\n*\r\n" + area},
      {"a file with a mark stays as it is encoded", "\xEF\xBB\xBF\xC5\xBB\r\n*\r\n*\r\n",
       "\xEF\xBB\xBF\xC5\xBB\r\n*\r\n*\r\nV\xC3\xA4g 1.VL" + area.substr(area.find('\r'))},
      {"one star is one star", "*\r\na\r\n", "*\r\na\r\n" + area},
  };
  for (const AreaCase& c : kCases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(Save(c.before), 0);
    EXPECT_EQ(ReadBytes(project_.m_VlPath), c.after);
    EXPECT_EQ(NamesIn(project_.m_DbfKat), std::vector<CString>{L"TUNDRIL.VL"});  // vl.tmp is gone
  }
}

TEST_F(Vag2, ANewAreaFileBeginsWithTwoStars) {
  ASSERT_EQ(Save(), 0);
  EXPECT_EQ(ReadBytes(project_.m_VlPath), std::string("*\r\n*\r\n") + kArea);
  EXPECT_EQ(NamesIn(project_.m_DbfKat), std::vector<CString>{L"TUNDRIL.VL"});
}

TEST_F(Vag2, TheAreaIsReadBackWithItsAlignment) {
  const std::string foreign = std::string(256, 'a') + "*\r\n" + std::string(700, '*') + "\r\n";
  ASSERT_EQ(Save(foreign + "*\r\n"), 0);
  CVag2 set;
  EXPECT_EQ(set.ReadOmr(&project_), -1);  // no alignment file yet
  EXPECT_EQ(messages_.boxes.size(), 1u);
  WriteBytes(InDbf(L"V\u00E4g 1.VL"), "0 0 0 10 1 $namn\r\n0 10 0 20\r\n");
  ASSERT_EQ(set.ReadOmr(&project_), 0);
  EXPECT_STREQ(set.vlFil, L"V\u00E4g 1.VL");
  EXPECT_STREQ(set.vlNamn, L"namn");
  EXPECT_TRUE(set.omrSekMin == 10 && set.omrSekMax == 20 && set.omrAvstMin == -5.5 && set.omrAvstMax == 30);
  EXPECT_EQ(PointsOf(set.plan).size(), 2u);
  EXPECT_EQ(messages_.boxes.size(), 1u);
}

TEST_F(Vag2, AnAreaFileWithoutItsThreeLinesIsRefused) {
  WriteBytes(InDbf(L"a.vl"), "0 0 0 10 1 $namn\r\n0 10 0 20\r\n");
  const std::pair<const char*, int> kCases[] = {
      {"*\r\n*\r\na.vl\r\n1 2\r\n3 4\r\n", 0},
      {"*\n*\na.vl\n1 2\n3 4", 0},
      {"x\n*\ny\n*\na.vl\n1 2 3\n3 4\n*\n5 6", 0},
      {"*\na.vl\n1 2\n3 4\n", -1},
      {"*\n*\na.vl\n1 2\n", -1},
      {"*\n*\na.vl\n1\n3 4\n", -1},
      {"*\n*\na.vl\n1 2\nx\n3 4\n", -1},
      {"*\n*\n\n1 2\n3 4\n", -1},
      {"*\n*\n*\na.vl\n1 2\n3 4\n", -1},
      {"*\n*\na.vl\n*\n1 2\n3 4\n", -1},
      {"", -1},
  };
  for (const auto& [bytes, result] : kCases) {
    SCOPED_TRACE(bytes);
    WriteBytes(project_.m_VlPath, bytes);
    CVag2 set;
    EXPECT_EQ(set.ReadOmr(&project_), result);
  }
  project_.SetPath(folder_.File(L"saknas"));
  CVag2 set;
  EXPECT_EQ(set.ReadOmr(&project_), -1);
  EXPECT_TRUE(messages_.boxes.empty());
}

TEST_F(Vag2, AnAreaThatCannotBeSavedLeavesTheOldOne) {
  const CString area_file = project_.m_VlPath;
  WriteBytes(area_file, "old");
  SetWriteProtected(area_file, true);
  EXPECT_EQ(Save(), -1);
  SetWriteProtected(area_file, false);
  CVag2 set;
  CopyToField(set.vlFil, L"\u0416.vl");
  EXPECT_EQ(set.SaveOmr(&project_), -1);
  EXPECT_EQ(ReadBytes(area_file), "old");
  EXPECT_EQ(NamesIn(project_.m_DbfKat), std::vector<CString>{L"TUNDRIL.VL"});
  project_.SetPath(folder_.File(L"saknas"));
  EXPECT_EQ(Save(), -1);
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"TUNDRIL.DBF"});
}

TEST_F(Vag2, ALeftoverTemporaryFileIsNoObstacle) {
  WriteBytes(InDbf(L"vl.tmp"), "left by a program that was killed");
  ASSERT_EQ(Save(), 0);
  EXPECT_EQ(ReadBytes(project_.m_VlPath), std::string("*\r\n*\r\n") + kArea);
  EXPECT_EQ(NamesIn(project_.m_DbfKat), std::vector<CString>{L"TUNDRIL.VL"});
}

}  // namespace
}  // namespace velmora
