#include "velmora/text/codepage.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace std::string_literals;

std::wstring Decoded(std::string_view bytes, TextEncoding encoding) {
  std::wstring text;
  AppendDecoded(bytes, encoding, &text);
  return text;
}

// "nothing" where the encoding refuses; what stood before must then still stand alone.
std::string Encoded(std::wstring_view text, TextEncoding encoding) {
  std::string bytes = "old";
  if (AppendEncoded(text, encoding, &bytes)) return bytes.substr(3);
  EXPECT_EQ(bytes, "old");
  return "nothing";
}

TEST(Windows1252, EveryByteSurvivesAndNothingElseIsTaken) {
  // Bytes 80 to 9F; the undefined five among them are the controls of the same number.
  const std::wstring own = L"€\x81‚ƒ„…†‡ˆ‰Š‹Œ\x8DŽ\x8F\x90‘’“”•–—˜™š›œ\x9DžŸ";
  ASSERT_EQ(own.size(), 32U);
  std::string bytes;
  std::wstring text;
  for (unsigned byte = 0; byte < 256; ++byte) {
    bytes.push_back(static_cast<char>(byte));
    text.push_back(byte >= 0x80 && byte <= 0x9F ? own[byte - 0x80] : static_cast<wchar_t>(byte));
  }
  EXPECT_EQ(Decoded(bytes, TextEncoding::kWindows1252), text);
  EXPECT_EQ(Encoded(text, TextEncoding::kWindows1252), bytes);
  for (unsigned c = 0; c <= 0xFFFF; ++c) {
    const auto wide = static_cast<wchar_t>(c);
    EXPECT_EQ(EncodeWindows1252(wide).has_value(), text.find(wide) != std::wstring::npos) << c;
  }
  for (const wchar_t* foreign : {L"väg Ω", L"😀"})
    EXPECT_EQ(Encoded(foreign, TextEncoding::kWindows1252), "nothing");
}

TEST(Utf8, EveryCodePointSurvives) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c == 0xD800) c = 0xE000;
    std::string bytes;
    AppendUtf8(c, &bytes);
    char32_t back = 0;
    ASSERT_EQ(DecodeUtf8Sequence(bytes + "\x80", &back), bytes.size())
        << std::hex << static_cast<unsigned>(c);
    ASSERT_EQ(back, c);
    ASSERT_EQ(Utf8FromWide(WideFromUtf8(bytes)), bytes) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(Utf8, TakesBytesThatStartNoSequenceAsWindows1252) {
  const struct {
    std::string bytes;
    std::wstring strict;   // names and terminals
    std::wstring lenient;  // files
  } kCases[] = {
      {"v\xE4g v\xC3\xA4g", L"v\xFFFDg väg", L"väg väg"},
      {"\x80", L"\xFFFD", L"€"},                                              // a continuation alone
      {"\xE2\x82", L"\xFFFD\xFFFD", L"â‚"},                                   // cut
      {"\xC0\x80", L"\xFFFD\xFFFD", L"À€"},                                   // longer than need be
      {"\xE0\x80\x80", L"\xFFFD\xFFFD\xFFFD", L"à€€"},                        // likewise
      {"\xF0\x80\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD", L"ð€€€"},             // likewise
      {"\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD", L"í\x00A0€"},                   // a surrogate
      {"\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD", L"ô\x0090€€"},        // above 10FFFF
      {"\xF5\x80\x80\x80\xFF", L"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD", L"õ€€€ÿ"},  // no lead bytes
  };
  for (const auto& bad : kCases) {
    EXPECT_FALSE(IsValidUtf8(bad.bytes));
    EXPECT_EQ(WideFromUtf8(bad.bytes), bad.strict);
    EXPECT_EQ(Decoded(bad.bytes, TextEncoding::kUtf8), bad.lenient);
  }
  EXPECT_TRUE(IsValidUtf8("v\xC3\xA4g \xF0\x9F\x98\x80"));
}

TEST(Utf16, WhatStandsAloneIsNotDropped) {
  EXPECT_EQ(Decoded("A\0\x3D\xD8\x00\xDE\xE5"s, TextEncoding::kUtf16Le), L"A😀å");  // an odd byte
  const std::string big = "\0A\xD8\x3D\xDE\0\xDE\0\xD8\x3D"s;
  EXPECT_EQ(Decoded(big.substr(0, 6), TextEncoding::kUtf16Be), L"A😀");
  EXPECT_EQ(Encoded(Decoded(big, TextEncoding::kUtf16Be), TextEncoding::kUtf16Be), big);
  const std::wstring lone = Decoded("\x3D\xD8x\0\x00\xDE"s, TextEncoding::kUtf16Le);
  EXPECT_EQ(Encoded(lone, TextEncoding::kUtf8), "nothing");
  EXPECT_EQ(Utf8FromWide(lone), "\xEF\xBF\xBDx\xEF\xBF\xBD");
}

}  // namespace
}  // namespace velmora
