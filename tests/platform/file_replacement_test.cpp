#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/test_files.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

// What the folder holds besides the file while that is being replaced.
CString NameOfNewFile(const TemporaryFolder& folder, const CString& name) {
  FileReplacement file;
  EXPECT_TRUE(file.Begin(folder.File(name)));
  const std::vector<CString> names = NamesIn(folder.Path());
  const auto found = std::find_if(names.begin(), names.end(), [&](const CString& n) { return n != name; });
  return found == names.end() ? CString() : *found;
}

class Replacement : public ::testing::Test {
 protected:
  Replacement() { WriteBytes(path_, "old"); }
  void ExpectOnly(const std::string& bytes) {
    EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"A.TXT"});
    EXPECT_TRUE(ReadBytes(path_) == bytes);
  }

  TemporaryFolder folder_;
  CString path_ = folder_.File(L"A.TXT");
};

TEST_F(Replacement, OldContentStaysUntilCommit) {
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_));
  std::string all;
  for (size_t size : {1U, 65'535U, 1U, 65'536U, 0U, 65'537U, 7U, 65'536U, 7U, 300'000U, 40'000U, 40'000U}) {
    const std::string piece(size, static_cast<char>('a' + all.size() % 26));
    all += piece;
    ASSERT_TRUE(file.Write(piece));
  }
  EXPECT_EQ(ReadBytes(path_), "old");
  ASSERT_TRUE(file.Commit());
  ExpectOnly(all);
  EXPECT_FALSE(file.Write("more"));
  EXPECT_FALSE(file.Commit());
  {
    FileReplacement abandoned;
    ASSERT_TRUE(abandoned.Begin(path_));
    ASSERT_TRUE(abandoned.Write(std::string(100'000, 'n')));
  }
  ExpectOnly(all);
}

TEST_F(Replacement, RefusesWhatCannotBeWritten) {
  FileReplacement begun_before;
  ASSERT_TRUE(begun_before.Begin(path_));
  ASSERT_TRUE(begun_before.Write("new"));
  SetWriteProtected(path_, true);
  EXPECT_FALSE(begun_before.Commit());
  ASSERT_TRUE(MakeFolder(folder_.File(L"FOLDER")));
  for (const CString& target : {path_, folder_.File(L"FOLDER"), folder_.File(L"FOLDER\\"), CString(),
                                folder_.File(L"missing\\A.TXT"), folder_.File(CString(L"A\0B", 3))}) {
    FileReplacement file;
    EXPECT_FALSE(file.Begin(target)) << ToUtf8(target);
    EXPECT_FALSE(file.Write("x"));
    EXPECT_FALSE(file.Commit());
  }
  EXPECT_EQ(NamesIn(folder_.Path()), (std::vector<CString>{L"A.TXT", L"FOLDER"}));
  EXPECT_EQ(ReadBytes(path_), "old");
}

TEST(LeftoverOfAReplacement, IsOverwrittenUnlessItIsNoFile) {
  // The long name leaves no room for a suffix.
  for (const CString& name : {CString(L"A.TXT"), CString(L'n', 250)}) {
    const TemporaryFolder folder;
    const CString target = folder.File(name);
    ASSERT_TRUE(ReplaceFileContent(target, "old"));
    const CString leftover = folder.File(NameOfNewFile(folder, name));
    WriteBytes(leftover, "left by a program that was killed, and longer");
    ASSERT_TRUE(ReplaceFileContent(target, "new"));
    EXPECT_EQ(ReadBytes(target), "new");
    EXPECT_EQ(NamesIn(folder.Path()), std::vector<CString>{name});
  }
  const TemporaryFolder folder;
  ASSERT_TRUE(MakeFolder(folder.File(NameOfNewFile(folder, L"A"))));
  EXPECT_FALSE(ReplaceFileContent(folder.File(L"A"), "new"));
}

TEST_F(Replacement, TemporaryOfTheCallersChoice) {
  WriteBytes(folder_.File(L"A.tmp"), "of another program");
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_, folder_.File(L"A.tmp")));
  EXPECT_EQ(NamesIn(folder_.Path()), (std::vector<CString>{L"A.TXT", L"A.tmp"}));
  ASSERT_TRUE(file.Write("new"));
  ASSERT_TRUE(file.Commit());
  ExpectOnly("new");
  // The target's own name does not end it.
  ASSERT_TRUE(file.Begin(path_, folder_.File(L"a.txt")));
  file.Abandon();
  ExpectOnly("new");
}

TEST_F(Replacement, AThreadDoesNotWaitForItself) {
  FileReplacement first, second;
  ASSERT_TRUE(first.Begin(path_));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(second.Begin(path_));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  first.Abandon();
  EXPECT_TRUE(second.Begin(path_));
}

// Each turn adds one to the number in the file; a turn that overlapped another would lose one.
TEST_F(Replacement, WritersTakeTurns) {
  constexpr int kWriters = 4;
  constexpr int kTurns = 20;
  WriteBytes(path_, "0");
  const auto take_turns = [&] {
    for (int turn = 0; turn < kTurns; ++turn) {
      FileReplacement file;
      ASSERT_TRUE(file.Begin(path_));
      // On Windows the writer before may not have closed it yet, which InputFile waits for.
      InputFile old;
      std::array<char, 8> number{};
      ASSERT_TRUE(old.Open(path_));
      ASSERT_GT(old.Read(number), 0);
      old.Close();
      ASSERT_TRUE(file.Write(std::to_string(std::stoi(number.data()) + 1)));
      ASSERT_TRUE(file.Commit());
    }
  };
  std::vector<std::thread> writers;
  for (int i = 0; i < kWriters; ++i) writers.emplace_back(take_turns);
  for (std::thread& writer : writers) writer.join();
  ExpectOnly(std::to_string(kWriters * kTurns));
}

}  // namespace
}  // namespace velmora
