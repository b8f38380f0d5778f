// The table of sheet formats.
#include "velmora/drawing/ritnings_format.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "velmora/text/numbers.h"

namespace velmora {
namespace {

TEST(RitningsFormat, TheStandardTable) {
  const CRitningsFormat formats;
  std::string table;
  for (int i = 0; i < formats.antal; ++i) {
    const ritformattype& format = formats.formater[i];
    EXPECT_EQ(formats.Format2Index(format.namn), i);
    table += ToUtf8(format.namn);
    for (const double mm :
         {format.ytaBredd, format.ytaHojd, format.ramBredd, format.ramHojd, format.arkBredd, format.arkHojd})
      table += " " + FormatShortest(mm);
    table += "\n";
  }
  EXPECT_EQ(table,
            "A0 1122 793 1141 823 1189 841\nA1 774 574 793 577 840 594\nA1L 1122 574 1141 577 1189 594\n"
            "A2 527 373 547 403 594 420\nA2L 774 373 793 403 841 420\nA3 353 250 373 280 420 297\n"
            "A3L 527 250 547 280 594 297\nA3XL 774 250 794 280 843 297\nA4 143 250 183 280 210 297\n");
}

TEST(RitningsFormat, LooksAtWholeNamesOfWhatIsInUseAndTakesTheLast) {
  const CRitningsFormat formats;
  for (const wchar_t* none : {L"a4", L"A", L"A4 ", L"", static_cast<const wchar_t*>(nullptr)})
    EXPECT_EQ(formats.Format2Index(none), -1);
  CRitningsFormat copy(formats);
  copy.formater[3].namn = L"A4";
  EXPECT_EQ(formats.Format2Index(L"A2"), 3);
  const std::pair<int, int> kFoundWithCount[] = {{9, 8}, {8, 3}, {3, -1}, {0, -1}, {-1, -1}, {1000, 8}};
  for (const auto& [count, found] : kFoundWithCount) {
    copy.antal = count;
    EXPECT_EQ(copy.Format2Index(CString(L"A4")), found) << count;
  }
}

}  // namespace
}  // namespace velmora
