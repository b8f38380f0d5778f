#include "velmora/text/string.h"

#include <gtest/gtest.h>

#include <climits>
#include <type_traits>

#include "tests/support/print_text.h"

namespace velmora {
namespace {

TEST(CString, NullCountsAsEmpty) {
  const wchar_t* const none = nullptr;
  CString text = none;
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_TRUE(text == nullptr && nullptr == text && text == none && text == L"");
  EXPECT_FALSE(text != nullptr);
  text += none;
  EXPECT_EQ(text + nullptr + L"x" + none, L"x");
  EXPECT_EQ(text.Compare(nullptr), 0);
  EXPECT_EQ(text.CompareNoCase(nullptr), 0);
  EXPECT_EQ(CString(none, 5), L"");
  EXPECT_EQ(CString(L"x").Find(none), 0);
  text = L"y";
  text = nullptr;
  EXPECT_EQ(text.GetLength(), 0);
}

TEST(CString, IsMadeFromPartsAndCharacters) {
  EXPECT_EQ(CString(L"abcdef", 3), L"abc");
  EXPECT_EQ(CString(L"abcdef", -1), L"");
  EXPECT_EQ(CString(L'x', 3), L"xxx");
  EXPECT_EQ(CString(L'x', -3), L"");
  EXPECT_EQ(CString(std::wstring_view(L"a\0b", 3)).GetLength(), 3);
  CString text;
  text = L'x';
  EXPECT_EQ(text, L"x");
}

TEST(CString, JoinsInEveryOrder) {
  const CString a = L"a";
  const wchar_t* const b = L"b";
  EXPECT_EQ(a + a, L"aa");
  EXPECT_EQ(a + b, L"ab");
  EXPECT_EQ(b + a, L"ba");
  EXPECT_EQ(a + L'c', L"ac");
  EXPECT_EQ(L'c' + a, L"ca");
  EXPECT_EQ(L"x" + a + L"y" + L'z' + a, L"xayza");
  CString text = L"ab";
  text += text;
  text += text.GetString() + 2;
  text += L'!';
  EXPECT_EQ(text, L"ababab!");
}

TEST(CString, CopiesAreIndependent) {
  CString first = L"one";
  const CString second = first;
  first += L"!";
  EXPECT_EQ(second, L"one");
  CString& alias = first;
  first = alias;
  EXPECT_EQ(first, L"one!");
}

TEST(CString, PartsAreCutAtTheEnds) {
  const CString text = L"väglinje";
  struct MidCase {
    int first, count;
    const wchar_t* part;
  };
  const MidCase kMid[] = {{0, 3, L"väg"},
                          {3, 5, L"linje"},
                          {3, 99, L"linje"},
                          {3, INT_MAX, L"linje"},
                          {8, 1, L""},
                          {99, 1, L""},
                          {-5, 3, L"väg"},
                          {2, 0, L""},
                          {2, -1, L""},
                          {INT_MIN, INT_MIN, L""},
                          {INT_MAX, INT_MAX, L""}};
  for (const MidCase& mid : kMid)
    EXPECT_EQ(text.Mid(mid.first, mid.count), mid.part) << mid.first << " " << mid.count;
  EXPECT_EQ(text.Mid(3), L"linje");
  EXPECT_EQ(text.Mid(-1), text);
  EXPECT_EQ(text.Mid(99), L"");
  for (const int count : {INT_MIN, -1, 0, 1, 5, 8, 9, INT_MAX}) {
    const int kept = std::clamp(count, 0, 8);
    EXPECT_EQ(text.Left(count), text.Mid(0, kept)) << count;
    EXPECT_EQ(text.Right(count), text.Mid(8 - kept)) << count;
  }
  EXPECT_EQ(text[0], L'v');
  EXPECT_EQ(text.GetAt(7), L'e');
  for (const int outside : {-1, 8, INT_MIN, INT_MAX}) EXPECT_EQ(text.GetAt(outside), L'\0') << outside;
}

TEST(CString, FindsFromAPlaceOn) {
  const CString text = L"a\\b\\c";
  EXPECT_EQ(text.Find(L'\\'), 1);
  EXPECT_EQ(text.Find(L'\\', 1), 1);
  EXPECT_EQ(text.Find(L'\\', 2), 3);
  EXPECT_EQ(text.Find(L"\\c"), 3);
  EXPECT_EQ(text.Find(L"\\c", -7), 3);
  EXPECT_EQ(text.Find(L"\\c", 4), -1);
  EXPECT_EQ(text.Find(L'a', 99), -1);
  EXPECT_EQ(text.Find(L"A"), -1);
  EXPECT_EQ(text.ReverseFind(L'\\'), 3);
  EXPECT_EQ(text.ReverseFind(L'x'), -1);
  EXPECT_EQ(CString().ReverseFind(L'x'), -1);
}

TEST(CString, TrimsBlanksOrOneCharacter) {
  const auto trimmed = [](auto change) {
    CString text = L" \t\r\n\v\fxx a xx \n";
    change(text);
    return text;
  };
  EXPECT_EQ(trimmed([](CString& text) { text.Trim(); }), L"xx a xx");
  EXPECT_EQ(trimmed([](CString& text) { text.TrimLeft(); }), L"xx a xx \n");
  EXPECT_EQ(trimmed([](CString& text) { text.TrimRight(); }), L" \t\r\n\v\fxx a xx");
  EXPECT_EQ(trimmed([](CString& text) { text.Trim().Trim(L'x').Trim(L' '); }), L"a");
  EXPECT_EQ(trimmed([](CString& text) { text.Trim().TrimLeft(L'x'); }), L" a xx");
  EXPECT_EQ(trimmed([](CString& text) { text.Trim().TrimRight(L'x'); }), L"xx a ");
  EXPECT_EQ(CString(L"xxx").Trim(L'x'), L"");
  EXPECT_EQ(CString(L"\u00A0 ").Trim(), L"\u00A0");
}

TEST(CString, ComparesByCharacterNumberOrWithoutCase) {
  const CString text = L"Väg";
  EXPECT_TRUE(text == L"Väg" && L"Väg" == text && text == CString(L"Väg"));
  EXPECT_TRUE(text != L"väg" && text < L"väg" && L"VÄG" < text && CString() < text);
  EXPECT_LT(text.Compare(L"Vägar"), 0);
  EXPECT_GT(text.Compare(L"Va"), 0);
  EXPECT_EQ(text.CompareNoCase(L"VÄG"), 0);
  EXPECT_LT(text.CompareNoCase(L"VÄH"), 0);
  EXPECT_NE(CString(std::wstring_view(L"a\0b", 3)), L"a");
}

TEST(CString, ChangesTheCaseOfSwedishLetters) {
  CString text = L"Åsa går över ån, straße 7";
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

TEST(CString, GoesToUtf8AndBack) {
  const CString text = L"väg €😀";
  EXPECT_EQ(ToUtf8(text), "v\xC3\xA4g \xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(FromUtf8("v\xE4g"), L"v\xFFFDg");
}

TEST(CopyToField, CutsAndAlwaysTerminates) {
  wchar_t field[4] = {L'?', L'?', L'?', L'?'};
  CopyToField(field, L"abcdef");
  EXPECT_EQ(CString(field), L"abc");
  CopyToField(field, L"x");
  EXPECT_EQ(CString(field), L"x");
  CopyToField(field, std::wstring_view(L"a\0b", 3));
  EXPECT_EQ(CString(field), L"a");
  CopyToField(field, L"");
  EXPECT_EQ(field[0], L'\0');
}

// Wide and narrow text never mix unseen, and nothing is taken for text that is none.
static_assert(!std::is_convertible_v<const char*, CString>);
static_assert(!std::is_convertible_v<wchar_t, CString>);
static_assert(!std::is_convertible_v<CStringA, CString>);
static_assert(std::is_convertible_v<std::wstring_view, CString>);

}  // namespace
}  // namespace velmora
