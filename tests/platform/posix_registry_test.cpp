// The registry's database: when it is made, what it refuses, and many programs at once.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/platform/posix_main.h"
#include "tests/support/print_text.h"
#include "tests/support/test_registry.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

const HKEY kUser = HKEY_CURRENT_USER;

class RegistryDatabaseFile : public TestRegistry {
 protected:
  CString File() const { return folder_.File(L"registry.db"); }
  std::string Native() const { return PathForDisplay(File()); }

  // What every call answers while the file is such.
  static void ExpectRefusal(int result, bool of_the_root_too = true) {
    RegistryKey key;
    EXPECT_EQ(key.Open(kUser, L"A", KEY_READ), result);
    EXPECT_EQ(key.Open(kUser, L"", KEY_READ), of_the_root_too ? result : kRegistryDone);
    EXPECT_EQ(key.Create(kUser, L"A", KEY_READ), result);
    EXPECT_EQ(DeleteRegistryKey(kUser, L"A"), result);
    EXPECT_FALSE(SetRegistryText(kUser, L"A", L"v", L"x"));
  }
  // The first column of what another program gets from the file.
  std::string Ask(const char* sql) const {
    sqlite3* database = nullptr;
    std::string answer;
    EXPECT_EQ(sqlite3_open(Native().c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(
                  database, sql,
                  [](void* to, int, char** text, char**) {
                    return static_cast<std::string*>(to)->append(*text == nullptr ? "" : *text), 0;
                  },
                  &answer, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    return answer;
  }
  void ExpectWhole() const { EXPECT_EQ(Ask("PRAGMA integrity_check"), "ok"); }
};

TEST_F(RegistryDatabaseFile, OnlyAWriteMakesIt) {
  const EnvironmentVariable none(L"VELMORA_REGISTRY", std::nullopt);
  const EnvironmentVariable data(L"XDG_DATA_HOME", folder_.File(L"new\\data"));
  RegistryKey key;
  EXPECT_EQ(key.Open(kUser, L"A", KEY_ALL_ACCESS), kRegistryNotFound);
  EXPECT_EQ(DeleteRegistryKey(kUser, L"A"), kRegistryNotFound);
  EXPECT_EQ(key.Open(kUser, L"", KEY_ALL_ACCESS), kRegistryDone);
  EXPECT_EQ(key.Describe(L"v", nullptr, nullptr), kRegistryNotFound);
  EXPECT_EQ(key.Delete(L"v"), kRegistryNotFound);
  unsigned keys = 1;
  unsigned values = 1;
  EXPECT_EQ(key.Count(&keys, &values), kRegistryDone);
  EXPECT_EQ(keys + values, 0U);
  EXPECT_EQ(key.Flush(), kRegistryDone);
  EXPECT_TRUE(NamesIn(folder_.Path()).empty());
  EXPECT_EQ(key.Write(L"v", REG_SZ, RegistryBytes(L"x")), kRegistryDone);
  key.Close();
  EXPECT_EQ(NamesIn(folder_.File(L"new\\data\\velmora")), std::vector<CString>{L"registry.db"});
  EXPECT_EQ(TextOf(kUser, L"", L"v"), L"x");
}

TEST_F(RegistryDatabaseFile, AnEmptyFileCountsAsNone) {
  WriteBytes(File(), "");
  EXPECT_EQ(RegistryKey().Open(kUser, L"A", KEY_READ), kRegistryNotFound);
  EXPECT_EQ(ReadBytes(File()), "");
  EXPECT_TRUE(SetRegistryText(kUser, L"A", L"v", L"x"));
  EXPECT_EQ(TextOf(kUser, L"A", L"v"), L"x");
}

TEST_F(RegistryDatabaseFile, TheLogOfAFileThatIsGoneIsNotTakenOver) {
  ASSERT_TRUE(SetRegistryText(kUser, L"A", L"v", L"old"));
  RegistryKey key;
  ASSERT_EQ(key.Open(kUser, L"A", KEY_ALL_ACCESS), kRegistryDone);
  ASSERT_EQ(key.Write(L"w", REG_SZ, "ab"), kRegistryDone);
  const std::string log = ReadBytes(File() + L"-wal");
  ASSERT_FALSE(log.empty());
  key.Close();
  ASSERT_TRUE(RemoveWholeFile(File()));
  WriteBytes(File() + L"-wal", log);
  ASSERT_TRUE(SetRegistryText(kUser, L"B", L"v", L"new"));
  EXPECT_EQ(RegistryKey().Open(kUser, L"A", KEY_READ), kRegistryNotFound);
  EXPECT_EQ(TextOf(kUser, L"B", L"v"), L"new");
  EXPECT_EQ(TextOf(kUser, L"B", L"w"), L"?");
  ExpectWhole();
}

TEST_F(RegistryDatabaseFile, WhatIsNoDatabaseIsLeftAlone) {
  ASSERT_TRUE(SetRegistryText(kUser, L"A", L"v", L"x"));
  const std::string good = ReadBytes(File());
  std::string torn = good.substr(0, 4096 * 2);
  std::string other_program = good;
  other_program[68] = 'X';
  std::string newer = good;
  newer[63] = 2;
  std::string garbled = good;
  for (size_t i = 100; i < garbled.size(); ++i) garbled[i] = static_cast<char>(i * 7);
  for (const std::string& bytes : {std::string("[S]\r\nk=v\r\n"), std::string(5000, '\0'), std::string("S"),
                                   good.substr(0, 50), other_program, newer, garbled}) {
    WriteBytes(File(), bytes);
    ExpectRefusal(kRegistryDamaged);
    EXPECT_EQ(ReadBytes(File()), bytes);
  }
  WriteBytes(File(), torn);
  EXPECT_FALSE(SetRegistryText(kUser, L"A", L"v", L"y"));
}

// Nothing that a file says makes us run or hang: a damaged byte gives a right answer or a failure.
TEST_F(RegistryDatabaseFile, DamagedBytesDoNoHarm) {
  for (int i = 0; i < 20; ++i) {
    CString name;
    name.Format(L"A\\%d", i);
    ASSERT_TRUE(SetRegistryText(kUser, name, L"v", CString(L'x', 200)));
  }
  const std::string good = ReadBytes(File());
  unsigned seed = 7;
  for (int round = 0; round < 60; ++round) {
    std::string bytes = good;
    for (int i = 0; i < 1 + round % 20; ++i) {
      seed = seed * 1'103'515'245U + 12'345U;
      bytes[100 + (seed >> 8) % (bytes.size() - 100)] = static_cast<char>(seed >> 3);
    }
    WriteBytes(File(), bytes);
    RegistryKey key;
    std::vector<CString> names;
    std::vector<StoredValue> values;
    if (key.Open(kUser, L"A", KEY_READ) == kRegistryDone) key.ListKeys(&names);
    if (key.Open(kUser, L"A\\7", KEY_READ) == kRegistryDone) key.ListValues(&values);
    key.Close();
    SetRegistryText(kUser, L"A\\7", L"v", L"y");
    DeleteRegistryKey(kUser, L"A\\8");
  }
}

TEST_F(RegistryDatabaseFile, NothingInTheFileIsRun) {
  ASSERT_TRUE(SetRegistryText(kUser, L"A", L"v", L"x"));
  Ask("CREATE TRIGGER t AFTER INSERT ON registry_value BEGIN DELETE FROM registry_key; END");
  EXPECT_TRUE(SetRegistryText(kUser, L"A", L"w", L"y"));
  EXPECT_EQ(TextOf(kUser, L"A", L"w"), L"y");
  Ask("ALTER TABLE registry_key RENAME TO other; CREATE VIEW registry_key AS SELECT * FROM other");
  ExpectRefusal(kRegistryDamaged, /*of_the_root_too=*/false);
}

TEST_F(RegistryDatabaseFile, FoldersPipesAndMissingPermission) {
  ASSERT_TRUE(MakeFolder(File()));
  ExpectRefusal(kRegistryCannotOpen);
  ASSERT_TRUE(RemoveEmptyFolder(File()));
  ASSERT_EQ(mkfifo(Native().c_str(), 0600), 0);
  ExpectRefusal(kRegistryCannotOpen);
  {
    WriteBytes(folder_.File(L"file"), "x");
    const EnvironmentVariable inside(L"VELMORA_REGISTRY", folder_.File(L"file\\registry.db"));
    EXPECT_EQ(RegistryKey().Create(kUser, L"A", KEY_READ), kRegistryCannotWrite);
  }
  const EnvironmentVariable nowhere(L"VELMORA_REGISTRY", CString(L"\\proc\\velmora\\registry.db"));
  EXPECT_EQ(RegistryKey().Open(kUser, L"A", KEY_READ), kRegistryNotFound);
  EXPECT_EQ(RegistryKey().Create(kUser, L"A", KEY_READ), kRegistryCannotWrite);
}

TEST_F(RegistryDatabaseFile, AProtectedOneIsReadOnly) {
  ASSERT_TRUE(SetRegistryText(kUser, L"A", L"v", L"x"));
  const std::string folder = PathForDisplay(folder_.Path());
  for (const std::string& guarded : {Native(), folder}) {
    ASSERT_EQ(chmod(guarded.c_str(), guarded == folder ? 0555 : 0444), 0);
    EXPECT_EQ(TextOf(kUser, L"A", L"v"), L"x");
    EXPECT_EQ(RegistryKey().Open(kUser, L"A", KEY_ALL_ACCESS), kRegistryDenied);
    EXPECT_EQ(RegistryKey().Open(kUser, L"A", KEY_SET_VALUE), kRegistryDenied);
    EXPECT_EQ(RegistryKey().Open(kUser, L"", KEY_WRITE), kRegistryDenied);
    EXPECT_EQ(RegistryKey().Create(kUser, L"B", KEY_READ), kRegistryDenied);
    EXPECT_EQ(DeleteRegistryKey(kUser, L"A"), kRegistryDenied);
    EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"registry.db"});
    ASSERT_EQ(chmod(guarded.c_str(), guarded == folder ? 0700 : 0600), 0);
  }
  EXPECT_TRUE(SetRegistryText(kUser, L"A", L"v", L"y"));
}

// Every program has a value of its own and one that all of them write, and starts with no file there.
TEST_F(RegistryDatabaseFile, TwoHundredWritersLoseNothing) {
  constexpr int kWriters = 200;
  std::vector<pid_t> writers;
  for (int i = 0; i < kWriters; ++i) writers.push_back(StartRegistryWriter(std::to_string(i)));
  for (const pid_t writer : writers) {
    int status = -1;
    ASSERT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
  }
  RegistryKey key;
  ASSERT_EQ(key.Open(kUser, kRegistryWritersKey, KEY_READ), kRegistryDone);
  std::vector<StoredValue> values;
  ASSERT_EQ(key.ListValues(&values), kRegistryDone);
  EXPECT_EQ(values.size(), size_t{kWriters * kRegistryWrites + 1});
  std::vector<CString> names;
  ASSERT_EQ(key.ListKeys(&names), kRegistryDone);
  EXPECT_EQ(names.size(), size_t{kWriters});
  key.Close();
  ExpectWhole();
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"registry.db"});
}

// A writer tells through a pipe how far it has come; what it has told must be there.
TEST_F(RegistryDatabaseFile, KilledWritersLeaveItWhole) {
  unsigned seed = 1;
  int told = 0;
  for (int round = 0; round < 40; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t writer = fork();
    if (writer == 0) {
      for (int i = told + 1;; ++i) {
        CString value;
        value.Format(L"%d", i);
        if (!SetRegistryText(kUser, L"A\\" + value, L"v", value) ||
            !SetRegistryText(kUser, L"A", L"last", value))
          _exit(1);
        if (write(ends[1], &i, sizeof i) != sizeof i) _exit(1);
      }
    }
    close(ends[1]);
    seed = seed * 1'103'515'245U + 12'345U;
    usleep(1000 + seed / 65'536 % 40'000);
    kill(writer, SIGKILL);
    int status = 0;
    waitpid(writer, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    for (int i = 0; read(ends[0], &i, sizeof i) == sizeof i;) told = i;
    close(ends[0]);
    if (told == 0) continue;
    const int last = std::stoi(ToUtf8(TextOf(kUser, L"A", L"last")));
    ASSERT_TRUE(last == told || last == told + 1) << last << " after " << told;
    told = last;
    CString value;
    value.Format(L"%d", told);
    ASSERT_EQ(TextOf(kUser, L"A\\" + value, L"v"), value);
  }
  EXPECT_GT(told, 0);
  ExpectWhole();
}

}  // namespace
}  // namespace velmora
