#include "velmora/alignment/stod_punkt.h"

#include <gtest/gtest.h>

#include "tests/alignment/shapes.h"
#include "velmora/common/last_message.h"

namespace velmora {
namespace {

class StodPunkt : public AlignmentFiles {
 protected:
  CStodPunkt Loaded(std::string_view bytes) {
    WriteBytes(file_, bytes);
    return CStodPunkt(file_);
  }
};

// "%9.4f"
std::string FormatFixedWide(double value) {
  CString text;
  text.Format(L"%9.4f", value);
  return ToUtf8(text);
}

constexpr char kFile[] =
    "1.5\r\n2\r\n-3\r\n4e2\r\n5\r\n6.25\r\n*\r\ngvy\r\n  12.5000\r\n\r\n"
    "BH\xC5 1\r\n  10.2500\r\n  1.00   2.00   3.00   4.00   5.00   6.00\r\n"
    "ettlangtnamnpapunkt\r\n  -0.5\r\n  1   2   3   4   5   6\r\n*\r\nefter\r\n1\r\n1\r\n";

TEST_F(StodPunkt, AFileIsReadAndWrittenBack) {
  CStodPunkt points = Loaded(kFile);
  EXPECT_TRUE(points.huvud1 == 1.5 && points.huvud2 == 2 && points.huvud3 == -3 && points.huvud4 == 400 &&
              points.huvud5 == 5 && points.huvud6 == 6.25f && points.gvy == 12.5f);
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
  points.gvy = 0;
  const CString other = folder_.File(L"B.STP");
  ASSERT_EQ(points.Uppdat(other), 0);
  EXPECT_EQ(ReadBytes(other), written.substr(0, written.find("gvy")) + written.substr(written.find("BH")));
}

TEST_F(StodPunkt, AFileThatCouldNotBeReadIsNotReplaced) {
  const std::string bytes = std::string(5'000'000, 'x') + kFile;
  CStodPunkt points = Loaded(bytes);
  EXPECT_EQ(points.Uppdat(nullptr), -1);
  EXPECT_TRUE(ReadBytes(file_) == bytes);
  EXPECT_EQ(messages_.boxes.size(), 2U);
  EXPECT_EQ(points.Uppdat(folder_.File(L"B.STP")), 0);
  EXPECT_EQ(CStodPunkt(folder_.File(L"C.STP")).Uppdat(nullptr), 0) << "it was not there";
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

TEST_F(StodPunkt, TheHeaderEndsAtAStar) {
  const struct {
    const char* bytes;
    double huvud3, huvud4;
    float huvud6;
    size_t points;
  } kCases[] = {
      {"1\n2\n3\n4\n5\n*\nP\n7\n\n*\n", 3, 4, 0, 1},
      {"1\n2\n3\n4\n5\n6\nextra\n*\nP\n7\n\n*\n", 3, 4, 6, 1},
      {"1\n2\n3\n4\n5\n6\n\nP\n7\n\n*\n", 3, 4, 6, 1},  // an empty line ends the skipping, too
      {"1\n2\n\n4x\n5\n6\n*\nP\n7\n\n*\n", 0, 4, 6, 1},
      {"1\n2\n*\n4\n5\n6\n*\nP\n7\n\n*\n", 0, 4, 6, 1},    // a star among the first five is no end
      {"1\n2\n3\n4\n5\n6\n*\nGVY\n1\n\nP\n", 3, 4, 6, 1},  // the file ends within a point
      {"1\n2\n3\n", 3, 0, 0, 0},
  };
  for (const auto& c : kCases) {
    CStodPunkt points = Loaded(c.bytes);
    EXPECT_TRUE(points.huvud3 == c.huvud3 && points.huvud4 == c.huvud4 && points.huvud6 == c.huvud6)
        << c.bytes;
    EXPECT_EQ(PointsOf(points).size(), c.points) << c.bytes;
  }
}

TEST_F(StodPunkt, ALargeListIsReadAndWrittenAsItsLinesOneByOne) {
  const std::string header = "1\n2\n3\n4\n5\n6\n*\n";
  std::string plain = header;
  std::string blanks = header;  // the same points, with what only the general way reads
  for (int i = 0; i < 9000; ++i) {
    CString name, level;
    name.Format(i % 100 == 7 ? L"GvY" : i % 50 == 1 ? L"R%d" : L"ettlangtnamn%d", i);
    level.Format(L"%9.*f", i % 9, (i - 4000) * 1.2345678);
    for (std::string* bytes : {&plain, &blanks})
      *bytes += ToUtf8(name) + (i % 50 == 1 ? "\xD6\n" : "\n") + ToUtf8(level) +
                (bytes == &blanks ? " \r\n" : "\r\n") + "1 2 3 4 5 6\n";
  }
  CStodPunkt quick = Loaded(plain + "*\n");
  CStodPunkt slow = Loaded(blanks + "*\n");
  const std::vector<stdpkttype> a = PointsOf(quick), b = PointsOf(slow);
  ASSERT_EQ(a.size(), 8910u);
  ASSERT_EQ(a.size(), b.size());
  for (size_t i = 0; i < a.size(); ++i)
    EXPECT_TRUE(FieldText(a[i].namn) == FieldText(b[i].namn) && a[i].z == b[i].z) << i;
  ASSERT_EQ(quick.Uppdat(nullptr), 0);
  std::string written = "1.000000\r\n2.000000\r\n3.000000\r\n4.000000\r\n5.000000\r\n6.000000\r\n*\r\n";
  if (quick.gvy != 0) written += "gvy\r\n" + FormatFixedWide(quick.gvy) + "\r\n\r\n";
  for (const stdpkttype& point : a) {
    for (const wchar_t c : FieldText(point.namn)) written += static_cast<char>(c);
    written += "\r\n" + FormatFixedWide(point.z) + "\r\n  0.00   0.00   0.00   0.00   0.00   0.00\r\n";
  }
  EXPECT_TRUE(ReadBytes(file_) == written + "*\r\n");
}

TEST_F(StodPunkt, NamesAndLevelsOfAnyKindAreWrittenOrRefused) {
  const struct {
    wchar_t name[13];  // the field takes the first twelve
    float level;
    const char* bytes;  // null: refused, the file stays
  } kCases[] = {
      {L"", 0.0F, "\r\n   0.0000"},
      {L"TwelveFillUp", -0.0F, "TwelveFillUp\r\n  -0.0000"},
      {L"P 1", 9.99995F, "P 1\r\n  10.0000"},
      {L"P\x7F", 0.03125F, "P\x7F\r\n   0.0312"},
      {L"\u00C5", 9998.9999F, "\xC5\r\n9999.0000"},
      {L"P1", 9999.5F, "P1\r\n9999.5000"},
      {L"P2", 123456.0F, "P2\r\n123456.0000"},
      {L"P3", -1234.5F, "P3\r\n-1234.5000"},
      {L"P4", 1e30F, "P4\r\n1000000015047466219876688855040.0000"},
      {L"P\u0150", 1, nullptr},
      {{L'P', static_cast<wchar_t>(0xFFFF'FFB1)}, 1, nullptr},
  };
  for (const auto& c : kCases) {
    CStodPunkt points = Loaded("");
    points.Ny(1);
    std::copy_n(c.name, std::size(points.pael->namn), points.pael->namn);
    points.pael->z = c.level;
    EXPECT_EQ(points.Uppdat(nullptr), c.bytes == nullptr ? -1 : 0) << c.level;
    const std::string written = ReadBytes(file_);
    if (c.bytes == nullptr)
      EXPECT_EQ(written, "");
    else
      EXPECT_EQ(written.substr(std::min<size_t>(written.size(), 6 * 10 + 3)),
                std::string(c.bytes) + "\r\n  0.00   0.00   0.00   0.00   0.00   0.00\r\n*\r\n");
  }
}

TEST_F(StodPunkt, PointNameCountsFromTheRight) {
  const std::pair<const wchar_t*, const wchar_t*> kCases[] = {
      {L"A$P1.STP", L"P1"},       // "$" at 1: the last two of A$P1
      {L"A$B$P12.STP", L"$P12"},  // the last "$", at 3
      {L"ABCDEF$P.STP", L"BCDEF$P"},
      {L"P1.STP", L""},
      {L"AB$.S", L""},  // "$" is among the four that go
      {L"$", L""},
  };
  for (const auto& [file, name] : kCases) EXPECT_EQ(CStodPunkt(file).punktnamn, name) << ToUtf8(file);
}

// Three line feeds make a point of a hundred bytes: a file of nothing else is refused before it fills the
// memory, one of many short points is not.
TEST_F(StodPunkt, AFileOfBlankLinesIsNone) {
  const struct {
    const char* point;
    int count;
    bool read;
  } kCases[] = {{"\n\n\n", 1000, true}, {"\n\n\n", 100'000, false}, {"P12345\n1\n\n", 100'000, true}};
  for (const auto& c : kCases) {
    std::string bytes = "1\n2\n3\n4\n5\n6\n*\n";
    for (int i = 0; i < c.count; ++i) bytes += c.point;
    CStodPunkt points = Loaded(bytes);
    EXPECT_EQ(PointsOf(points).size(), c.read ? static_cast<size_t>(c.count) : 0U) << c.point << c.count;
    EXPECT_EQ(messages_.boxes.size(), c.read ? 0U : 1U) << c.point << c.count;
    EXPECT_EQ(points.huvud1, c.read ? 1 : 0);
    messages_.boxes.clear();
  }
}

}  // namespace
}  // namespace velmora
