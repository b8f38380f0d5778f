#include "velmora/alignment/stod_punkt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/common/format_buffer.h"

namespace velmora {
namespace {

class StodPunkt : public testing::Test {
 protected:
  CStodPunkt Loaded(std::string_view bytes) {
    WriteBytes(file_, bytes);
    return CStodPunkt(file_);
  }
  static std::vector<stdpkttype> PointsOf(CStodPunkt& points) {
    std::vector<stdpkttype> all;
    for (int at = points.Home(); at == 0; at = points++ == nullptr ? -1 : 0) all.push_back(*points.pael);
    return all;
  }

  TemporaryFolder folder_;
  CString file_ = folder_.File(L"A$P1.STP");
  RecordedMessages messages_;
};

constexpr char kFile[] =
    "1.5\r\n2\r\n-3\r\n4e2\r\n5\r\n6.25\r\n*\r\ngvy\r\n  12.5000\r\n\r\n"
    "BH\xC5 1\r\n  10.2500\r\n  1.00   2.00   3.00   4.00   5.00   6.00\r\n"
    "ettlangtnamnpapunkt\r\n  -0.5000\r\n  1.00   2.00   3.00   4.00   5.00   "
    "6.00\r\n*\r\nefter\r\n1\r\n1\r\n";

TEST_F(StodPunkt, AFileIsReadAndWrittenBack) {
  CStodPunkt points = Loaded(kFile);
  EXPECT_TRUE(points.huvud1 == 1.5 && points.huvud2 == 2 && points.huvud3 == -3 && points.huvud4 == 400 &&
              points.huvud5 == 5 && points.huvud6 == 6.25f);
  EXPECT_EQ(points.gvy, 12.5f);
  EXPECT_EQ(points.filnamn, file_);
  const std::vector<stdpkttype> read = PointsOf(points);
  ASSERT_EQ(read.size(), 2u);
  EXPECT_STREQ(read[0].namn, L"BH\u00C5");
  EXPECT_EQ(read[0].z, 10.25f);
  EXPECT_STREQ(read[1].namn, L"ettlangtnam");  // eleven characters

  const std::string written =
      "1.500000\r\n2.000000\r\n-3.000000\r\n400.000000\r\n5.000000\r\n6.250000\r\n*\r\ngvy\r\n  "
      "12.5000\r\n\r\n"
      "BH\xC5\r\n  10.2500\r\n  0.00   0.00   0.00   0.00   0.00   0.00\r\n"
      "ettlangtnam\r\n  -0.5000\r\n  0.00   0.00   0.00   0.00   0.00   0.00\r\n*\r\n";
  ASSERT_EQ(points.Uppdat(nullptr), 0);  // where it was read from
  EXPECT_EQ(ReadBytes(file_), written);
  points.konvertera = 0;
  const CString other = folder_.File(L"B.STP");
  ASSERT_EQ(points.Uppdat(other), 0);
  EXPECT_EQ(ReadBytes(other), written);
  points.gvy = 0;
  ASSERT_EQ(points.Uppdat(other), 0);
  EXPECT_EQ(ReadBytes(other).find("gvy"), std::string::npos);
  EXPECT_TRUE(messages_.boxes.empty());
}

// The six values are scanned from the last message instead of their line.
TEST_F(StodPunkt, SixValuesStayZero) {
  FormatForUser(L"Fel rad : %s", L"9 9 9 9 9 9");
  CStodPunkt points = Loaded(kFile);
  for (const stdpkttype& point : PointsOf(points))
    for (const float value : point.varden) EXPECT_EQ(value, 0.0f);
  FormatForUser(L"%d %d rad", 7, 8);
  CStodPunkt odd = Loaded(kFile);
  odd.Home();
  EXPECT_TRUE(odd.pael->varden[0] == 7 && odd.pael->varden[1] == 8 && odd.pael->varden[2] == 0);
  FormatForUser(L"");
}

struct HeaderCase {
  const char* bytes;
  double huvud3, huvud4;
  float huvud6;
  size_t points;
};
TEST_F(StodPunkt, TheHeaderEndsAtAStar) {
  const HeaderCase kCases[] = {
      {"1\n2\n3\n4\n5\n*\nP\n7\n\n*\n", 3, 4, 0, 1},
      {"1\n2\n3\n4\n5\n6\nextra\n*\nP\n7\n\n*\n", 3, 4, 6, 1},
      {"1\n2\n3\n4\n5\n6\n\nP\n7\n\n*\n", 3, 4, 6, 1},  // an empty line ends the skipping, too
      {"1\n2\n3\n4\n5\n\n*\nP\n7\n\n*\n", 3, 4, 0, 1},
      {"1\n2\n\n4x\n5\n6\n*\nP\n7\n\n*\n", 0, 4, 6, 1},
      {"1\n2\n*\n4\n5\n6\n*\nP\n7\n\n*\n", 0, 4, 6, 1},  // a star among the first five is no end
      {"1\n2\nx\n4\n5\n6\n*\n*\nP\n", 0, 4, 6, 0},
      {"1\n2\n3\n4\n5\n6\n*\nGVY\n1\n\nP\n", 3, 4, 6, 1},  // the file ends within a point
      {"1\n2\n3\n", 3, 0, 0, 0},
      {"", 0, 0, 0, 0},
  };
  for (const HeaderCase& c : kCases) {
    SCOPED_TRACE(c.bytes);
    CStodPunkt points = Loaded(c.bytes);
    EXPECT_EQ(points.huvud3, c.huvud3);
    EXPECT_EQ(points.huvud4, c.huvud4);
    EXPECT_EQ(points.huvud6, c.huvud6);
    EXPECT_EQ(PointsOf(points).size(), c.points);
  }
}

TEST_F(StodPunkt, PointNameCountsFromTheRight) {
  const std::pair<const wchar_t*, const wchar_t*> kCases[] = {
      {L"A$P1.STP", L"P1"},  // "$" at 1: the last two of A$P1
      {L"$P1.STP", L"1"},
      {L"AB$P12.STP", L"P12"},
      {L"A$B$P12.STP", L"$P12"},  // the last "$", at 3
      {L"ABCDEF$P.STP", L"BCDEF$P"},
      {L"P1.STP", L""},
      {L"AB$.S", L""},  // "$" is among the four that go
      {L"$", L""},
  };
  for (const auto& [file, name] : kCases) EXPECT_EQ(CStodPunkt(file).punktnamn, name) << ToUtf8(file);
}

TEST_F(StodPunkt, FilesThatCannotBeOpenedAreReported) {
  const CString missing = folder_.File(L"saknas.stp");
  CStodPunkt points(missing);
  EXPECT_EQ(points.filnamn, missing);
  EXPECT_EQ(points.Where(), -1);
  CStodPunkt none(static_cast<const wchar_t*>(nullptr));
  ASSERT_EQ(messages_.boxes.size(), 1u);
  EXPECT_EQ(messages_.boxes[0].text, CString(L"Kan ej \u00F6ppna st\u00F6dpunkt : ") + missing);
  EXPECT_EQ(messages_.boxes[0].style, unsigned{MB_OK | MB_ICONEXCLAMATION});
  EXPECT_EQ(none.Uppdat(nullptr), -1);

  WriteBytes(file_, "old");
  stdpkttype point{L"\u0416", 1, {}};
  points.Ny(1, &point);
  EXPECT_EQ(points.Uppdat(file_), -1);
  EXPECT_EQ(ReadBytes(file_), "old");
  ASSERT_EQ(messages_.boxes.size(), 3u);
  EXPECT_EQ(messages_.boxes[2].text, CString(L"Kan ej skapa/uppdatera st\u00F6dpunkt : ") + file_);
}

TEST_F(StodPunkt, DamagedFilesAreSurvived) {
  std::mt19937 random(10);
  const std::string_view pieces[] = {
      "gvy", "\r\n", "\n", "1", "*", " ", "1e39", "\xFE\xFF", std::string_view("\0", 1)};
  for (int round = 0; round < 100; ++round) {
    std::string bytes = random() % 2 == 0 ? "1\n2\n3\n4\n5\n6\n*\n" : "";
    for (size_t i = random() % 60; i > 0; --i) bytes += pieces[random() % std::size(pieces)];
    CStodPunkt points = Loaded(bytes);
    for (const stdpkttype& point : PointsOf(points)) EXPECT_LT(std::wcslen(point.namn), 12u);
  }
  EXPECT_TRUE(messages_.boxes.empty());
}

}  // namespace
}  // namespace velmora
