#include "velmora/text/format.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/print_text.h"
#include "velmora/text/codepage.h"
#include "velmora/text/string.h"

namespace velmora {
namespace {

template <class... Arguments>
CString Formatted(const wchar_t* format, const Arguments&... arguments) {
  CString text;
  text.Format(format, arguments...);
  return text;
}

template <class... Arguments>
void ExpectAsPrintf(const std::string& format, Arguments... arguments) {
  std::array<char, 2000> printed;
  std::snprintf(printed.data(), printed.size(), format.c_str(), arguments...);
  const std::wstring wide(format.begin(), format.end());
  EXPECT_EQ(ToUtf8(Formatted(wide.c_str(), arguments...)), printed.data()) << format;
}

TEST(Format, WritesNumbersAsPrintfDoes) {
  constexpr int kLeast = std::numeric_limits<int>::min();
  const double infinity = std::numeric_limits<double>::infinity();
  const std::string kFlags[] = {"", "-", "+", " ", "0", "-0", "+0", " 0", "+-"};
  const std::string kSizes[] = {"",    "1",   "9",    "12",  ".0",    ".1",
                                "9.4", "6.2", "12.0", ".17", "40.12", ".1200"};
  for (const std::string& flags : kFlags) {
    for (const std::string& size : kSizes) {
      const std::string start = "[%" + flags + size;
      for (const int value : {0, 1, -1, 42, -12345, 2147483647, kLeast}) {
        ExpectAsPrintf(start + "d]", value);
        if (flags.find_first_of("+ ") != std::string::npos) continue;  // without meaning there
        for (const char* letter : {"u]", "x]", "X]", "o]"})
          ExpectAsPrintf(start + letter, static_cast<unsigned>(value));
      }
      for (const double value :
           {0.0, -0.0, 0.5, 1.5, -2.675, 1234567.891, 1e-5, 0.0001, 1e15, 1e22, 1e-300, 1e308, -infinity})
        for (const char* letter : {"f]", "F]", "e]", "E]", "g]", "G]"}) ExpectAsPrintf(start + letter, value);
    }
  }
}

TEST(Format, WritesEveryKindOfArgument) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  const CString name = L"ROAD.VL";
  const wchar_t* const none = nullptr;
  // Each keeps its own width, whatever the format says.
  EXPECT_EQ(Formatted(L"%x %x %u", -1, static_cast<short>(-1), -1), L"ffffffff ffff 4294967295");
  EXPECT_EQ(Formatted(L"%lld %I64d %zu %hd", std::numeric_limits<std::int64_t>::min(), std::int64_t{1} << 40,
                      size_t{7}, short{8}),
            L"-9223372036854775808 1099511627776 7 8");
  EXPECT_EQ(Formatted(L"%d %lf %.1f", kMost, 1.5, 2.25F), L"18446744073709551615 1.500000 2.2");
  EXPECT_EQ(Formatted(L"%s|%s|%ls|%s", L"a", name, std::wstring_view(L"abcdef", 3), none),
            L"a|ROAD.VL|abc|(null)");
  EXPECT_EQ(Formatted(L"%-10s|%10s|%.3s|%8.2s|", name, name, name, name),
            L"ROAD.VL   |   ROAD.VL|ROA|      RO|");
  EXPECT_EQ(Formatted(L"%c%c|%3c|%-3c|%%%s", L'å', 65, L'x', L'y', L"%d"), L"åA|  x|y  |%%d");
  EXPECT_EQ(Formatted(L"%*d|%-*d|%*d|%.*f|%*.*f|%.*f", 5, 42, 5, 42, -5, 42, 2, 3.14159, 8, 1, 2.55, -1, 1.0),
            L"   42|42   |42   |3.14|     2.5|1.000000");
  EXPECT_EQ(Formatted(L"%#X %#o %#x %#o|%#06x|%#6x|%#.4x|%#.0o", 255, 8, 0, 0, 255, 255, 255, 0),
            L"0XFF 010 0 0|0x00ff|  0xff|0x00ff|0");
  CString text = L"väg";
  text.Format(L"%s-%s-%s", text, text.GetString(), text);
  EXPECT_EQ(text, L"väg-väg-väg");
}

TEST(Format, DamagedFormatsAndWrongArgumentsStayHarmless) {
  EXPECT_EQ(Formatted(L"a%-05.3l"), L"a%-05.3l");
  EXPECT_EQ(Formatted(L"%n%q %d", 5), L"%n%q 5");
  EXPECT_EQ(Formatted(L"%d %d|%3s|", 1), L"1 |   |");  // missing ones are empty
  EXPECT_EQ(Formatted(L"%d %.1f %s %c", 2.9, 3, 4, L"x"), L"2 3.0 4 x");
  EXPECT_EQ(Formatted(L"%d|%f|%c|%d", L"text", L"text", L"", std::nan("")), L"0|0.000000||0");
  EXPECT_EQ(Formatted(nullptr, 1), L"");
  constexpr int kMost = std::numeric_limits<int>::max();
  for (const wchar_t* huge : {L"%999999999999999999d", L"%.99999999999d", L"%.99999999999f", L"%*.*g"})
    EXPECT_LE(Formatted(huge, -kMost, kMost, 1e308).GetLength(), 5000);
  std::vector<std::wstring> formats = {L"%"};  // every short one
  for (size_t i = 0; i < formats.size(); ++i) {
    EXPECT_LE(Formatted(formats[i].c_str(), 5, L"text", 2.5).GetLength(), 600) << Utf8FromWide(formats[i]);
    if (formats[i].size() < 5)
      for (const wchar_t c : std::wstring(L"%-0#*.5lIdsfcx")) formats.push_back(formats[i] + c);
  }
}

}  // namespace
}  // namespace velmora
