#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "tests/alignment/shapes.h"
#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/vag2.h"

namespace velmora {
namespace {

class VaglinjeFile : public AlignmentFiles {};

TEST_F(VaglinjeFile, TheFirstLineTellsTypeAndName) {
  const struct {
    std::string line;
    int typ;
    std::wstring namn;
    size_t points;
  } kCases[] = {
      {"100.0 200.0 0 0 10 $Kurva A$rest", 10, L"Kurva A", 1},
      {"100.0 200.0 0 0 $Utan typ", 7, L"Utan typ", 1},
      {"100.0 200.0 0 0 -3$$", -3, L"", 1},
      {"1 2 0 4 99999999999 $x", 7, L"x", 1},
      {"1 2 3 $Bara tre", 7, L"Bara tre", 0},
      {"$ blanks stay ", 7, L" blanks stay ", 0},
      {"1 2 0 4 1 $" + std::string(300, 'n'), 1, std::wstring(255, L'n'), 1},
      {"", 7, L"", 0},
  };
  for (const auto& c : kCases) {
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

TEST_F(VaglinjeFile, PointsAreReadAndWrittenAsWindowsText) {
  OpenLine line({{9, 9, 9, 9}});
  WriteBytes(
      file_,
      "6580000.12346 150000.5 -0.00004 0 1 $\xC5sv\xE4g \x96 \xF6stra\r\n\r\n1 2 3\r\n5,5 1 1 1\r\n  \r\n"
      "1e7 -2 0.41421356 123.45676 svans\n0 0 0 1");
  line.filnamn = file_;
  ASSERT_EQ(line.Init(line.filnamn), 0);  // its own field as the argument
  EXPECT_EQ(messages_.status, (std::vector<CString>{L"Fel rad : ", L"Fel rad : 1 2 3", L"Fel rad : 5,5 1 1 1",
                                                    L"Fel rad :   "}));
  EXPECT_STREQ(line.namn, L"Åsväg – östra");
  EXPECT_EQ(line.filnamn, L"A$P1.VL");
  const std::vector<kovltype> p = PointsOf(line);
  ASSERT_EQ(p.size(), 3u);
  EXPECT_TRUE(p[1].x == 1e7 && p[1].y == -2 && p[1].bulge == 0.41421356 && p[1].sek == 123.45676);

  ASSERT_EQ(line.Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_),
            "6580000.1235 150000.5000 -0.0000 0.0000 1 $\xC5sv\xE4g \x96 \xF6stra\r\n"
            "10000000.0000 -2.0000 0.4142 123.4568\r\n"
            "0.0000 0.0000 0.0000 1.0000\r\n");
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"A$P1.VL"});
  ASSERT_EQ(OpenLine({}).Uppdat(file_), 0);
  EXPECT_EQ(ReadBytes(file_), "");
}

TEST_F(VaglinjeFile, ALargeFileIsReadAsItsLinesOneByOne) {
  std::mt19937 random(4);
  const std::string odd[] = {"1 2 0 3", "1e1  2\t0 3 svans", "skr\xE4p",        "",
                             "*",       "1.0 2.0 3.0",       "1.0 2.0 0.0 3.0 "};
  std::string bytes = "0.0 0.0 0.0 0.0 1 $Stor\r\n";
  std::vector<kovltype> points = {{0, 0, 0, 0}};
  size_t unreadable = 0;
  for (int i = 0; i < 20000; ++i) {
    CString line;
    line.Format(L"%.4f %.*f %.2f %.3f", i * 1.7, static_cast<int>(random() % 6), i * -0.3, 0.5, i * 1.0);
    std::string text = random() % 50 == 0 ? odd[random() % std::size(odd)] : ToUtf8(line);
    bytes += text + (random() % 2 == 0 ? "\n" : "\r\n");
    if (const auto point = ParsePoint(std::wstring(text.begin(), text.end())))
      points.push_back(*point);
    else
      ++unreadable;
  }
  CVaglinje line;
  ASSERT_EQ(Load(&line, bytes), 0);
  const std::vector<kovltype> read = PointsOf(line);
  ASSERT_EQ(read.size(), points.size());
  EXPECT_EQ(std::memcmp(read.data(), points.data(), read.size() * sizeof(kovltype)), 0);
  EXPECT_EQ(messages_.status.size(), unreadable);
  // Written, it is what the lines' own formats give.
  line.pael->sek = 1e300;
  ASSERT_EQ(line.Uppdat(file_), 0);
  std::string written = ToUtf8(FormatFirstLine(points[0], 1, L"Stor"));
  points.back().sek = 1e300;
  for (size_t i = 1; i < points.size(); ++i) written += ToUtf8(FormatPoint(points[i]));
  size_t at = 0;
  while ((at = written.find('\n', at)) != std::string::npos) written.replace(at, 1, "\r\n"), at += 2;
  EXPECT_TRUE(ReadBytes(file_) == written);
}

TEST_F(VaglinjeFile, WhatCannotBeOpenedIsReported) {
  CVaglinje line;
  AddPoints(&line, {{1, 2, 0, 3}});
  line.filnamn = L"OLD.VL";
  CVag2 set;
  AddPoints(&set.plan, {{1, 2, 0, 3}});
  EXPECT_TRUE(line.Init(file_) == -1 && set.Init(file_) == -1);
  CStodPunkt support(file_);
  EXPECT_TRUE(line.Where() == -1 && set.plan.Where() == -1 && support.Where() == -1);
  EXPECT_EQ(line.filnamn, L"OLD.VL");

  WriteBytes(file_, "old");
  const stdpkttype point{L"\u0416", 1, {}};  // not in Windows-1252
  support.Ny(1, &point);
  for (CVaglinje* alignment : {&line, &set.plan}) AddPoints(alignment, {{1, 2, 0, 3}});
  for (auto* name : {&line.namn, &set.vlNamn}) CopyToField(*name, point.namn);
  EXPECT_TRUE(line.Uppdat(file_) == -1 && set.Uppdat(file_) == -1 && support.Uppdat(file_) == -1);
  EXPECT_EQ(ReadBytes(file_), "old");
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"A$P1.VL"});

  CString texts;
  for (const MessageBoxCall& box : messages_.boxes) texts += box.text + L"\n";
  const CString alignment = L"Kan ej öppna väglinje : " + file_ + L"\n";
  EXPECT_EQ(texts, alignment + alignment + L"Kan ej öppna stödpunkt : " + file_ + L"\n" + alignment +
                       alignment + L"Kan ej skapa/uppdatera stödpunkt : " + file_ + L"\n");
  EXPECT_EQ(messages_.boxes.front().style, unsigned{MB_OK | MB_ICONEXCLAMATION});
}

TEST_F(VaglinjeFile, DamagedFilesAreSurvived) {
  std::mt19937 random(9);
  const std::string_view pieces[] = {"1 2 0 3", "\r\n", "\n",       "\r", "$",    "10",  " ",
                                     "-",       "1e39", "\xFF\xFE", "*",  "%s%n", "gvy", "1e999"};
  for (int round = 0; round < 200; ++round) {
    std::string bytes = random() % 2 == 0 ? "1\n2\n3\n4\n5\n6\n*\n" : "";
    for (size_t i = random() % 60; i > 0; --i) {
      bytes += pieces[random() % std::size(pieces)];
      if (random() % 2 == 0) bytes += static_cast<char>(random() % 256);
    }
    if (round == 0) bytes = std::string(3000000, '7') + " 1 1 1\r\n1 2 0 3\r\n";
    CVaglinje line;
    EXPECT_EQ(Load(&line, bytes), 0);
    for (const kovltype& p : PointsOf(line))
      EXPECT_LT(p.x * 0 + p.y * 0 + p.bulge * 0 + p.sek * 0, 1);  // finite
    CVag2 set;
    EXPECT_EQ(set.Init(file_), 0);
    CStodPunkt support(file_);
    for (const stdpkttype& point : PointsOf(support)) EXPECT_LT(std::wcslen(point.namn), 12u);
  }
  EXPECT_TRUE(messages_.boxes.empty());
}

}  // namespace
}  // namespace velmora
