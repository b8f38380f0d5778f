#include <gtest/gtest.h>

#include <random>

#include "tests/alignment/shapes.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/alignment/alignment_format.h"

namespace velmora {
namespace {

class VaglinjeFile : public testing::Test {
 protected:
  int Load(CVaglinje* line, std::string_view bytes) {
    WriteBytes(file_, bytes);
    return line->Init(file_);
  }
  void ExpectRefused(const CString& file) {
    ASSERT_EQ(messages_.boxes.size(), 1u);
    EXPECT_EQ(messages_.boxes[0].text, CString(L"Kan ej öppna väglinje : ") + file);
    EXPECT_EQ(messages_.boxes[0].style, unsigned{MB_OK | MB_ICONEXCLAMATION});
    EXPECT_EQ(messages_.boxes[0].caption, L"Velmora");
    messages_.boxes.clear();
  }

  TemporaryFolder folder_;
  CString file_ = folder_.File(L"ROAD.VL");
  RecordedMessages messages_;
};

struct FirstLineCase {
  const char* line;
  int typ;
  std::wstring namn;
  size_t points;
};
TEST_F(VaglinjeFile, TheFirstLineTellsTypeAndName) {
  const std::string long_name(300, 'n');
  const std::string with_long_name = "1 2 0 4 1 $" + long_name;
  const FirstLineCase kCases[] = {
      {"100.0 200.0 0 0", 7, L"", 1},
      {"100.0 200.0 0 0 10 $Kurva A$rest", 10, L"Kurva A", 1},
      {"100.0 200.0 0 0 1", 1, L"", 1},
      {"100.0 200.0 0 0 $Utan typ", 7, L"Utan typ", 1},
      {"100.0 200.0 0 0 -3$$", -3, L"", 1},
      {"1 2 0 4 2.9 $x", 2, L"x", 1},
      {"1 2 0 4 99999999999 $x", 7, L"x", 1},
      {"\t1e2   2.5E1 -.5 +7 10", 10, L"", 1},
      {"1 2 3 $Bara tre", 7, L"Bara tre", 0},
      {"$ blanks stay ", 7, L" blanks stay ", 0},
      {with_long_name.c_str(), 1, std::wstring(255, L'n'), 1},
      {"", 7, L"", 0},
  };
  for (const FirstLineCase& c : kCases) {
    SCOPED_TRACE(c.line);
    CVaglinje line;
    line.typ = 7;
    CopyToField(line.namn, L"gammalt");
    EXPECT_EQ(Load(&line, c.line), 0);
    EXPECT_EQ(line.typ, c.typ);
    EXPECT_EQ(std::wstring(line.namn), c.namn);
    EXPECT_EQ(PointsOf(line).size(), c.points);
  }
}

TEST_F(VaglinjeFile, LinesThatAreNoPointsAreNamedAndSkipped) {
  CVaglinje line;
  AddPoints(&line, "9 9 9 9");
  ASSERT_EQ(Load(&line, "rubrik $V\xE4g\r\n1 2 0 3\r\n\r\n1 2 3\n5,5 1 1 1\r\n  \r\n4 5 0 6 svans\n7 8 0 9"),
            0);
  EXPECT_EQ(messages_.status,
            (std::vector<CString>{L"Fel rad : rubrik $Väg", L"Fel rad : ", L"Fel rad : 1 2 3",
                                  L"Fel rad : 5,5 1 1 1", L"Fel rad :   "}));
  EXPECT_STREQ(line.namn, L"Väg");
  const std::vector<kovltype> p = PointsOf(line);
  ASSERT_EQ(p.size(), 3u);
  EXPECT_TRUE(p[1].x == 4 && p[1].y == 5 && p[1].bulge == 0 && p[1].sek == 6);
  EXPECT_TRUE(messages_.boxes.empty());
}

TEST_F(VaglinjeFile, WrittenFilesAreWindowsTextAndReadBack) {
  CVaglinje line;
  line.typ = 1;
  CopyToField(line.namn, L"Åsväg – östra");
  AddPoints(&line, "6580000.12346 150000.5 -0.00004 0; 1e7 -2 0.41421356 123.45676; 0 0 0 1");
  ASSERT_EQ(line.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_),
            "6580000.1235 150000.5000 -0.0000 0.0000 1 $\xC5sv\xE4g \x96 \xF6stra\r\n"
            "10000000.0000 -2.0000 0.4142 123.4568\r\n"
            "0.0000 0.0000 0.0000 1.0000\r\n");
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"ROAD.VL"});

  CVaglinje read;
  ASSERT_EQ(read.Init(file_), 0);
  EXPECT_EQ(read.typ, 1);
  EXPECT_STREQ(read.namn, line.namn);
  EXPECT_EQ(read.filnamn, L"ROAD.VL");
  const std::vector<kovltype> p = PointsOf(read);
  ASSERT_EQ(p.size(), 3u);
  EXPECT_TRUE(p[0].x == 6580000.1235 && p[1].bulge == 0.4142 && p[1].sek == 123.4568);
  EXPECT_TRUE(messages_.status.empty());

  CVaglinje empty;
  ASSERT_EQ(empty.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_), "");
}

TEST_F(VaglinjeFile, AFileWithAMarkKeepsItsEncoding) {
  CVaglinje line;
  ASSERT_EQ(Load(&line,
                 "\xEF\xBB\xBF"
                 "1 2 0 3 1 $V\xC3\xA4g \xC5\xBB\n4 5 0 6\n"),
            0);
  EXPECT_STREQ(line.namn, L"Väg \x017B");
  EXPECT_EQ(PointsOf(line).size(), 2u);
  ASSERT_EQ(line.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_),
            "\xEF\xBB\xBF"
            "1.0000 2.0000 0.0000 3.0000 1 $V\xC3\xA4g \xC5\xBB\r\n"
            "4.0000 5.0000 0.0000 6.0000\r\n");

  std::string wide = "\xFF\xFE";
  for (const char c : std::string_view("1 2 0 3 10 $V\xE4g\r\n")) wide += {c, '\0'};
  ASSERT_EQ(Load(&line, wide), 0);
  EXPECT_STREQ(line.namn, L"Väg");
  EXPECT_EQ(line.typ, 10);
}

TEST_F(VaglinjeFile, AMissingFileIsReportedAndEmptiesTheList) {
  CVaglinje line;
  AddPoints(&line, "1 2 0 3");
  line.filnamn = L"OLD.VL";
  const CString missing = folder_.File(L"saknas.vl");
  EXPECT_EQ(line.Init(missing), -1);
  ExpectRefused(missing);
  EXPECT_EQ(line.Where(), -1);
  EXPECT_EQ(line.filnamn, L"OLD.VL");
  EXPECT_EQ(line.Init(folder_.Path().GetString()), -1);
  ExpectRefused(folder_.Path());
  AddPoints(&line, "1 2 0 3");
  EXPECT_EQ(line.Init(nullptr), 0);
  EXPECT_EQ(line.Where(), -1);
  EXPECT_TRUE(NamesIn(folder_.Path()).empty());
}

TEST_F(VaglinjeFile, ARefusedWriteLeavesTheOldFile) {
  CVaglinje line;
  AddPoints(&line, "1 2 0 3");
  EXPECT_EQ(line.Uppdat(folder_.Path()), -1);
  ExpectRefused(folder_.Path());
  const CString nowhere = folder_.File(L"saknas\\ROAD.VL");
  EXPECT_EQ(line.Uppdat(nowhere), -1);
  ExpectRefused(nowhere);

  WriteBytes(file_, "old");
  SetWriteProtected(file_, true);
  EXPECT_EQ(line.Uppdat(file_), -1);
  ExpectRefused(file_);
  SetWriteProtected(file_, false);
  CopyToField(line.namn, L"\x0416");  // not in Windows-1252
  EXPECT_EQ(line.Uppdat(file_), -1);
  ExpectRefused(file_);
  EXPECT_EQ(ReadBytes(file_), "old");
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"ROAD.VL"});
}

TEST_F(VaglinjeFile, DamagedFilesAreSurvived) {
  std::mt19937 random(9);
  const std::string_view pieces[] = {"1 2 0 3", "\r\n", "\n",    "\r",       "$", "10",
                                     " ",       "-",    "1e999", "\xFF\xFE", "*", "%s%n"};
  for (int round = 0; round < 100; ++round) {
    std::string bytes;
    for (size_t i = random() % 60; i > 0; --i) {
      if (random() % 2 == 0)
        bytes += pieces[random() % std::size(pieces)];
      else
        bytes += static_cast<char>(random() % 256);
    }
    CVaglinje line;
    EXPECT_EQ(Load(&line, bytes), 0);
    for (const kovltype& p : PointsOf(line))
      EXPECT_LT(p.x * 0 + p.y * 0 + p.bulge * 0 + p.sek * 0, 1);  // finite
  }
  CVaglinje line;
  const std::string digits(3000000, '7');
  EXPECT_EQ(Load(&line, digits + " 1 1 1\r\n1 2 0 3\r\n$" + digits), 0);
  EXPECT_EQ(PointsOf(line).size(), 1u);
  EXPECT_EQ(messages_.status.back().GetLength(), 10 + 1 + 3000000);
}

TEST_F(VaglinjeFile, AnAlignmentMayBeReadAgainByItsOwnFields) {
  CVaglinje line;
  line.filnamn = file_;
  WriteBytes(file_, "1 2 0 3 1 $A\r\n");
  ASSERT_EQ(line.Init(line.filnamn), 0);
  EXPECT_EQ(line.filnamn, L"ROAD.VL");
  line.filnamn = folder_.File(L"finns-inte-men-har-ett-langt-namn.vl");
  const CString missing = line.filnamn;
  EXPECT_EQ(line.Init(line.filnamn), -1);
  ExpectRefused(missing);
}

TEST_F(VaglinjeFile, ResetKeepsTheCurrentPoint) {
  CVaglinje line;
  line.omrSekMin = line.omrSekMax = line.omrAvstMin = line.omrAvstMax = 5;
  EXPECT_EQ(line.Reset(), -1);
  EXPECT_TRUE(line.omrSekMin == 0 && line.omrSekMax == 0 && line.omrAvstMin == 0 && line.omrAvstMax == 0);
  AddPoints(&line, "0 0 0 10; 0 5 0 15; 0 9 0 19");
  line.Home();
  line++;
  EXPECT_EQ(line.Reset(), 0);
  EXPECT_TRUE(line.omrSekMin == 10 && line.omrSekMax == 19 && line.omrAvstMin == -30 &&
              line.omrAvstMax == 30);
  EXPECT_EQ(line.pael->sek, 15.0);
  EXPECT_EQ(line.Where(), 2);
}

}  // namespace
}  // namespace velmora
