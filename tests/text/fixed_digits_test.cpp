#include "velmora/text/fixed_digits.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>

#include "velmora/platform/vector_digits.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

// Any bits; those of a survey and their neighbours; halfway between two with few decimals; close to powers of
// two.
double NumberOfKind(int kind, std::mt19937_64& random) {
  const double survey = static_cast<double>(random() % 2'000'000'000'000) / 1e4;
  const double kinds[] = {
      std::bit_cast<double>(random()), std::nextafter(survey, random() % 2 == 0 ? 0 : 1e300),
      std::ldexp(static_cast<double>(random() % 4'000'000 + 1), -static_cast<int>(random() % 24)),
      std::ldexp(1 - static_cast<double>(random() % 3) * 0x1p-53, static_cast<int>(random() % 120) - 60)};
  return random() % 2 == 0 ? -kinds[kind % 4] : kinds[kind % 4];
}

std::string Printed(double value, int decimals) {
  char text[400];
  const int length = std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return {text, static_cast<size_t>(length)};
}

TEST(FixedDigits, VectorsGiveTheSame) {
  for (std::uint64_t four = 0; four < 10'000; ++four) {
    const std::uint64_t number = four * 100'000'000 + (9'999 - four) * 10'000 + four;
    const auto digits = fixed_digits::TwelveDigitsOf(number);
    const auto vector = VectorDigitsOf(number);
    ASSERT_TRUE(vector.whole == digits.whole && vector.decimals == digits.decimals) << number;
  }
}

TEST(FixedDigits, AreThoseOfPrintf) {
  std::mt19937_64 random(1);
  char text[4 * (kLongestPlain + 1)];
  int plain = 0;
  const auto expect_line = [&](const std::array<double, 4>& numbers) {
    std::string expected;
    for (const double number : numbers) expected += Printed(number, 4) + " ";
    const char* const end = WriteFourDecimals<4>(numbers, text);
    const bool same = end == nullptr || std::string(static_cast<const char*>(text), end) == expected;
    EXPECT_TRUE(same) << expected;
    const char* const three = WriteFourDecimals<3>(numbers, text);
    EXPECT_TRUE(three == nullptr || expected.starts_with(std::string(static_cast<const char*>(text), three)));
    return end == nullptr ? 0 : 1;
  };
  for (int i = 0; i < 200'000; ++i) {
    const double value = NumberOfKind(i, random);
    if (std::isnan(value)) continue;
    for (const int decimals : {0, 3, 4}) ASSERT_EQ(FormatFixed(value, decimals), Printed(value, decimals));
    // Three of a survey and, in any column, one of each kind.
    std::array<double, 4> numbers;
    for (double& number : numbers) number = NumberOfKind(1, random);
    numbers[random() % 4] = value;
    plain += expect_line(numbers);
  }
  EXPECT_GT(plain, 150'000);
  for (const double edge : {0.0, 0.00005, 0.03125, 99'999'998.99995, 99'999'998.999949999, 99'999'999.0, 1e8})
    EXPECT_EQ(expect_line({edge, -edge, edge, -edge}), 1) << edge;
  for (const double none : {1e300, std::nan(""), double{INFINITY}})
    EXPECT_TRUE(WriteFourDecimals<4>({1, 2, none, 3}, text) == nullptr &&
                WritePlainFixed(none, 4, text) == 0);
  EXPECT_EQ(WritePlainFixed(1, 5, text), 0u);
}

}  // namespace
}  // namespace velmora
