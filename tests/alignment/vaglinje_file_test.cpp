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

TEST_F(VaglinjeFile, AFileReplacesPointsAndNameButTheTypeOnlyWithOneOfItsOwn) {
  OpenLine line({{9, 9, 9, 9}});
  line.typ = 7;
  CopyToField(line.namn, L"gammalt");
  WriteBytes(file_, std::string(3'000'000, '7') + " 1 1 1\r\n1 2 0 3");  // a number without end
  line.filnamn = file_;
  ASSERT_EQ(line.Init(line.filnamn), 0);  // its own field as the argument
  EXPECT_TRUE(line.typ == 7 && line.namn[0] == L'\0' && line.Points().size() == 1);
  EXPECT_EQ(line.filnamn, L"A$P1.VL");
  ASSERT_EQ(line.Uppdat(file_), 0);
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"A$P1.VL"});
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
  const std::vector<kovltype> read = line.Points();
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

}  // namespace
}  // namespace velmora
