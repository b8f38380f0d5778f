// The registry's database: creation, refusals, damage, and many programs at once (profiles too).
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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
  unsigned keys = 1, values = 1;
  EXPECT_EQ(key.Open(kUser, L"", KEY_ALL_ACCESS), kRegistryDone);
  EXPECT_TRUE(key.Delete(L"v") == kRegistryNotFound && key.Flush() == kRegistryDone);
  EXPECT_TRUE(key.Count(&keys, &values) == kRegistryDone && keys + values == 0);
  EXPECT_TRUE(NamesIn(folder_.Path()).empty());
  EXPECT_TRUE(Set(L"", L"x"));
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

// Every program has values of its own and one that all of them write, and starts with no file there.
TEST_F(RegistryDatabaseFile, TwoHundredWritersLoseNothing) {
  constexpr unsigned kWriters = 200;
  constexpr unsigned kWrites = 5;
  constexpr int kProfileWriters = 20;
  const CString profile = folder_.File(L"a.ini");
  std::vector<pid_t> writers;
  for (unsigned i = 0; i < kWriters; ++i) {
    writers.push_back(fork());
    if (writers.back() != 0) continue;
    const CString name = FromUtf8(std::to_string(i));
    bool done = Creates(L"Writers\\" + name) == kRegistryDone;
    for (wchar_t digit = L'1'; digit < wchar_t{L'1' + kWrites}; ++digit) {
      const CString value = name + L"-" + CString(digit);
      done = done && SetRegistryText(kUser, L"Writers", value, name) &&
             SetRegistryText(kUser, L"Writers", L"shared", name) &&
             (i >= kProfileWriters || WriteProfile(L"Writers", value, name, profile));
    }
    _exit(done ? 0 : 1);
  }
  for (const pid_t writer : writers) {
    int status = -1;
    EXPECT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
  }
  RegistryKey key;
  unsigned keys = 0;
  unsigned values = 0;
  ASSERT_EQ(key.Open(kUser, L"Writers", KEY_READ), kRegistryDone);
  ASSERT_EQ(key.Count(&keys, &values), kRegistryDone);
  EXPECT_EQ(keys, kWriters);
  EXPECT_EQ(values, kWriters * kWrites + 1);
  key.Close();
  ExpectWhole();
  const std::string lines = ReadBytes(profile);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '='), std::ptrdiff_t{kProfileWriters * kWrites});
  EXPECT_EQ(NamesIn(folder_.Path()), (std::vector<CString>{L"a.ini", L"registry.db"}));
}

}  // namespace
}  // namespace velmora
