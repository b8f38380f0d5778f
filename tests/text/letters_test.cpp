#include "velmora/text/letters.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora {
namespace {

TEST(Letters, SmallAndCapitalBelongTogether) {
  const std::wstring small = L"azåäöéüðþÿāłńşžżαωίабяёђ";
  const std::wstring capital = L"AZÅÄÖÉÜÐÞŸĀŁŃŞŽŻΑΩίАБЯЁЂ";  // ί: accented Greek keeps its form
  ASSERT_EQ(small.size(), capital.size());
  for (size_t i = 0; i < small.size(); ++i) {
    EXPECT_EQ(UpperLetter(small[i]), capital[i]) << i;
    EXPECT_EQ(LowerLetter(capital[i]), small[i]) << i;
  }
  // What is no letter or has no partner stays.
  for (const wchar_t c : std::wstring(L"@[`{09 ×÷ßµªºİıĸŉſ\x03A2ς€中\xFFFF"))
    EXPECT_TRUE(UpperLetter(c) == c && LowerLetter(c) == c) << static_cast<unsigned>(c);
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    const auto c = static_cast<wchar_t>(code);
    const wchar_t upper = UpperLetter(c);
    const wchar_t lower = LowerLetter(c);
    EXPECT_TRUE(upper == c || (LowerLetter(upper) == c && lower == c)) << code;
    EXPECT_TRUE(lower == c || UpperLetter(lower) == c) << code;
  }
}

TEST(Letters, CompareInLowerCase) {
  const wchar_t* const kRising[] = {L"", L"A", L"a.vl", L"A_", L"Ab", L"abc", L"VÄG", L"Väg1", L"Å"};
  for (size_t i = 0; i < std::size(kRising); ++i) {
    for (size_t k = 0; k < std::size(kRising); ++k) {
      const int order = CompareNoCase(kRising[i], kRising[k]);
      EXPECT_EQ((order > 0) - (order < 0), (i > k) - (i < k)) << i << " " << k;
      EXPECT_EQ(EqualNoCase(kRising[i], kRising[k]), i == k);
    }
  }
  EXPECT_EQ(CompareNoCase(L"VÄGLINJE Å", L"väglinje å"), 0);
  EXPECT_LT(CompareNoCase(L"_", L"A"), 0);  // in capitals it would be above
}

TEST(Letters, TrimBlanksTakesBlanksAtTheEndsOnly) {
  EXPECT_EQ(TrimBlanks(L" \t\r\n\v\fa b\t "), L"a b");
  EXPECT_EQ(TrimBlanks(L"\u00A0a"), L"\u00A0a");  // the no-break space is text
}

}  // namespace
}  // namespace velmora
