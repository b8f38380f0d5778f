#include "velmora/text/numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "velmora/text/plain_number.h"

namespace velmora {
namespace {

TEST(Numbers, TheLongestNumberAtTheStartIsTaken) {
  const std::wstring nines(400, L'9');
  const std::wstring zeros(400, L'0');
  const struct {
    std::wstring text;
    double value;
    const wchar_t* rest;
  } kCases[] = {
      {L" \t\r\n+12 13", 12, L" 13"},
      {L"-.5e1", -5, L""},
      {L"5.", 5, L""},
      {L"1E+3x", 1000, L"x"},
      {L"1e", 1, L"e"},
      {L"1e-x", 1, L"e-x"},
      {L"1.2.3", 1.2, L".3"},
      {L"1,5", 1, L",5"},
      {L"0x10", 0, L"x10"},
      {L"1\u00A02", 1, L"\u00A02"},
      {L"1.7976931348623157e308", std::numeric_limits<double>::max(), L""},
      {L"5e-324", std::numeric_limits<double>::denorm_min(), L""},
      // Too small for a double is 0, and so is nothing many times over.
      {L"1e-99999999999999999999", 0, L""},
      {L"0." + zeros + L"1", 0, L""},
      {L"-1e-400", 0, L""},
      {L"0.000e99999999999999999999", 0, L""},
      // Long, but a number like any other.
      {zeros + L"7", 7, L""},
      {L"1" + zeros + L"e-400", 1, L""},
      {L"0." + zeros + L"1e401", 1, L""},
      {L"0." + nines, 1, L""},
  };
  for (const auto& number : kCases) {
    NumberScanner scanner(number.text);
    double value = 777;
    EXPECT_TRUE(scanner.Next(&value) && value == number.value && scanner.Rest() == number.rest)
        << ::testing::PrintToString(number.text);
    EXPECT_EQ(ParseNumber(number.text), number.value);
    EXPECT_EQ(ParseWholeNumber(number.text + L" \t").has_value(), *number.rest == L'\0');
  }
}

TEST(Numbers, OthersAreNoNumbersAndChangeNothing) {
  const std::wstring kBad[] = {L"", L" ", L"x", L"+", L"-.", L"+-5", L"- 5", L"e5", L".e5", L"inf", L"-inf",
                               L"nan", L"\u0665", L"\uFF15",
                               // Too large for a double.
                               L"1e999", L"-1e309", L"1.8e308", L"10e9223372036854775807",
                               L"1e99999999999999999999", std::wstring(400, L'9'), L"0.001e312"};
  for (const std::wstring& text : kBad) {
    NumberScanner scanner(text);
    double value = 777;
    float single = 777;
    EXPECT_FALSE(scanner.Next(&value) || scanner.Next(&single) || ParseNumber(text) || value != 777 ||
                 single != 777 || scanner.Rest() != text)
        << ::testing::PrintToString(text);
  }
}

TEST(Numbers, ScannerReadsALineFieldByField) {
  NumberScanner line(L" 1.5 2 3.9 -7 99999999999");
  double real = 0;
  float single = 0;
  int whole = 0;
  EXPECT_TRUE(line.Next(&real) && real == 1.5);
  EXPECT_TRUE(line.Next(&single) && single == 2);
  EXPECT_TRUE(line.Next(&whole) && whole == 3);  // as "%d" does, it stops at the point
  EXPECT_TRUE(line.Next(&real) && real == 0.9);
  EXPECT_TRUE(line.Next(&whole) && whole == -7);
  EXPECT_FALSE(line.Next(&whole));
  EXPECT_EQ(whole, -7);
  EXPECT_EQ(line.Rest(), L" 99999999999");
  EXPECT_FALSE(NumberScanner(L"1e39").Next(&single));  // a double, but no float
  EXPECT_EQ(single, 2);

  std::array<double, 3> values = {9, 9, 9};
  EXPECT_EQ(ScanNumbers(L"1 2 x 4", values), 2U);
  EXPECT_EQ(values, (std::array<double, 3>{1, 2, 9}));
}

TEST(Numbers, FormatFixedWritesWhatIsAskedFor) {
  EXPECT_EQ(FormatFixed(2.5, -1), "2");  // halves go to the even digit
  EXPECT_EQ(FormatFixed(-1234.56789, 3), "-1234.568");
  EXPECT_EQ(FormatFixed(1e22, 1), "10000000000000000000000.0");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::max(), 1000).size(), 309U + 1 + 120);
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(FormatFixed(-infinity, 2), "-inf");
  EXPECT_EQ(FormatFixed(std::copysign(std::nan(""), -1.0), 2), "nan");
  for (const char* shortest : {"0.1", "-1.7976931348623157e+308", "5e-324", "6580000.1234", "nan"})
    EXPECT_EQ(FormatShortest(std::strtod(shortest, nullptr)), shortest);
  std::mt19937_64 random(2);
  for (int i = 0; i < 100'000; ++i) {
    const double decimal = static_cast<double>(static_cast<std::int64_t>(random()) >> random() % 64) /
                           std::pow(10, static_cast<double>(random() % 8));
    const double number = random() % 4 == 0 ? std::nextafter(decimal, 0) : decimal;
    std::array<char, 32> general;
    const char* const end = std::to_chars(general.begin(), general.end(), number).ptr;
    ASSERT_EQ(FormatShortest(number), std::string_view(general.data(), end));
  }
}

// Any digits around any place of the sign, and what is left to the general way.
TEST(Numbers, PlainOnesAreThoseOfFromChars) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 300'000; ++i) {
    std::string text(random() % 24, '0');
    for (char& c : text) c = static_cast<char>('0' + random() % 10);
    if (random() % 8 != 0) text.insert(random() % (text.size() + 1), 1, random() % 4 == 0 ? ',' : '.');
    if (random() % 4 == 0) text.insert(0, 1, '-');
    if (!text.empty() && random() % 16 == 0) text[random() % text.size()] = "-., :/x"[random() % 7];
    std::string plain = text;
    std::replace(plain.begin(), plain.end(), ',', '.');
    double expected = 0;
    const char* const end = plain.data() + plain.size();
    const auto general = std::from_chars(plain.data(), end, expected, std::chars_format::fixed);
    const bool is_number = general.ec == std::errc() && general.ptr == end;
    double number = 0;
    ASSERT_EQ(ReadPlainNumber(text, '.', ',', &number), is_number) << text;
    ASSERT_TRUE(!is_number || std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(expected))
        << text;
  }
}

}  // namespace
}  // namespace velmora
