#include "velmora/platform/registry_store.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/print_text.h"
#include "tests/support/test_registry.h"

namespace velmora {
namespace {

using namespace std::string_view_literals;

class RegistryStore : public TestRegistry {
 protected:
  RegistryKey Made(const CString& path) const {
    RegistryKey key;
    EXPECT_EQ(key.Create(HKEY_CURRENT_USER, path, KEY_ALL_ACCESS), kRegistryDone);
    return key;
  }
  static int Opens(const CString& path, int access = KEY_READ, HKEY root = HKEY_CURRENT_USER) {
    return RegistryKey().Open(root, path, access);
  }
};

TEST_F(RegistryStore, KeysAreMadeWithThoseAbove) {
  EXPECT_EQ(Opens(Key(L"A\\B")), kRegistryNotFound);
  Made(Key(L"A\\B"));
  EXPECT_EQ(Opens(Key(L"A")), kRegistryDone);
  EXPECT_EQ(Opens(Key(L"A\\B"), KEY_ALL_ACCESS), kRegistryDone);
  EXPECT_EQ(Opens(Key(L"A\\B"), KEY_ALL_ACCESS, HKEY_LOCAL_MACHINE), kRegistryNotFound);
  EXPECT_EQ(Opens(Key(L"A\\B\\C")), kRegistryNotFound);
  EXPECT_EQ(Opens(L"", KEY_ALL_ACCESS), kRegistryDone);
  EXPECT_EQ(Opens(Key(L"A"), KEY_READ, nullptr), kRegistryBadRoot);
  EXPECT_EQ(Opens(CString(L"A\0B", 3)), kRegistryBadArgument);
}

TEST_F(RegistryStore, Backslashes) {
  Made(Key(L"A\\\\B\\"));
  EXPECT_EQ(Opens(Key(L"A\\B")), kRegistryDone);
  EXPECT_EQ(Opens(Key(L"\\A\\\\B\\\\")), kRegistryDone);
  EXPECT_EQ(Opens(L"\\" + Key(L"A")), kRegistryBadPath);
  EXPECT_EQ(Opens(L"\\"), kRegistryBadPath);
  EXPECT_EQ(RegistryKey().Create(HKEY_CURRENT_USER, L"\\" + Key(L"A"), KEY_READ), kRegistryBadPath);
}

TEST_F(RegistryStore, NamesKeepTheirSpellingAndCompareWithoutCase) {
  RegistryKey key = Made(Key(L"\u00C5land"));
  EXPECT_EQ(Opens(Key(L"\u00E5LAND")), kRegistryDone);
  Made(Key(L"\u00E5land\\beta"));
  Made(Key(L"\u00E5land\\Alpha"));
  Made(Key(L"\u00E5land\\BETA"));
  EXPECT_EQ(key.Write(L"\u00D6n", REG_BINARY, "1"), kRegistryDone);
  EXPECT_EQ(key.Write(L"\u00F6N", REG_SZ, "22"), kRegistryDone);
  EXPECT_EQ(key.Write(L"a\\b", REG_DWORD, "4444"), kRegistryDone);
  EXPECT_EQ(key.Write(L"", 77, ""), kRegistryDone);
  std::vector<CString> names;
  EXPECT_EQ(key.ListKeys(&names), kRegistryDone);
  EXPECT_EQ(names, (std::vector<CString>{L"Alpha", L"beta"}));
  std::vector<StoredValue> values;
  EXPECT_EQ(key.ListValues(&values), kRegistryDone);
  ASSERT_EQ(values.size(), 3U);
  const StoredValue expected[] = {{L"", 77, ""}, {L"a\\b", REG_DWORD, "4444"}, {L"\u00D6n", REG_SZ, "22"}};
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(values[i].name, expected[i].name);
    EXPECT_EQ(values[i].type, expected[i].type);
    EXPECT_EQ(values[i].bytes, expected[i].bytes);
  }
  unsigned keys = 0;
  unsigned count = 0;
  EXPECT_EQ(key.Count(&keys, &count), kRegistryDone);
  EXPECT_EQ(keys, 2U);
  EXPECT_EQ(count, 3U);
}

TEST_F(RegistryStore, ValuesOfAnyBytes) {
  RegistryKey key = Made(Base());
  const std::string large(100'000, '\x7F');
  for (const std::string_view bytes : {"\0a\0\xFF"sv, ""sv, std::string_view(large), "x"sv}) {
    EXPECT_EQ(key.Write(L"v", REG_BINARY, bytes), kRegistryDone);
    std::string buffer(100'001, '#');
    size_t size = 0;
    unsigned type = 0;
    EXPECT_EQ(key.Describe(L"V", &type, &size), kRegistryDone);
    EXPECT_EQ(size, bytes.size());
    EXPECT_EQ(type, unsigned{REG_BINARY});
    EXPECT_EQ(key.Read(L"V", buffer, &size), kRegistryDone);
    EXPECT_EQ(std::string_view(buffer).substr(0, size), bytes);
    if (bytes.empty()) continue;
    EXPECT_EQ(key.Read(L"v", std::span(buffer).first(bytes.size() - 1), &size), kRegistryMoreData);
    EXPECT_EQ(size, bytes.size());
  }
  size_t size = 0;
  EXPECT_EQ(key.Read(L"missing", {}, &size), kRegistryNotFound);
  EXPECT_EQ(key.Describe(L"missing", nullptr, nullptr), kRegistryNotFound);
  EXPECT_EQ(key.Delete(L"missing"), kRegistryNotFound);
  EXPECT_EQ(key.Delete(L"v"), kRegistryDone);
  EXPECT_EQ(key.Delete(L"v"), kRegistryNotFound);
  EXPECT_EQ(key.Flush(), kRegistryDone);
}

TEST_F(RegistryStore, LongNames) {
  RegistryKey key = Made(Base());
  Made(Key(CString(L'k', 255)));
  EXPECT_EQ(Opens(Key(CString(L'K', 255))), kRegistryDone);
  EXPECT_EQ(key.Write(CString(L'n', 16383), REG_SZ, "ab"), kRegistryDone);
  EXPECT_EQ(key.Describe(CString(L'N', 16383), nullptr, nullptr), kRegistryDone);
  EXPECT_EQ(key.Write(CString(L'n', 16384), REG_SZ, "ab"), kRegistryBadArgument);
  EXPECT_EQ(key.Write(CString(L"a\0b", 3), REG_SZ, "ab"), kRegistryBadArgument);
  EXPECT_EQ(key.Describe(CString(L'n', 16384), nullptr, nullptr), kRegistryNotFound);
}

TEST_F(RegistryStore, AKeyDoesWhatItWasOpenedFor) {
  EXPECT_EQ(Made(Base()).Write(L"v", REG_SZ, "ab"), kRegistryDone);
  RegistryKey key;
  size_t size = 0;
  char buffer[8];
  ASSERT_EQ(key.Open(HKEY_CURRENT_USER, Base(), KEY_READ), kRegistryDone);
  EXPECT_EQ(key.Write(L"v", REG_SZ, "cd"), kRegistryDenied);
  EXPECT_EQ(key.Delete(L"v"), kRegistryDenied);
  EXPECT_EQ(key.Read(L"v", buffer, &size), kRegistryDone);
  ASSERT_EQ(key.Open(HKEY_CURRENT_USER, Base(), KEY_WRITE), kRegistryDone);
  EXPECT_EQ(key.Read(L"v", buffer, &size), kRegistryDenied);
  EXPECT_EQ(key.Write(L"v", REG_SZ, "cd"), kRegistryDone);
  key.Close();
  EXPECT_EQ(key.Write(L"v", REG_SZ, "cd"), kRegistryBadRoot);
  EXPECT_EQ(key.Read(L"v", buffer, &size), kRegistryBadRoot);
}

TEST_F(RegistryStore, AKeyWithSubKeysStays) {
  Made(Key(L"A\\B"));
  EXPECT_EQ(DeleteRegistryKey(HKEY_CURRENT_USER, Key(L"A")), kRegistryDenied);
  EXPECT_EQ(Opens(Key(L"A\\B")), kRegistryDone);
  EXPECT_EQ(DeleteRegistryKey(HKEY_CURRENT_USER, Key(L"a\\b")), kRegistryDone);
  EXPECT_EQ(DeleteRegistryKey(HKEY_CURRENT_USER, Key(L"A\\B")), kRegistryNotFound);
  EXPECT_EQ(DeleteRegistryKey(HKEY_CURRENT_USER, Key(L"A")), kRegistryDone);
  EXPECT_EQ(DeleteRegistryKey(HKEY_CURRENT_USER, L""), kRegistryDenied);
}

TEST_F(RegistryStore, ADeletedKeyStaysDeleted) {
  RegistryKey key = Made(Key(L"A"));
  EXPECT_EQ(key.Write(L"v", REG_SZ, "ab"), kRegistryDone);
  EXPECT_EQ(DeleteRegistryKey(HKEY_CURRENT_USER, Key(L"A")), kRegistryDone);
  EXPECT_EQ(key.Write(L"v", REG_SZ, "ab"), kRegistryKeyDeleted);
  EXPECT_EQ(key.Describe(L"v", nullptr, nullptr), kRegistryKeyDeleted);
  RegistryKey again = Made(Key(L"A"));
  EXPECT_EQ(again.Describe(L"v", nullptr, nullptr), kRegistryNotFound);
  EXPECT_EQ(key.Write(L"v", REG_SZ, "ab"), kRegistryKeyDeleted);
}

TEST_F(RegistryStore, TwoViewsOfSoftware) {
  const CString name = Base().Mid(Base().Find(L'\\') + 1);
  const CString under_32 = L"SOFTWARE\\WOW6432Node\\" + name;
  constexpr int kView32 = KEY_READ | KEY_WOW64_32KEY;
  constexpr int kView64 = KEY_READ | KEY_WOW64_64KEY;
  const HKEY machine = HKEY_LOCAL_MACHINE;
  {
    RegistryKey key;
    ASSERT_EQ(key.Create(machine, Base(), KEY_ALL_ACCESS | KEY_WOW64_64KEY), kRegistryDone);
    EXPECT_EQ(key.Write(L"v", REG_SZ, RegistryBytes(L"64")), kRegistryDone);
  }
  EXPECT_EQ(Opens(Base(), kView32, machine), kRegistryNotFound);
  EXPECT_EQ(Opens(under_32, KEY_READ, machine), kRegistryNotFound);
  EXPECT_TRUE(SetRegistryText(machine, under_32, L"v", L"32"));
  EXPECT_EQ(TextOf(machine, Base(), L"v", kView64), L"64");
  EXPECT_EQ(TextOf(machine, Base(), L"v", kView32), L"32");
  for (const int access : {int{KEY_READ}, kView32, kView64})
    EXPECT_EQ(TextOf(machine, under_32, L"v", access), L"32");
  // The user's keys have one view.
  EXPECT_TRUE(SetRegistryText(HKEY_CURRENT_USER, Base(), L"v", L"user"));
  EXPECT_EQ(TextOf(HKEY_CURRENT_USER, Base(), L"v", kView64), L"user");
  EXPECT_EQ(TextOf(HKEY_CURRENT_USER, Base(), L"v", kView32), L"user");
  EXPECT_EQ(DeleteRegistryKey(machine, under_32), kRegistryDone);
  RegistryKey key;
  ASSERT_EQ(key.Open(machine, Base(), KEY_ALL_ACCESS | KEY_WOW64_64KEY), kRegistryDone);
  EXPECT_EQ(key.Delete(L"v"), kRegistryDone);
}

TEST_F(RegistryStore, TextIsStoredWhole) {
  std::wstring long_text(1000, L'\u00E5');
  for (const CString& text :
       {CString(L"C:\\a b"), CString(), CString(long_text.c_str()), CString(L"\U00010330")}) {
    EXPECT_TRUE(SetRegistryText(HKEY_CURRENT_USER, Key(L"A\\B"), L"v", text));
    EXPECT_EQ(TextOf(HKEY_CURRENT_USER, Key(L"A\\B"), L"v"), text);
  }
  EXPECT_FALSE(SetRegistryText(HKEY_CURRENT_USER, L"\\" + Base(), L"v", L"x"));
  EXPECT_FALSE(SetRegistryText(nullptr, Base(), L"v", L"x"));
  EXPECT_EQ(RegistryBytes(L"a\u00E5"), "a\0\xE5\0\0\0"sv);
  EXPECT_EQ(RegistryText("a\0b\0c"sv), L"ab");
  EXPECT_EQ(RegistryText("a\0\0\0c\0"sv), L"a");
  EXPECT_EQ(RegistryText(""), L"");
}

}  // namespace
}  // namespace velmora
