#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/test_files.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

class Replacement : public ::testing::Test {
 protected:
  // What the folder holds besides the target while it is being replaced.
  CString NameOfNewFile(const CString& target) {
    FileReplacement file;
    EXPECT_TRUE(file.Begin(target));
    for (const CString& name : NamesIn(folder_.Path()))
      if (folder_.File(name) != target) return name;
    return {};
  }
  void ExpectOnly(const CString& name) { EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{name}); }

  TemporaryFolder folder_;
  CString path_ = folder_.File(L"A.TXT");
};

TEST_F(Replacement, OldContentStaysUntilCommit) {
  WriteBytes(path_, "old");
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_));
  ASSERT_TRUE(file.Write(std::string(1'000'000, 'n')));
  EXPECT_EQ(ReadBytes(path_), "old");
  ASSERT_TRUE(file.Commit());
  EXPECT_EQ(ReadBytes(path_), std::string(1'000'000, 'n'));
  ExpectOnly(L"A.TXT");
  EXPECT_FALSE(file.Write("more"));
  EXPECT_FALSE(file.Commit());
}

TEST_F(Replacement, PiecesOfAnySizeComeInOrder) {
  std::string all;
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_));
  for (size_t size : {1U, 65'535U, 1U, 65'536U, 0U, 65'537U, 7U, 300'000U, 40'000U, 40'000U}) {
    const std::string piece(size, static_cast<char>('a' + all.size() % 26));
    all += piece;
    ASSERT_TRUE(file.Write(piece));
  }
  ASSERT_TRUE(file.Commit());
  EXPECT_TRUE(ReadBytes(path_) == all);
}

TEST_F(Replacement, AbandonedLeavesNoTrace) {
  for (const bool exists : {false, true}) {
    if (exists) WriteBytes(path_, "old");
    const std::vector<CString> before = NamesIn(folder_.Path());
    {
      FileReplacement file;
      ASSERT_TRUE(file.Begin(path_));
      ASSERT_TRUE(file.Write(std::string(100'000, 'n')));
    }
    FileReplacement file;
    ASSERT_TRUE(file.Begin(path_));
    file.Abandon();
    EXPECT_FALSE(file.Commit());
    EXPECT_EQ(NamesIn(folder_.Path()), before);
    EXPECT_EQ(ReadBytes(path_), exists ? "old" : "");
  }
}

TEST_F(Replacement, RefusesWhatCannotBeWritten) {
  const CString guarded = folder_.File(L"GUARDED.TXT");
  WriteBytes(guarded, "old");
  SetWriteProtected(guarded, true);
  ASSERT_TRUE(MakeFolder(folder_.File(L"FOLDER")));
  const std::vector<CString> before = NamesIn(folder_.Path());
  const CString targets[] = {guarded,
                             folder_.Path(),
                             folder_.File(L"FOLDER"),
                             folder_.File(L"FOLDER\\"),
                             folder_.File(L"missing\\A.TXT"),
                             folder_.File(CString(L"A\0B", 3)),
                             L""};
  for (const CString& target : targets) {
    FileReplacement file;
    EXPECT_FALSE(file.Begin(target)) << ToUtf8(target);
    EXPECT_FALSE(file.Write("x"));
    EXPECT_FALSE(file.Commit());
  }
  EXPECT_EQ(NamesIn(folder_.Path()), before);
  EXPECT_EQ(ReadBytes(guarded), "old");
}

TEST_F(Replacement, TargetThatBecomesProtectedStays) {
  WriteBytes(path_, "old");
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_));
  ASSERT_TRUE(file.Write("new"));
  SetWriteProtected(path_, true);
  EXPECT_FALSE(file.Commit());
  EXPECT_EQ(ReadBytes(path_), "old");
  ExpectOnly(L"A.TXT");
}

TEST_F(Replacement, LeftoverIsOverwritten) {
  // The long name leaves no room for a suffix.
  for (const CString& name : {CString(L"A.TXT"), CString(L'n', 250)}) {
    const CString target = folder_.File(name);
    const CString leftover = folder_.File(NameOfNewFile(target));
    WriteBytes(leftover, "left by a program that was killed, and longer");
    ASSERT_TRUE(ReplaceFileContent(target, "new"));
    EXPECT_EQ(ReadBytes(target), "new");
    ExpectOnly(name);
    ASSERT_TRUE(RemoveWholeFile(target));
  }
}

TEST_F(Replacement, LeftoverThatIsNoFileBlocks) {
  WriteBytes(path_, "old");
  ASSERT_TRUE(MakeFolder(folder_.File(NameOfNewFile(path_))));
  EXPECT_FALSE(ReplaceFileContent(path_, "new"));
  EXPECT_EQ(ReadBytes(path_), "old");
}

TEST_F(Replacement, TemporaryOfTheCallersChoice) {
  WriteBytes(path_, "old");
  const CString temporary = folder_.File(L"A.tmp");
  WriteBytes(temporary, "of another program");
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_, temporary));
  EXPECT_EQ(NamesIn(folder_.Path()), (std::vector<CString>{L"A.TXT", L"A.tmp"}));
  ASSERT_TRUE(file.Write("new"));
  ASSERT_TRUE(file.Commit());
  EXPECT_EQ(ReadBytes(path_), "new");
  ExpectOnly(L"A.TXT");
}

TEST_F(Replacement, TemporaryThatIsTheTargetDoesNotEndIt) {
  WriteBytes(path_, "old");
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_, folder_.File(L"a.txt")));
  EXPECT_EQ(ReadBytes(path_), "old");
  file.Abandon();
  EXPECT_EQ(ReadBytes(path_), "old");
}

TEST_F(Replacement, PassesOnWithTheObject) {
  FileReplacement first;
  ASSERT_TRUE(first.Begin(path_));
  FileReplacement second(std::move(first));
  ASSERT_TRUE(second.Write("new"));
  EXPECT_TRUE(second.Commit());
  EXPECT_EQ(ReadBytes(path_), "new");
}

// Each turn adds one to the number in the file; a turn that overlapped another would lose one. Whoever
// reads meanwhile sees a whole content: the number in digits, then as many letters.
TEST_F(Replacement, WritersTakeTurnsAndReadersSeeWholeFiles) {
  constexpr int kWriters = 4;
  constexpr int kTurns = 20;
  const auto content = [](int number) {
    return std::to_string(number) + std::string(static_cast<size_t>(number) * 1000, 'x');
  };
  const auto read = [&] {
    std::string bytes(200'000, '\0');
    InputFile file;
    EXPECT_TRUE(file.Open(path_));
    size_t length = 0;
    while (const std::int64_t count = file.Read(std::span(bytes).subspan(length)))
      length += static_cast<size_t>(count);
    bytes.resize(length);
    return bytes;
  };
  WriteBytes(path_, content(0));
  std::atomic<bool> done = false;
  std::thread reader([&] {
    while (!done) {
      const std::string bytes = read();
      ASSERT_TRUE(bytes == content(std::stoi(bytes)));
    }
  });
  std::vector<std::thread> writers;
  for (int i = 0; i < kWriters; ++i) {
    writers.emplace_back([&] {
      for (int turn = 0; turn < kTurns; ++turn) {
        FileReplacement file;
        ASSERT_TRUE(file.Begin(path_));
        ASSERT_TRUE(file.Write(content(std::stoi(read()) + 1)));
        ASSERT_TRUE(file.Commit());
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  done = true;
  reader.join();
  EXPECT_EQ(std::stoi(read()), kWriters * kTurns);
  ExpectOnly(L"A.TXT");
}

}  // namespace
}  // namespace velmora
