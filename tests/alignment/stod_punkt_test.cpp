#include "velmora/alignment/stod_punkt.h"

#include <gtest/gtest.h>

#include "tests/alignment/shapes.h"
#include "velmora/common/last_message.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

class StodPunkt : public AlignmentFiles {
 protected:
  CStodPunkt Loaded(std::string_view bytes) {
    WriteBytes(file_, bytes);
    return CStodPunkt(file_);
  }
};

constexpr char kFile[] =
    "1.5\r\n2\r\n-3\r\n4e2\r\n5\r\n6.25\r\n*\r\ngvy\r\n  12.5000\r\n\r\n"
    "BH\xC5 1\r\n  10.2500\r\n  1.00   2.00   3.00   4.00   5.00   6.00\r\n"
    "ettlangtnamnpapunkt\r\n  -0.5\r\n  1   2   3   4   5   6\r\n*\r\nefter\r\n1\r\n1\r\n";

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
  // A point whose name is not plain, and one that is.
  ASSERT_EQ(odd.Uppdat(nullptr), 0);
  for (const char* level : {"  10.2500", "  -0.5000"})
    EXPECT_TRUE(
        ReadBytes(file_).find(level + std::string("\r\n  7.00   8.00   0.00   0.00   0.00   0.00\r\n")) !=
        std::string::npos);
}

// Across the blocks in which plain points are read and written, with some that are not plain.
TEST_F(StodPunkt, ALargeListIsReadAndWrittenAsItsLinesOneByOne) {
  std::string bytes = "1\n2\n3\n4\n5\n6\n*\n";
  std::string written = "1.000000\r\n2.000000\r\n3.000000\r\n4.000000\r\n5.000000\r\n6.000000\r\n*\r\n";
  for (int i = 0; i < 9000; ++i) {
    const std::string name = "Pkt" + std::to_string(i) + (i % 50 == 1 ? "\xD6" : "");
    CString level, rounded;
    level.Format(L"%9.*f", i % 9, (i - 4000) * 1.2345678);
    rounded.Format(L"%9.4f", static_cast<float>(ParseNumber(level.GetView()).value_or(0)));
    bytes += name + "\n" + ToUtf8(level) + (i % 70 == 3 ? " \r\n" : "\r\n") + "1 2 3 4 5 6\n";
    written += name + "\r\n" + ToUtf8(rounded) + "\r\n  0.00   0.00   0.00   0.00   0.00   0.00\r\n";
  }
  ASSERT_EQ(Loaded(bytes + "*\n").Uppdat(file_), 0);
  EXPECT_TRUE(ReadBytes(file_) == written + "*\r\n");
}

// A field without an end, and names that the file's encoding lacks, which leave the file as it is.
TEST_F(StodPunkt, NamesOfAnyKindAreWrittenOrRefused) {
  const struct {
    wchar_t name[13];  // the field takes the first twelve
    const char* bytes;
  } kCases[] = {{L"TwelveFillUp", "TwelveFillUp\r\n"},
                {L"P 1", "P 1\r\n"},
                {L"P\u0150", ""},
                {{L'P', static_cast<wchar_t>(0xFFFF'FFB1)}, ""}};
  for (const auto& c : kCases) {
    CStodPunkt points = Loaded("");
    points.Ny(1);
    std::copy_n(c.name, std::size(points.pael->namn), points.pael->namn);
    const std::string bytes = c.bytes;
    EXPECT_EQ(points.Uppdat(nullptr), bytes.empty() ? -1 : 0) << bytes;
    const std::string written = ReadBytes(file_);
    EXPECT_EQ(written.substr(std::min<size_t>(written.size(), 6 * 10 + 3), bytes.size()), bytes);
    EXPECT_EQ(written.empty(), bytes.empty());
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
