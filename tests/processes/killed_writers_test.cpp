#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/processes/generations.h"
#include "tests/support/background_command.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/run_command.h"
#include "tests/support/shell.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

constexpr int kRounds = 300;

// As the library's readers do: others may replace the file meanwhile.
std::string ReadShared(const CString& path) {
  InputFile file;
  EXPECT_TRUE(file.Open(path)) << ToUtf8(path);
  std::string bytes;
  for (std::int64_t count = 1; count > 0;) {
    const size_t before = bytes.size();
    bytes.resize(before + 65'536);
    count = file.Read(std::span(bytes).subspan(before));
    EXPECT_GE(count, 0);
    bytes.resize(before + static_cast<size_t>(std::max<std::int64_t>(count, 0)));
  }
  return bytes;
}

class KilledWriters : public ::testing::Test {
 protected:
  KilledWriters() {
    MakeFilesToRewrite(folder_.Path());
    EXPECT_TRUE(WriteGeneration(folder_.Path(), kFirstGeneration));
    for (const CString& name : names_) first_[name] = ReadBytes(folder_.File(name));
  }

  // Reads the file and holds it against the first generation, which was written in peace.
  void ExpectWhole(const CString& name) {
    const std::string bytes = ReadShared(folder_.File(name));
    const int number = GenerationOf(bytes);
    ASSERT_GE(number, kFirstGeneration) << ToUtf8(name) << ", " << bytes.size() << " bytes";
    std::string expected = first_[name];
    const std::string first = std::to_string(kFirstGeneration);
    for (size_t at = expected.find(first); at != std::string::npos; at = expected.find(first, at + 1))
      expected.replace(at, first.size(), std::to_string(number));
    ASSERT_TRUE(bytes == expected) << ToUtf8(name) << " is torn, " << bytes.size() << " bytes";
    ++reads_;
  }

  // Two writers at once, read meanwhile for so long, then killed.
  void Round(int round, std::chrono::milliseconds time) {
    const auto start = [&](int first) {
      return std::vector<std::string>{testing::ShellPath(std::getenv("VELMORA_WRITER")),
                                      testing::AsArgument(folder_.Path()),
                                      std::to_string(kFirstGeneration + round * 20'000 + first), "2"};
    };
    testing::BackgroundCommand odd(start(1), output_.File(L"odd.txt"));
    testing::BackgroundCommand even(start(2), output_.File(L"even.txt"));
    ASSERT_TRUE(odd.Process() != 0 && even.Process() != 0);
    const auto end = std::chrono::steady_clock::now() + time;
    for (size_t at = 0; std::chrono::steady_clock::now() < end && !HasFatalFailure(); ++at)
      ExpectWhole(names_[at % names_.size()]);
    odd.Kill();
    even.Kill();
  }

  const std::vector<CString> names_ = GenerationFiles();
  TemporaryFolder folder_;
  TemporaryFolder output_;
  RecordedMessages messages_;
  std::map<CString, std::string> first_;
  int reads_ = 0;
};

TEST_F(KilledWriters, LeaveEveryFileWhole) {
  std::mt19937 random(20);
  // Under an emulator a program takes longer to start.
  const char* const longest = std::getenv("VELMORA_LONGEST_LIFE_MS");
  std::uniform_int_distribution<int> milliseconds(0, longest == nullptr ? 60 : std::atoi(longest));
  int torn_off = 0;
  for (int round = 1; round <= kRounds; ++round) {
    ASSERT_NO_FATAL_FAILURE(Round(round, std::chrono::milliseconds(milliseconds(random))))
        << "round " << round;
    for (const CString& name : names_) ASSERT_NO_FATAL_FAILURE(ExpectWhole(name)) << "round " << round;
    ASSERT_EQ(ReadBytes(folder_.File(L"FAILED")), "");
    torn_off += NamesIn(folder_.Path()).size() > names_.size() ? 1 : 0;
  }
  std::cout << kRounds << " kills of two writers, " << torn_off << " in the middle of a write; " << reads_
            << " reads, every one of a whole file\n";
  EXPECT_GT(torn_off, 0);
  // What the killed ones left behind goes with the next write.
  EXPECT_TRUE(WriteGeneration(folder_.Path(), kLastGeneration));
  std::vector<CString> expected = names_;
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(NamesIn(folder_.Path()), expected);
}

}  // namespace
}  // namespace velmora
