#include "velmora/platform/registry_store.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/print_text.h"
#include "tests/support/test_registry.h"

namespace velmora {
namespace {

using namespace std::string_literals;

const HKEY kUser = HKEY_CURRENT_USER;
const HKEY kMachine = HKEY_LOCAL_MACHINE;

class RegistryStore : public TestRegistry {
 protected:
  RegistryKey Made(const CString& path) const {
    RegistryKey key;
    EXPECT_EQ(key.Create(kUser, path, KEY_ALL_ACCESS), kRegistryDone);
    return key;
  }
  static int Opens(const CString& path, int access = KEY_READ, HKEY root = kUser) {
    return RegistryKey().Open(root, path, access);
  }
};

TEST_F(RegistryStore, KeysAreMadeWithThoseAbove) {
  EXPECT_EQ(Opens(Key(L"\u00C5\\B")), kRegistryNotFound);
  Made(Key(L"\u00C5\\\\B\\"));
  for (const CString& path : {CString(), Key(L"\u00E5"), Key(L"\u00E5\\b"), Key(L"\\\u00C5\\\\B\\\\")})
    EXPECT_EQ(Opens(path, KEY_ALL_ACCESS), kRegistryDone) << ToUtf8(path);
  EXPECT_EQ(Opens(Key(L"\u00C5\\B\\C")), kRegistryNotFound);
  EXPECT_EQ(Opens(Key(L"\u00C5\\B"), KEY_READ, kMachine), kRegistryNotFound);
  EXPECT_EQ(Opens(Key(L"\u00C5"), KEY_READ, nullptr), kRegistryBadRoot);
  EXPECT_EQ(Opens(CString(L"A\0B", 3)), kRegistryBadArgument);
  EXPECT_EQ(Opens(L"\\"), kRegistryBadPath);
  RegistryKey long_key = Made(Key(CString(L'k', 255)));
  EXPECT_EQ(long_key.Write(CString(L'n', 16383), REG_SZ, "ab"), kRegistryDone);
  for (const CString& name : {CString(L'n', 16384), CString(L"a\0b", 3)})
    EXPECT_EQ(long_key.Write(name, REG_SZ, "ab"), kRegistryBadArgument);
  EXPECT_EQ(RegistryKey().Create(kUser, L"\\" + Key(L"A"), KEY_READ), kRegistryBadPath);
}

TEST_F(RegistryStore, NamesKeepTheirSpellingAndCompareWithoutCase) {
  RegistryKey key = Made(Base());
  for (const wchar_t* name : {L"beta", L"Alpha", L"BETA"}) Made(Key(name));
  EXPECT_EQ(key.Write(L"\u00D6n", REG_BINARY, "1"), kRegistryDone);
  EXPECT_EQ(key.Write(L"\u00F6N", REG_SZ, "22"), kRegistryDone);
  EXPECT_EQ(key.Write(L"a\\b", REG_DWORD, "4444"), kRegistryDone);
  EXPECT_EQ(key.Write(L"", 77, ""), kRegistryDone);
  std::vector<CString> names;
  EXPECT_EQ(key.ListKeys(&names), kRegistryDone);
  EXPECT_EQ(names, (std::vector<CString>{L"Alpha", L"beta"}));
  std::vector<StoredValue> values;
  EXPECT_EQ(key.ListValues(&values), kRegistryDone);
  std::string listed;
  for (const StoredValue& each : values)
    listed += ToUtf8(each.name) + " " + std::to_string(each.type) + " " + each.bytes + "; ";
  EXPECT_EQ(listed, " 77 ; a\\b 4 4444; \xC3\x96n 1 22; ");
  EXPECT_EQ(key.Delete(L"A\\B"), kRegistryDone);
  EXPECT_EQ(key.Delete(L"a\\b"), kRegistryNotFound);
  EXPECT_EQ(key.Describe(L"a\\b", nullptr, nullptr), kRegistryNotFound);
  char small[1];
  size_t size = 0;
  EXPECT_EQ(key.Read(L"a\\b", small, &size), kRegistryNotFound);
  EXPECT_EQ(key.Read(L"\u00F6n", small, &size), kRegistryMoreData);
  EXPECT_EQ(size, 2U);
  char exact[2];
  EXPECT_EQ(key.Read(L"\u00F6n", exact, &size), kRegistryDone);
}

TEST_F(RegistryStore, AKeyDoesWhatItWasOpenedFor) {
  size_t size = 0;
  char buffer[8];
  RegistryKey key = Made(Base());
  for (const bool writes : {true, false}) {
    ASSERT_EQ(key.Open(kUser, Base(), writes ? KEY_WRITE : KEY_READ), kRegistryDone);
    EXPECT_EQ(key.Write(L"v", REG_SZ, "cd"), writes ? kRegistryDone : kRegistryDenied);
    EXPECT_EQ(key.Read(L"v", buffer, &size), writes ? kRegistryDenied : kRegistryDone);
  }
  EXPECT_EQ(key.Delete(L"v"), kRegistryDenied);
  key.Close();
  EXPECT_EQ(key.Write(L"v", REG_SZ, "cd"), kRegistryBadRoot);
  EXPECT_EQ(key.Read(L"v", buffer, &size), kRegistryBadRoot);
}

TEST_F(RegistryStore, ADeletedKeyStaysDeletedAndOneWithSubKeysStays) {
  RegistryKey key = Made(Key(L"A\\B"));
  EXPECT_EQ(key.Write(L"v", REG_SZ, "ab"), kRegistryDone);
  for (const CString& path : {CString(), Key(L"A")})
    EXPECT_EQ(DeleteRegistryKey(kUser, path), kRegistryDenied);
  EXPECT_EQ(DeleteRegistryKey(kUser, Key(L"a\\b")), kRegistryDone);
  EXPECT_EQ(DeleteRegistryKey(kUser, Key(L"A\\B")), kRegistryNotFound);
  EXPECT_EQ(key.Describe(L"v", nullptr, nullptr), kRegistryKeyDeleted);
  EXPECT_EQ(Made(Key(L"A\\B")).Describe(L"v", nullptr, nullptr), kRegistryNotFound);
  EXPECT_EQ(key.Write(L"v", REG_SZ, "ab"), kRegistryKeyDeleted);
}

TEST_F(RegistryStore, TwoViewsOfSoftware) {
  const CString under_32 = L"SOFTWARE\\WOW6432Node" + Base().Mid(Base().Find(L'\\'));
  constexpr int kView32 = KEY_READ | KEY_WOW64_32KEY;
  constexpr int kView64 = KEY_READ | KEY_WOW64_64KEY;
  RegistryKey key;
  ASSERT_EQ(key.Create(kMachine, Base(), KEY_ALL_ACCESS | KEY_WOW64_64KEY), kRegistryDone);
  EXPECT_EQ(key.Write(L"v", REG_SZ, RegistryBytes(L"64")), kRegistryDone);
  EXPECT_EQ(Opens(Base(), kView32, kMachine), kRegistryNotFound);
  EXPECT_EQ(Opens(under_32, KEY_READ, kMachine), kRegistryNotFound);
  EXPECT_TRUE(SetRegistryText(kMachine, under_32, L"v", L"32"));
  EXPECT_TRUE(SetRegistryText(kUser, Base(), L"v", L"user"));
  EXPECT_EQ(TextOf(kMachine, Base(), L"v", kView64), L"64");
  EXPECT_EQ(TextOf(kMachine, Base(), L"v", kView32), L"32");
  for (const int access : {int{KEY_READ}, kView32, kView64}) {
    EXPECT_EQ(TextOf(kMachine, under_32, L"v", access), L"32");
    EXPECT_EQ(TextOf(kUser, Base(), L"v", access), L"user");  // the user's keys have one view
  }
  EXPECT_EQ(DeleteRegistryKey(kMachine, under_32), kRegistryDone);
  EXPECT_EQ(key.Delete(L"v"), kRegistryDone);
}

TEST_F(RegistryStore, TextIsStoredWhole) {
  const CString text(L'\u00E5', 1000);
  EXPECT_TRUE(SetRegistryText(kUser, Base(), L"v", text) && TextOf(kUser, Base(), L"v") == text);
  EXPECT_FALSE(SetRegistryText(nullptr, Base(), L"v", L"x"));
  EXPECT_EQ(RegistryBytes(L"a\u00E5"), "a\0\xE5\0\0\0"s);
  EXPECT_EQ(RegistryText("a\0b\0c"s), L"ab");
  EXPECT_EQ(RegistryText("a\0\0\0c\0"s), L"a");
  EXPECT_EQ(RegistryText(""), L"");
}

}  // namespace
}  // namespace velmora
