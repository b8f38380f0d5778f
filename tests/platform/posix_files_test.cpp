// What the files of this system have and others do not: links, permission bits, pipes, processes that
// end at any moment.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"

namespace velmora {
namespace {

class PosixFiles : public ::testing::Test {
 protected:
  std::string Native(const CString& name) const { return PathForDisplay(folder_.File(name)); }
  mode_t ModeOf(const CString& name) const {
    struct stat status {};
    EXPECT_EQ(stat(Native(name).c_str(), &status), 0);
    return status.st_mode & 07777;
  }

  TemporaryFolder folder_;
};

TEST_F(PosixFiles, LinkKeepsBeingOne) {
  ASSERT_TRUE(MakeFolder(folder_.File(L"sub")));
  WriteBytes(folder_.File(L"sub\\target"), "old");
  ASSERT_EQ(symlink("sub/target", Native(L"one").c_str()), 0);
  ASSERT_EQ(symlink("one", Native(L"two").c_str()), 0);
  ASSERT_EQ(symlink("sub/made", Native(L"dangling").c_str()), 0);
  ASSERT_EQ(symlink("round", Native(L"round").c_str()), 0);
  EXPECT_TRUE(ReplaceFileContent(folder_.File(L"two"), "new"));
  EXPECT_EQ(ReadBytes(folder_.File(L"sub\\target")), "new");
  EXPECT_TRUE(ReplaceFileContent(folder_.File(L"dangling"), "made"));
  EXPECT_EQ(ReadBytes(folder_.File(L"sub\\made")), "made");
  EXPECT_FALSE(ReplaceFileContent(folder_.File(L"round"), "x"));
  for (const wchar_t* link : {L"one", L"two", L"dangling"}) {
    struct stat status {};
    ASSERT_EQ(lstat(Native(link).c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
  }
}

TEST_F(PosixFiles, PermissionsStay) {
  const mode_t mask = umask(022);
  for (const mode_t mode : {0600U, 0666U, 0640U, 0755U}) {
    WriteBytes(folder_.File(L"A"), "old");
    ASSERT_EQ(chmod(Native(L"A").c_str(), mode), 0);
    EXPECT_TRUE(ReplaceFileContent(folder_.File(L"A"), "new"));
    EXPECT_EQ(ModeOf(L"A"), mode);
    // Nor can others read the new file before it takes the name.
    FileReplacement file;
    ASSERT_TRUE(file.Begin(folder_.File(L"A"), folder_.File(L"A.tmp")));
    EXPECT_EQ(ModeOf(L"A.tmp"), mode);
  }
  EXPECT_TRUE(ReplaceFileContent(folder_.File(L"new"), "new"));
  EXPECT_EQ(ModeOf(L"new"), 0644U);
  EXPECT_TRUE(CopyWholeFile(folder_.File(L"A"), folder_.File(L"program"), true));
  EXPECT_EQ(ModeOf(L"program"), 0755U);
  umask(mask);
}

TEST_F(PosixFiles, PipeIsReadButNotReplaced) {
  ASSERT_EQ(mkfifo(Native(L"pipe").c_str(), 0600), 0);
  EXPECT_FALSE(ReplaceFileContent(folder_.File(L"pipe"), "x"));
  TextWriter writer;
  EXPECT_FALSE(writer.Begin(folder_.File(L"pipe")));
  EXPECT_FALSE(CopyWholeFile(folder_.File(L"pipe"), folder_.File(L"copy"), false));
  EXPECT_EQ(GetFileStatus(folder_.File(L"pipe"))->kind, FileKind::kOther);

  // What is written at once comes at once: lines and units end anywhere in it.
  const struct {
    std::string first, second;
  } cases[] = {{"a\nb", "c\n"},
               {{"\xFF\xFE"
                 "a\0\n",
                 5},
                {"\0b\0c\0\n\0", 7}}};
  for (const auto& each : cases) {
    const int both_ends = open(Native(L"pipe").c_str(), O_RDWR);  // so that the reader need not wait
    ASSERT_EQ(write(both_ends, each.first.data(), each.first.size()), std::ssize(each.first));
    TextReader reader;
    ASSERT_TRUE(reader.Open(folder_.File(L"pipe")));
    ASSERT_EQ(write(both_ends, each.second.data(), each.second.size()), std::ssize(each.second));
    close(both_ends);
    CString line;
    EXPECT_TRUE(reader.ReadLine(&line));
    EXPECT_EQ(line, L"a");
    EXPECT_TRUE(reader.ReadLine(&line));
    EXPECT_EQ(line, L"bc");
    EXPECT_FALSE(reader.ReadLine(&line));
    EXPECT_FALSE(reader.Failed());
  }
}

TEST_F(PosixFiles, ReadErrorIsNoEnd) {
  // Nothing is mapped at the start of a process's memory: it opens, and fails to read.
  TextReader reader;
  EXPECT_FALSE(reader.Open(L"\\proc\\self\\mem"));
  EXPECT_TRUE(reader.Failed());
}

TEST_F(PosixFiles, FullDiskLeavesTheOldFile) {
  rlimit old{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
  WriteBytes(folder_.File(L"A"), "old");
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small = {100'000, old.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const bool replaced = ReplaceFileContent(folder_.File(L"A"), std::string(300'000, 'n'));
  FileReplacement late;  // only what Commit itself writes finds no room
  const bool accepted = late.Begin(folder_.File(L"A")) && late.Write(std::string(60'000, 'n')) &&
                        late.Write(std::string(60'000, 'n'));
  const bool committed = late.Commit();
  TextWriter writer;
  const bool begun = writer.Begin(folder_.File(L"A"));
  for (int i = 0; i < 30'000; ++i) writer.Write(L"0123456789\n");
  const bool written = writer.Commit();
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(replaced);
  EXPECT_TRUE(accepted);
  EXPECT_FALSE(committed);
  EXPECT_TRUE(begun);
  EXPECT_FALSE(written);
  EXPECT_EQ(ReadBytes(folder_.File(L"A")), "old");
  EXPECT_EQ(NamesIn(folder_.Path()).size(), 1U);
}

TEST_F(PosixFiles, NewFileThatSomebodyExchangedTakesNoName) {
  WriteBytes(folder_.File(L"A"), "old");
  FileReplacement file;
  ASSERT_TRUE(file.Begin(folder_.File(L"A"), folder_.File(L"A.tmp")));
  ASSERT_TRUE(file.Write("new"));
  ASSERT_TRUE(RemoveWholeFile(folder_.File(L"A.tmp")));
  WriteBytes(folder_.File(L"A.tmp"), "somebody's");
  EXPECT_FALSE(file.Commit());
  EXPECT_EQ(ReadBytes(folder_.File(L"A")), "old");
  EXPECT_EQ(ReadBytes(folder_.File(L"A.tmp")), "somebody's");
}

TEST_F(PosixFiles, LocalTimeIsThatOfTheFilesOwnDay) {
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  tzset();
  WriteBytes(folder_.File(L"A"), "");
  const struct {
    std::time_t seconds;
    int month, day, hour;
  } cases[] = {{1'705'319'999, 1, 15, 12}, {1'721'044'799, 7, 15, 13}, {1'704'063'599, 12, 31, 23}};
  for (const auto& each : cases) {
    const timespec times[2] = {{each.seconds, 0}, {each.seconds, 123'456'789}};
    ASSERT_EQ(utimensat(AT_FDCWD, Native(L"A").c_str(), times, 0), 0);
    const FileStatus status = *GetFileStatus(folder_.File(L"A"));
    EXPECT_EQ(status.modified_local.month, each.month);
    EXPECT_EQ(status.modified_local.day, each.day);
    EXPECT_EQ(status.modified_local.hour, each.hour);
    EXPECT_EQ(status.modified_local.second, 59);
    EXPECT_EQ(status.modified, (each.seconds + 11'644'473'600) * 10'000'000 + 1'234'567);
  }
  unsetenv("TZ");
  tzset();
}

// Starts a process that replaces the file again and again, each time with one letter in all its length.
pid_t StartWriter(const CString& path, char letter) {
  const pid_t process = fork();
  if (process == 0) {
    for (;;)
      if (!ReplaceFileContent(path, std::string(300'000, letter))) _exit(1);
  }
  return process;
}

TEST_F(PosixFiles, KilledWritersLeaveAWholeFile) {
  const CString path = folder_.File(L"A");
  WriteBytes(path, std::string(300'000, 'a'));
  unsigned seed = 1;
  for (int round = 0; round < 20; ++round) {
    const pid_t writers[] = {StartWriter(path, 'b'), StartWriter(path, 'c'), StartWriter(path, 'd')};
    seed = seed * 1'103'515'245U + 12'345U;
    usleep(1000 + seed / 65'536 % 20'000);
    for (const pid_t writer : writers) {
      kill(writer, SIGKILL);
      int status = 0;
      waitpid(writer, &status, 0);
      EXPECT_TRUE(WIFSIGNALED(status));  // none failed before
      const std::string bytes = ReadBytes(path);
      ASSERT_EQ(bytes.size(), 300'000U);
      EXPECT_EQ(bytes.find_first_not_of(bytes[0]), std::string::npos);
    }
    EXPECT_TRUE(ReplaceFileContent(path, std::string(300'000, 'a')));
    EXPECT_EQ(NamesIn(folder_.Path()).size(), 1U);
  }
}

}  // namespace
}  // namespace velmora
