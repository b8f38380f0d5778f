#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/support/background_command.h"
#include "tests/support/print_text.h"
#include "tests/support/run_command.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

constexpr int kRounds = 300;
const std::string kFirst = "10000000";

// As the library's readers do: others may replace the file meanwhile.
std::string ReadShared(const CString& path) {
  InputFile file;
  EXPECT_TRUE(file.Open(path)) << ToUtf8(path);
  std::string bytes(1 << 20, '\0');
  std::int64_t size = 0;
  std::int64_t count = 1;
  for (; count > 0; size += count) count = file.Read(std::span(bytes).subspan(static_cast<size_t>(size)));
  EXPECT_EQ(count, 0);
  return bytes.substr(0, static_cast<size_t>(size));
}

class KilledWriters : public ::testing::Test {
 protected:
  KilledWriters() {
    EXPECT_EQ(BackgroundCommand(Writer(kFirst, 0), output_.File(L"first")).Wait(), 0);
    for (const CString& name : NamesIn(folder_.Path())) first_[name] = ReadBytes(folder_.File(name));
  }

  std::vector<std::string> Writer(const std::string& number, int step) const {
    return {PathFromEnvironment("VELMORA_WRITER"), AsArgument(folder_.Path()), number, std::to_string(step)};
  }

  // Compares the file with the first one, which was written undisturbed.
  void ExpectWhole(const CString& name) {
    const std::string bytes = ReadShared(folder_.File(name));
    const std::string number = bytes.substr(std::min(bytes.find('#') + 1, bytes.size()), kFirst.size());
    std::string expected = first_[name];
    for (size_t at = 0; (at = expected.find(kFirst, at)) != std::string::npos; at += kFirst.size())
      expected.replace(at, kFirst.size(), number);
    ASSERT_TRUE(!bytes.empty() && bytes == expected)
        << ToUtf8(name) << " is torn, " << bytes.size() << " bytes";
  }

  // Two writers at once, while every file is read again and again, then killed.
  void Round(int round, std::chrono::milliseconds time) {
    const int number = std::stoi(kFirst) + round * 20'000;
    BackgroundCommand odd(Writer(std::to_string(number + 1), 2), output_.File(L"odd"));
    BackgroundCommand even(Writer(std::to_string(number + 2), 2), output_.File(L"even"));
    ASSERT_TRUE(odd.Process() != 0 && even.Process() != 0);
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end)
      for (const auto& [name, bytes] : first_) ASSERT_NO_FATAL_FAILURE(ExpectWhole(name));
    odd.Kill();
    even.Kill();
    for (const auto& [name, bytes] : first_) ASSERT_NO_FATAL_FAILURE(ExpectWhole(name));
    ASSERT_EQ(ReadBytes(output_.File(L"odd")) + ReadBytes(output_.File(L"even")), "");
  }

  TemporaryFolder folder_;
  TemporaryFolder output_;
  std::map<CString, std::string> first_;
};

TEST_F(KilledWriters, LeaveEveryFileWhole) {
  const std::vector<CString> names = NamesIn(folder_.Path());
  std::mt19937 random(20);
  // Under an emulator a program takes longer to start.
  const char* const longest = std::getenv("VELMORA_LONGEST_LIFE_MS");
  std::uniform_int_distribution<int> milliseconds(0, longest == nullptr ? 60 : std::atoi(longest));
  int torn_off = 0;
  for (int round = 1; round <= kRounds; ++round) {
    ASSERT_NO_FATAL_FAILURE(Round(round, std::chrono::milliseconds(milliseconds(random))))
        << "round " << round;
    torn_off += NamesIn(folder_.Path()).size() > names.size() ? 1 : 0;
  }
  EXPECT_GT(torn_off, 0) << "no kill in the middle of a write";
  // The next write removes what they left behind.
  EXPECT_EQ(BackgroundCommand(Writer("16000000", 0), output_.File(L"last")).Wait(), 0);
  EXPECT_EQ(NamesIn(folder_.Path()), names);
}

}  // namespace
}  // namespace velmora::testing
