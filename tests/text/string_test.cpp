#include "velmora/text/string.h"

#include <gtest/gtest.h>

#include <climits>
#include <type_traits>

#include "tests/support/print_text.h"

namespace velmora {
namespace {

using namespace std::string_view_literals;

TEST(CString, NullCountsAsEmptyAndPartsAreJoined) {
  const wchar_t* const none = nullptr;
  CString text = none;
  EXPECT_TRUE(text == nullptr && nullptr == text && text == none && text == L"");
  text += none;
  EXPECT_EQ(text + nullptr + L"x" + none, L"x");
  EXPECT_TRUE(text.Compare(nullptr) == 0 && text.CompareNoCase(nullptr) == 0);
  EXPECT_TRUE(CString(none, 5) == L"" && CString(L"abcdef", -1) == L"" && CString(L'x', -3) == L"");
  EXPECT_EQ(CString(L"x").Find(none), 0);
  text = L'y';
  text = nullptr;
  EXPECT_EQ(text.GetLength(), 0);
  EXPECT_EQ(CString(std::wstring_view(L"a\0b", 3)).GetLength(), 3);
  const CString a = L"a";
  EXPECT_EQ(L'c' + (L"x" + a + L"y" + L'z' + a), L"cxayza");
  text = L"ab";
  text += text;
  text += text.GetString() + 2;
  text += L'!';
  EXPECT_EQ(text, L"ababab!");
}

TEST(CString, PartsAreCutAtTheEnds) {
  const CString text = L"väglinje";
  const struct {
    int first, count;
    const wchar_t* part;
  } kCases[] = {{0, 3, L"väg"},  {3, 5, L"linje"}, {3, INT_MAX, L"linje"},  {8, 1, L""},
                {-5, 3, L"väg"}, {2, -1, L""},     {INT_MIN, INT_MIN, L""}, {INT_MAX, INT_MAX, L""}};
  for (const auto& a : kCases) EXPECT_EQ(text.Mid(a.first, a.count), a.part) << a.first << " " << a.count;
  for (const int count : {INT_MIN, -1, 0, 1, 8, 9, INT_MAX}) {
    const int kept = std::clamp(count, 0, 8);
    EXPECT_EQ(text.Left(count), text.Mid(0, kept)) << count;
    EXPECT_EQ(text.Right(count), text.Mid(8 - kept)) << count;
  }
  EXPECT_EQ(text[7], L'e');
  for (const int outside : {-1, 8, INT_MIN, INT_MAX}) EXPECT_EQ(text.GetAt(outside), L'\0') << outside;
}

TEST(CString, FindsAndTrims) {
  const CString path = L"a\\b\\c";
  EXPECT_TRUE(path.Find(L'\\', 1) == 1 && path.Find(L'\\', 2) == 3 && path.Find(L'a', 99) == -1);
  EXPECT_TRUE(path.Find(L"\\c", -7) == 3 && path.Find(L"\\c", 4) == -1);
  EXPECT_TRUE(path.ReverseFind(L'\\') == 3 && path.ReverseFind(L'x') == -1);
  const CString text = L" \t\r\n\v\fxx a xx \n";
  EXPECT_EQ(CString(text).TrimLeft().TrimRight(L'\n'), L"xx a xx ");
  EXPECT_EQ(CString(text).TrimRight().TrimLeft(L' '), L"\t\r\n\v\fxx a xx");
  EXPECT_EQ(CString(text).Trim().Trim(L'x').Trim(L' '), L"a");
  EXPECT_TRUE(CString(L"xxx").Trim(L'x') == L"" && CString(L"\u00A0 ").Trim() == L"\u00A0");
}

TEST(CString, ComparesByCharacterNumberOrWithoutCase) {
  CString text = L"Väg";
  EXPECT_TRUE(text == L"Väg" && L"Väg" == text && text == CString(L"Väg"));
  EXPECT_TRUE(text != L"väg" && text < L"väg" && L"VÄG" < text && CString() < text);
  EXPECT_TRUE(text.Compare(L"Vägar") < 0 && text.Compare(L"Va") > 0);
  EXPECT_TRUE(text.CompareNoCase(L"VÄG") == 0 && text.CompareNoCase(L"VÄH") < 0);
  text = L"Åsa går över ån, straße 7";
  EXPECT_EQ(text.MakeUpper(), L"ÅSA GÅR ÖVER ÅN, STRAßE 7");
  EXPECT_EQ(text.MakeLower(), L"åsa går över ån, straße 7");
}

TEST(CStringA, KnowsWindows1252) {
  CStringA text = "v\xE4g \xFF\xB5\x83 \x9A";  // ÿ has a capital there; µ and ƒ have none
  EXPECT_EQ(text.MakeUpper(), "V\xC4G \x9F\xB5\x83 \x8A");
  EXPECT_EQ(text.MakeLower(), "v\xE4g \xFF\xB5\x83 \x9A");
  EXPECT_EQ(text.CompareNoCase("V\xC4G \x9F\xB5\x83 \x8A"), 0);
  EXPECT_EQ(text.Left(3) + "ar" + '!', "v\xE4gar!");
  EXPECT_TRUE(CStringA(nullptr).IsEmpty());
}

TEST(CopyToField, CutsAndAlwaysTerminates) {
  wchar_t field[4] = {L'?', L'?', L'?', L'?'};
  for (const std::wstring_view text : {L"abcdef"sv, L"x"sv, L"a\0b"sv, L""sv}) {
    CopyToField(field, text);
    EXPECT_EQ(CString(field).GetView(), text.substr(0, text.find(L'\0')).substr(0, 3));
  }
}

// Wide and narrow text never mix unseen, and nothing is taken for text that is none.
static_assert(!std::is_convertible_v<const char*, CString>);
static_assert(!std::is_convertible_v<wchar_t, CString>);
static_assert(!std::is_convertible_v<CStringA, CString>);
static_assert(std::is_convertible_v<std::wstring_view, CString>);

}  // namespace
}  // namespace velmora
