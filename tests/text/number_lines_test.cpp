// The quick ways of reading and writing numbers, held against the general ones.
#include "velmora/text/number_lines.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "velmora/text/fixed_digits.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

// Of numbers that follow each other: any bits, those of a survey and their neighbours, halfway between two
// with few decimals, close to nothing and to the limits.
double NumberOfKind(int kind, std::mt19937_64& random) {
  double value = 0;
  switch (kind % 4) {
    case 0:
      value = std::bit_cast<double>(random());
      break;
    case 1:
      value = static_cast<double>(static_cast<std::int64_t>(random() % 2'000'000'000'000)) / 1e4;
      value = std::nextafter(value, random() % 2 == 0 ? 0 : 1e300);
      break;
    case 2:
      value = std::ldexp(static_cast<double>(random() % 4'000'000 + 1), -static_cast<int>(random() % 24));
      break;
    default:
      value = std::ldexp(1.0 - static_cast<double>(random() % 3) * 0x1p-53,
                         static_cast<int>(random() % 120) - 60);
  }
  return random() % 2 == 0 ? -value : value;
}

std::string Printed(double value, int decimals) {
  char text[400];
  const int length = std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return {text, static_cast<size_t>(length)};
}

TEST(FixedDigits, AreThoseOfPrintf) {
  std::mt19937_64 random(1);
  size_t plain = 0;
  for (int i = 0; i < 400'000; ++i) {
    const double value = NumberOfKind(i, random);
    for (const int decimals : {0, 3, 4, 8}) {
      char text[kLongestPlain];
      const size_t length = WritePlainFixed(value, decimals, text);
      if (length == 0) continue;
      ++plain;
      ASSERT_EQ(std::string(text, length), Printed(value, decimals));
    }
  }
  EXPECT_GT(plain, 1'000'000u);
  char text[kLongestPlain];
  EXPECT_EQ(WritePlainFixed(1e300, 4, text) + WritePlainFixed(std::nan(""), 4, text) +
                WritePlainFixed(INFINITY, 4, text) + WritePlainFixed(1, 9, text),
            0u);
}

TEST(FixedDigits, OfALineAreThoseOfItsNumbers) {
  std::mt19937_64 random(3);
  const auto expect_same = [](const std::array<double, 4>& numbers) {
    std::array<char, 4 * (kLongestPlain + 1)> text;
    const char* const three = WriteFourDecimals<3>(numbers, text.data());
    const std::string first(static_cast<const char*>(text.data()), three == nullptr ? text.data() : three);
    const char* const four = WriteFourDecimals<4>(numbers, text.data());
    if (four == nullptr) return false;
    std::string expected;
    for (const double number : {numbers[0], numbers[1], numbers[2]}) expected += Printed(number, 4) + " ";
    EXPECT_EQ(first, expected);
    EXPECT_EQ(std::string(static_cast<const char*>(text.data()), four),
              expected + Printed(numbers[3], 4) + " ");
    return true;
  };
  size_t written = 0;
  for (int i = 0; i < 100'000; ++i) {
    // Three of a survey and, in any column, one of each kind.
    std::array<double, 4> numbers;
    for (double& number : numbers) number = NumberOfKind(1, random);
    numbers[random() % 4] = NumberOfKind(i, random);
    written += expect_same(numbers) ? 1 : 0;
  }
  EXPECT_GT(written, 75'000u);
  for (const double edge : {0.0, 0.00005, 0.03125, 99'999'998.99995, 99'999'998.999949999, 99'999'999.0, 1e8})
    EXPECT_TRUE(expect_same({edge, -edge, edge, -edge})) << edge;
  for (const double none : {1e300, std::nan(""), -double{INFINITY}})
    EXPECT_FALSE(expect_same({1, 2, none, 3})) << none;
}

TEST(NumberLines, GiveTheSameDoublesOrNone) {
  std::mt19937 random(2);
  const std::string odd[] = {"1e3", "-",   "",     ".5", "5.",    "12345678.25", "+1.5", "0.12345678",
                             "x",   "1,5", "-0.0", "7",  "--1.0", "1.\xE5",      "1.5-"};
  const auto number = [&] {
    std::string text = random() % 3 == 0 ? "-" : "";
    text += std::to_string(random() % (random() % 2 == 0 ? 10 : 9'999'999)) + ".";
    for (size_t digits = random() % 10 == 0 ? 1 + random() % 7 : 4; digits > 0; --digits)
      text += static_cast<char>('0' + random() % 10);
    return text;
  };
  size_t plain = 0;
  for (const int way : {0, 1, 2, 3}) {
    const int count = 3 + way % 2;
    NumberLines lines(count, way < 2);
    for (int round = 0; round < 100'000; ++round) {
      std::string line;
      for (int i = 0; i < count; ++i)
        line += (i > 0 ? " " : "") + (random() % 40 == 0 ? odd[random() % std::size(odd)] : number());
      if (random() % 40 == 0) line += odd[random() % std::size(odd)];
      const std::string end = random() % 2 == 0 ? "\r\n" : "\n";
      const std::string padded = line + end + std::string(NumberLines::kSlack, random() % 2 == 0 ? '9' : ' ');
      std::array<double, 4> read{};
      const size_t length = lines.Read(padded, &read);
      EXPECT_EQ(lines.Read(std::string_view(padded).substr(0, NumberLines::kSlack - 1), &read), 0u);
      if (length == 0) continue;
      ++plain;
      ASSERT_EQ(length, line.size() + end.size()) << line;
      std::array<double, 4> expected{};
      ASSERT_EQ(ScanNumbers(std::wstring(line.begin(), line.end()),
                            std::span(expected).first(static_cast<size_t>(count))),
                static_cast<size_t>(count))
          << line;
      (void)lines.Read(padded, &read);
      ASSERT_EQ(std::memcmp(read.data(), expected.data(), sizeof(double) * static_cast<size_t>(count)), 0)
          << line;
    }
  }
  EXPECT_GT(plain, 200'000u);
}

}  // namespace
}  // namespace velmora
