// The registry's database: creation, refusals, damage, and many programs at once (profiles too).
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "tests/support/print_text.h"
#include "tests/support/test_registry.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"

namespace velmora {
namespace {

using namespace std::string_literals;

const HKEY kUser = HKEY_CURRENT_USER;

class RegistryDatabaseFile : public TestRegistry {
 protected:
  static bool Set(const CString& key, const CString& text) { return SetRegistryText(kUser, key, L"v", text); }
  static CString Get(const CString& key) { return TextOf(kUser, key, L"v"); }
  static int Opens(const CString& key, int access = KEY_READ) {
    return RegistryKey().Open(kUser, key, access);
  }
  static int Creates(const CString& key) { return RegistryKey().Create(kUser, key, KEY_READ); }
  // What every call answers while the file is such.
  static void ExpectRefusal(int result) {
    EXPECT_EQ(Opens(L"A"), result);
    EXPECT_EQ(Creates(L"A"), result);
    EXPECT_EQ(DeleteRegistryKey(kUser, L"A"), result);
    EXPECT_FALSE(Set(L"A", L"x"));
  }
  // What another program gets from the file first.
  std::string Ask(const char* sql) const {
    sqlite3* database = nullptr;
    char** table = nullptr;
    int rows = 0;
    EXPECT_EQ(sqlite3_open(native_.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_get_table(database, sql, &table, &rows, nullptr, nullptr), SQLITE_OK);
    const std::string answer = rows > 0 ? table[1] : "";
    sqlite3_free_table(table);
    sqlite3_close(database);
    return answer;
  }
  void ExpectWhole() const { EXPECT_EQ(Ask("PRAGMA integrity_check"), "ok"); }

  CString path_ = folder_.File(L"registry.db");
  std::string native_ = PathForDisplay(path_);
};

TEST_F(RegistryDatabaseFile, OnlyAWriteMakesIt) {
  const EnvironmentVariable none(L"VELMORA_REGISTRY", std::nullopt);
  const EnvironmentVariable data(L"XDG_DATA_HOME", folder_.File(L"new\\data"));
  EXPECT_EQ(DeleteRegistryKey(kUser, L"A"), kRegistryNotFound);
  RegistryKey key;
  EXPECT_EQ(key.Open(kUser, L"", KEY_ALL_ACCESS), kRegistryDone);
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
  EXPECT_EQ(Get(L""), L"x");

  const EnvironmentVariable empty(L"VELMORA_REGISTRY", path_);  // counts as none
  WriteBytes(path_, "");
  EXPECT_EQ(Opens(L"A"), kRegistryNotFound);
  EXPECT_EQ(ReadBytes(path_), "");
  EXPECT_TRUE(Set(L"A", L"x"));
}

TEST_F(RegistryDatabaseFile, TheLogOfAFileThatIsGoneIsNotTakenOver) {
  RegistryKey key;
  ASSERT_EQ(key.Create(kUser, L"A", KEY_ALL_ACCESS), kRegistryDone);
  ASSERT_EQ(key.Write(L"w", REG_SZ, "ab"), kRegistryDone);
  const std::string log = ReadBytes(path_ + L"-wal");
  ASSERT_FALSE(log.empty());
  key.Close();
  ASSERT_TRUE(RemoveWholeFile(path_));
  WriteBytes(path_ + L"-wal", log);
  ASSERT_TRUE(Set(L"B", L"new"));
  EXPECT_EQ(Opens(L"A"), kRegistryNotFound);
  ExpectWhole();
}

TEST_F(RegistryDatabaseFile, WhatIsNoDatabaseIsLeftAlone) {
  ASSERT_TRUE(Set(L"A", L"x"));
  const std::string good = ReadBytes(path_);
  std::string other_program = good;
  other_program[68] = 'X';
  std::string newer = good;
  newer[63] = 2;
  for (const std::string& bytes : {"[S]\r\nk=v\r\n"s, good.substr(0, 50), other_program, newer}) {
    WriteBytes(path_, bytes);
    ExpectRefusal(kRegistryDamaged);
    EXPECT_EQ(ReadBytes(path_), bytes);
  }
  WriteBytes(path_, good.substr(0, 4096 * 2));
  EXPECT_FALSE(Set(L"A", L"y"));
}

TEST_F(RegistryDatabaseFile, NothingInTheFileIsRun) {
  ASSERT_TRUE(Set(L"A", L"x"));
  Ask("CREATE TRIGGER t AFTER INSERT ON registry_value BEGIN DELETE FROM registry_key; END");
  EXPECT_TRUE(Set(L"A", L"y"));
  EXPECT_EQ(Get(L"A"), L"y");
  Ask("ALTER TABLE registry_key RENAME TO other; CREATE VIEW registry_key AS SELECT * FROM other");
  ExpectRefusal(kRegistryDamaged);
}

TEST_F(RegistryDatabaseFile, FoldersPipesAndMissingPermission) {
  ASSERT_TRUE(MakeFolder(path_));
  ExpectRefusal(kRegistryCannotOpen);
  ASSERT_TRUE(RemoveEmptyFolder(path_));
  ASSERT_EQ(mkfifo(native_.c_str(), 0600), 0);
  ExpectRefusal(kRegistryCannotOpen);
  for (const wchar_t* nowhere : {L"\\dev\\null\\registry.db", L"\\proc\\velmora\\registry.db"}) {
    const EnvironmentVariable there(L"VELMORA_REGISTRY", CString(nowhere));
    EXPECT_EQ(Opens(L"A"), kRegistryNotFound);
    EXPECT_EQ(Creates(L"A"), kRegistryCannotWrite);
  }
}

TEST_F(RegistryDatabaseFile, AProtectedOneIsReadOnly) {
  ASSERT_TRUE(Set(L"A", L"x"));
  for (const std::string& guarded : {native_, PathForDisplay(folder_.Path())}) {
    ASSERT_EQ(chmod(guarded.c_str(), 0555), 0);
    EXPECT_EQ(Get(L"A"), L"x");
    EXPECT_EQ(Opens(L"A", KEY_SET_VALUE), kRegistryDenied);
    EXPECT_EQ(Creates(L"B"), kRegistryDenied);
    EXPECT_EQ(DeleteRegistryKey(kUser, L"A"), kRegistryDenied);
    EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"registry.db"});
    ASSERT_EQ(chmod(guarded.c_str(), 0700), 0);
  }
  EXPECT_TRUE(Set(L"A", L"y"));
}

// Runs `write` in so many processes at the same time, with the names "0", "1" and so on.
void RunTogether(int count, const std::function<bool(const CString& name)>& write) {
  std::vector<pid_t> writers;
  for (int i = 0; i < count; ++i) {
    writers.push_back(fork());
    if (writers.back() == 0) _exit(write(FromUtf8(std::to_string(i))) ? 0 : 1);
  }
  for (const pid_t writer : writers) {
    int status = -1;
    EXPECT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
  }
}

// Every program has values of its own and one that all of them write, and starts with no file there.
TEST_F(RegistryDatabaseFile, TwoHundredWritersLoseNothing) {
  constexpr unsigned kWriters = 200;
  constexpr unsigned kWrites = 5;
  RunTogether(kWriters, [](const CString& name) {
    for (wchar_t digit = L'1'; digit < wchar_t{L'1' + kWrites}; ++digit)
      if (!SetRegistryText(kUser, L"Writers", name + L"-" + CString(digit), name) ||
          !SetRegistryText(kUser, L"Writers", L"shared", name))
        return false;
    return Creates(L"Writers\\" + name) == kRegistryDone;
  });
  RegistryKey key;
  unsigned keys = 0;
  unsigned values = 0;
  ASSERT_EQ(key.Open(kUser, L"Writers", KEY_READ), kRegistryDone);
  ASSERT_EQ(key.Count(&keys, &values), kRegistryDone);
  EXPECT_EQ(keys, kWriters);
  EXPECT_EQ(values, kWriters * kWrites + 1);
  key.Close();
  ExpectWhole();
  EXPECT_EQ(NamesIn(folder_.Path()), std::vector<CString>{L"registry.db"});
}

TEST(PosixProfile, WritersLoseNothing) {
  const TemporaryFolder folder;
  const CString path = folder.File(L"a.ini");
  constexpr const wchar_t* kKeys[] = {L"-0", L"-1", L"-2"};
  constexpr int kWriters = 20;
  RunTogether(kWriters, [&](const CString& name) {
    return std::all_of(std::begin(kKeys), std::end(kKeys),
                       [&](const CString& key) { return WriteProfile(L"Writers", name + key, name, path); });
  });
  for (int i = 0; i < kWriters; ++i) {
    const CString name = FromUtf8(std::to_string(i));
    for (const wchar_t* key : kKeys) EXPECT_EQ(ReadProfile(L"Writers", name + key, path), name);
  }
  EXPECT_EQ(NamesIn(folder.Path()).size(), 1U);
}

// A writer reports each write through a pipe before it is killed; everything reported must be there.
TEST_F(RegistryDatabaseFile, KilledWritersLeaveItWhole) {
  std::minstd_rand random(1);
  int reported = 0;
  for (int round = 0; round < 40; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t writer = fork();
    for (int i = reported + 1; writer == 0; ++i) {
      const CString value = FromUtf8(std::to_string(i));
      if (!Set(L"A\\" + value, value) || !Set(L"A", value) || write(ends[1], &i, sizeof i) != sizeof i)
        _exit(1);
    }
    close(ends[1]);
    usleep(static_cast<useconds_t>(1000 + random() % 40'000));
    kill(writer, SIGKILL);
    int status = 0;
    waitpid(writer, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    for (int i = 0; read(ends[0], &i, sizeof i) == sizeof i;) reported = i;
    close(ends[0]);
    if (reported == 0) continue;
    const int last = std::stoi(ToUtf8(Get(L"A")));
    ASSERT_TRUE(last == reported || last == reported + 1) << last << " after " << reported;
    reported = last;
    ASSERT_EQ(Get(L"A\\" + Get(L"A")), Get(L"A"));
  }
  EXPECT_GT(reported, 0);
  ExpectWhole();
}

}  // namespace
}  // namespace velmora
