#include "velmora/alignment/number_lines.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "velmora/text/numbers.h"

namespace velmora {
namespace {

std::vector<std::string> Parts(const std::string& text) {
  std::istringstream rest(text);
  std::vector<std::string> parts;
  for (std::string part; std::getline(rest, part, '|');) parts.push_back(part);
  return parts;
}

// Plain lines, of changing shapes, and others that begin as plain ones do. Both ways of reading give the
// doubles of the general reader, or leave the line to it.
TEST(NumberLines, GiveTheSameDoublesOrNone) {
  const std::vector<std::string> plain = Parts(
      "6580000.1234 152345.6789 0.0000 100.5000|6580000.1235 152345.6790 -0.1963 100.5001|1 -2 3 4|"
      "0.1 9999999.9999999 -0.0 -1234567.1|9999999 0.0000001 5.25 -7|9999998 0.0000002 6.25 -8");
  const std::vector<std::string> other = Parts(
      "1e3 2 3 4|12345678.25 2 3 4|+1.5 2 3 4|0.12345678 2 3 4|1 .5 3 4|1 5. 3 4|1 2 1,5 4|1 2 --1.0 4|"
      "1 2 3 1.\xE5|1 2 3 1.5-|1  2 3 4|1 2 3 4 |1 2 3 4 5|1 2 3||1 2 3 :|1 2 3 99999999|1 2 3 /");
  for (const bool wide : {false, HasWideLanes()})
    for (const char* end : {"\r\n", "\n"})
      for (const char spare : {'9', ' '}) {
        const std::string rest(NumberLines::kSlack, spare);
        std::array<double, 4> read{}, expected{};
        NumberLines four(4, wide), three(3, wide);
        for (const std::string& line : plain) {
          EXPECT_EQ(four.Read(line + std::string(NumberLines::kSlack, '\0'), &read), 0u) << "without its end";
          EXPECT_EQ(four.Read(line + end + rest, &read), line.size() + std::strlen(end)) << line;
          EXPECT_EQ(ScanNumbers(std::wstring(line.begin(), line.end()), expected), 4u);
          EXPECT_EQ(std::memcmp(read.data(), expected.data(), sizeof read), 0) << line;
          const std::string first_three = line.substr(0, line.rfind(' '));
          EXPECT_EQ(three.Read(first_three + end + rest, &read), first_three.size() + std::strlen(end));
          EXPECT_EQ(std::memcmp(read.data(), expected.data(), 3 * sizeof(double)), 0) << line;
          for (const std::string& text : other) EXPECT_EQ(four.Read(text + end + rest, &read), 0u) << text;
        }
      }
}

}  // namespace
}  // namespace velmora
