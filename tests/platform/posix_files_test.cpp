// Links, permission bits, pipes, time zones and the user's data folder of POSIX systems.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <string>

#include "tests/support/environment_variable.h"
#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"

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
  CString path_ = folder_.File(L"A");
};

TEST_F(PosixFiles, LinkKeepsBeingOne) {
  WriteBytes(path_, "old");
  ASSERT_TRUE(MakeFolder(folder_.File(L"sub")));
  const char* const links[][2] = {{"../A", "sub/one"}, {"sub/one", "two"}, {"sub/made", "new"}, {"x", "x"}};
  for (const auto& [target, name] : links) ASSERT_EQ(symlink(target, Native(FromUtf8(name)).c_str()), 0);
  EXPECT_TRUE(ReplaceFileContent(folder_.File(L"two"), "new"));
  EXPECT_EQ(ReadBytes(path_), "new");
  EXPECT_TRUE(ReplaceFileContent(folder_.File(L"new"), "made"));
  EXPECT_EQ(ReadBytes(folder_.File(L"sub\\made")), "made");
  EXPECT_FALSE(ReplaceFileContent(folder_.File(L"x"), "x"));
  for (const auto& [target, name] : links) EXPECT_TRUE(std::filesystem::is_symlink(Native(FromUtf8(name))));
}

TEST_F(PosixFiles, PermissionsStay) {
  const mode_t mask = umask(022);
  for (const mode_t mode : {0600U, 0666U, 0755U}) {
    WriteBytes(path_, "old");
    ASSERT_EQ(chmod(Native(L"A").c_str(), mode), 0);
    EXPECT_TRUE(ReplaceFileContent(path_, "new"));
    EXPECT_EQ(ModeOf(L"A"), mode);
    // Nor can others read the new file before it takes the name.
    FileReplacement file;
    ASSERT_TRUE(file.Begin(path_, folder_.File(L"A.tmp")));
    EXPECT_EQ(ModeOf(L"A.tmp"), mode);
  }
  EXPECT_TRUE(ReplaceFileContent(folder_.File(L"new"), "new"));
  EXPECT_EQ(ModeOf(L"new"), 0644U);
  EXPECT_TRUE(CopyWholeFile(path_, folder_.File(L"program"), true));
  EXPECT_EQ(ModeOf(L"program"), 0755U);
  umask(mask);
}

TEST_F(PosixFiles, PipeIsNotReplaced) {
  const CString pipe = folder_.File(L"pipe");
  ASSERT_EQ(mkfifo(Native(L"pipe").c_str(), 0600), 0);
  EXPECT_FALSE(ReplaceFileContent(pipe, "x"));
  EXPECT_FALSE(CopyWholeFile(pipe, folder_.File(L"copy"), false));
  EXPECT_EQ(GetFileStatus(pipe)->kind, FileKind::kOther);
  EXPECT_FALSE(InputFile().Open(pipe, InputFile::Accept::kRegularFiles));
  EXPECT_TRUE(ReadProfile(L"S", L"k", pipe).IsEmpty());
  EXPECT_FALSE(WriteProfile(L"S", L"k", L"v", pipe));
}

TEST_F(PosixFiles, NewFileThatSomebodyExchangedTakesNoName) {
  WriteBytes(path_, "old");
  FileReplacement file;
  ASSERT_TRUE(file.Begin(path_, folder_.File(L"A.tmp")));
  ASSERT_TRUE(RemoveWholeFile(folder_.File(L"A.tmp")));
  WriteBytes(folder_.File(L"A.tmp"), "somebody's");
  EXPECT_FALSE(file.Commit());
  EXPECT_EQ(ReadBytes(path_), "old");
  EXPECT_EQ(ReadBytes(folder_.File(L"A.tmp")), "somebody's");
}

TEST_F(PosixFiles, LocalTimeIsThatOfTheFilesOwnDay) {
  const EnvironmentVariable zone(L"TZ", L"CET-1CEST,M3.5.0,M10.5.0");
  tzset();
  WriteBytes(path_, "");
  const struct {
    std::time_t seconds;
    int month, day, hour;
  } cases[] = {{1'705'319'999, 1, 15, 12}, {1'721'044'799, 7, 15, 13}, {1'704'063'599, 12, 31, 23}};
  for (const auto& each : cases) {
    const timespec times[2] = {{each.seconds, 0}, {each.seconds, 123'456'789}};
    ASSERT_EQ(utimensat(AT_FDCWD, Native(L"A").c_str(), times, 0), 0);
    const FileStatus status = *GetFileStatus(path_);
    const FileTime& local = status.modified_local;
    EXPECT_EQ((std::array{local.month, local.day, local.hour, local.second}),
              (std::array{each.month, each.day, each.hour, 59}));
    EXPECT_EQ(status.modified, (each.seconds + 11'644'473'600) * 10'000'000 + 1'234'567);
  }
}

TEST_F(PosixFiles, ProfilesWithoutAFolderAreInTheUsersData) {
  const EnvironmentVariable data(L"XDG_DATA_HOME", folder_.File(L"new\\data"));
  EXPECT_TRUE(ReadProfile(L"S", L"k", L"Velmora.ini").IsEmpty());
  EXPECT_TRUE(NamesIn(folder_.Path()).empty());
  EXPECT_TRUE(WriteProfile(L"S", L"k", L"v", L"Velmora.ini"));
  EXPECT_EQ(NamesIn(folder_.File(L"new\\data\\velmora")), std::vector<CString>{L"Velmora.ini"});
  EXPECT_EQ(ReadProfile(L"S", L"k", L"Velmora.ini"), L"v");
}

}  // namespace
}  // namespace velmora
