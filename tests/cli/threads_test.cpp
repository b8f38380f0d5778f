// Rows of a long list come in their order from any number of threads.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/run_command.h"

namespace velmora::testing {
namespace {

// More than a block for each thread, with rows that are no points and rows that the quick way leaves.
TEST(Threads, RowsComeInOrderFromAnyNumber) {
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"corner.vl"), "0 0 0 0 1 $Corner\n0 100 0 100\n100 100 0 200\n");
  std::string list = "id,n,e,z\n";
  for (int i = 0; i < 40'000; ++i) {
    list += i % 1000 == 7 ? "\"B, " + std::to_string(i) + "\"" : "Punkt-nummer-" + std::to_string(i);
    list += i % 5000 == 9 ? ",x,1\n"
                          : "," + std::to_string(i % 90) + ".25," + std::to_string(i % 97) + ".5,1.75\r\n";
    if (i % 3000 == 1) list += "\n";
  }
  const auto run = [&](const char* threads) {
    return RunVelmora({"align", "locate", AsArgument(folder.File(L"corner.vl")), "--points", "-", "--csv",
                       "--threads", threads},
                      list);
  };
  const Ran one = run("1");
  const Ran three = run("3");
  EXPECT_TRUE(one.out == three.out && one.err == three.err && one.status == 1 && three.status == 1);
  // Each row ends in the number of its line.
  int before = 1;
  for (size_t at = one.out.find('\n') + 1, end; (end = one.out.find('\n', at)) != std::string::npos;
       at = end + 1) {
    const size_t last = one.out.rfind(',', end) + 1;
    const int number = std::stoi(one.out.substr(last, end - last));
    ASSERT_LT(before, number);
    before = number;
  }
  EXPECT_EQ(before, std::count(list.begin(), list.end(), '\n'));
  EXPECT_EQ(std::count(one.out.begin(), one.out.end(), '\n'), 40'001);
}

}  // namespace
}  // namespace velmora::testing
