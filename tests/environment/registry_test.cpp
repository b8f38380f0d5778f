#include "velmora/environment/registry.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/print_text.h"
#include "tests/support/test_registry.h"
#include "velmora/platform/registry_store.h"

namespace velmora {
namespace {

using namespace std::string_literals;

class Registry : public TestRegistry {
 protected:
  Registry() { EXPECT_EQ(registry_.CreateKey(Key(L"A")), 1); }

  // Stores and reads the value "v" beside the wrapper.
  void Store(unsigned type, std::string_view bytes) const {
    RegistryKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, Key(L"A"), KEY_WRITE), kRegistryDone);
    ASSERT_EQ(key.Write(L"v", type, bytes), kRegistryDone);
  }
  std::string Stored(int result_of_writing) const {
    EXPECT_EQ(result_of_writing, 1);
    RegistryKey key;
    std::vector<StoredValue> values;
    EXPECT_EQ(key.Open(HKEY_CURRENT_USER, Key(L"A"), KEY_READ), kRegistryDone);
    EXPECT_EQ(key.ListValues(&values), kRegistryDone);
    return values.size() == 1 ? values[0].bytes : "?";
  }

  CRegistry registry_;
};

TEST_F(Registry, BeginsAtTheUserAndCanGoBackThere) {
  EXPECT_EQ(CRegistry().GetRootKey(), HKEY_CURRENT_USER);
  EXPECT_EQ(CRegistry().m_bLazyWrite, 1);
  for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS})
    EXPECT_TRUE(registry_.SetRootKey(root) == 1 && registry_.GetRootKey() == root);
  for (const HKEY root : {HKEY_CURRENT_CONFIG, HKEY{nullptr}}) EXPECT_EQ(registry_.SetRootKey(root), 0);
  EXPECT_EQ(registry_.GetRootKey(), HKEY_USERS);
  registry_.m_bLazyWrite = 0;
  EXPECT_EQ(registry_.ClearKey(), 1);
  EXPECT_EQ(registry_.GetRootKey(), HKEY_CURRENT_USER);
  EXPECT_EQ(registry_.m_bLazyWrite, 1);
  EXPECT_EQ(registry_.PathIsValid(), 0);
}

TEST_F(Registry, SetKeyMovesOnlyToWhatOpens) {
  EXPECT_EQ(registry_.SetKey(Key(L"B"), 0, KEY_READ), 0);
  EXPECT_EQ(registry_.m_nLastError, 2);
  EXPECT_EQ(registry_.CreateKey(L"\\B"), 0);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"A"));
  EXPECT_EQ(registry_.SetKey(Key(L"B\\C"), 1, KEY_ALL_ACCESS), 1);
  EXPECT_EQ(registry_.m_nLastError, 0);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"B\\C"));
  EXPECT_EQ(registry_.SetKey(Key(L"a"), 0, KEY_READ | KEY_WOW64_64KEY), 1);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"a"));
  EXPECT_EQ(registry_.SetKey(L"", 0, 0), 1);
  EXPECT_EQ(registry_.PathIsValid(), 0);
}

TEST_F(Registry, KeysAndValuesAreCountedAndDeleted) {
  EXPECT_EQ(registry_.KeyExists(Key(L"A\\B")), 0);
  EXPECT_EQ(registry_.DeleteKey(Key(L"A\\B")), 1);
  for (const wchar_t* name : {L"A\\B", L"A\\C", L"A"}) EXPECT_EQ(registry_.CreateKey(Key(name)), 1);
  EXPECT_EQ(registry_.KeyExists(Key(L"A\\B")), 1);
  EXPECT_EQ(registry_.KeyExists(Key(L"A\\B"), HKEY_LOCAL_MACHINE), 0);
  EXPECT_EQ(registry_.WriteInt(L"v", 1), 1);
  EXPECT_EQ(registry_.DeleteKey(Key(L"A")), 0);
  EXPECT_TRUE(registry_.GetSubKeyCount() == 2 && registry_.GetValueCount() == 1);
  EXPECT_TRUE(registry_.DeleteKey(Key(L"A\\B")) == 1 && registry_.GetSubKeyCount() == 1);
  EXPECT_TRUE(registry_.RenameValue(L"v", L"w") == 0 && registry_.ValueExists(L"v") == 1);
  EXPECT_EQ(registry_.DeleteValue(L"v"), 1);
  for (const CString& path : {Key(L"A"), Key(L"missing")}) {
    registry_.m_strCurrentPath = path;
    EXPECT_TRUE(registry_.DeleteValue(L"v") == 0 && registry_.ValueExists(L"v") == 0);
    EXPECT_TRUE(registry_.GetDataSize(L"v") == -1 && registry_.GetDataType(L"v") == 0);
    EXPECT_EQ(registry_.m_nLastError, 2);
  }
  EXPECT_TRUE(registry_.GetSubKeyCount() == -1 && registry_.GetValueCount() == -1);
  EXPECT_TRUE(registry_.WriteInt(L"v", 1) == 0 && registry_.WriteString(L"v", L"x") == 0);
}

// What was read is written again, so that its bytes tell it. The size decides, not the type.
TEST_F(Registry, TypedValuesAreStoredAsTheirBytes) {
  registry_.m_bLazyWrite = 0;
  const auto by_value = [this](auto write, auto read, auto value, auto otherwise, const std::string& bytes) {
    EXPECT_EQ(Stored((registry_.*write)(L"v", value)), bytes);
    EXPECT_EQ(registry_.GetDataType(L"v"), unsigned{REG_BINARY});
    Store(REG_SZ, bytes);
    EXPECT_EQ(Stored((registry_.*write)(L"v", (registry_.*read)(L"V", otherwise))), bytes);
    const std::string none = Stored((registry_.*write)(L"v", otherwise));
    for (const size_t length : {size_t{3}, size_t{93}}) {
      Store(REG_BINARY, std::string(length, '\1'));
      EXPECT_EQ(Stored((registry_.*write)(L"v", (registry_.*read)(L"v", otherwise))), none);
    }
  };
  const auto by_pointer = [this](auto write, auto read, auto* value, auto* found, const std::string& bytes) {
    EXPECT_EQ(Stored((registry_.*write)(L"v", value)), bytes);
    EXPECT_EQ(registry_.GetDataSize(L"v"), static_cast<int>(bytes.size()));
    EXPECT_EQ((registry_.*read)(L"v", found), 1);
    for (const size_t length : {size_t{3}, size_t{93}}) {
      EXPECT_EQ(Stored((registry_.*write)(L"v", found)), bytes);
      Store(REG_BINARY, std::string(length, '\1'));
      EXPECT_EQ((registry_.*read)(L"v", found), 0);
    }
    EXPECT_EQ(Stored((registry_.*write)(L"v", found)), bytes);  // as it was
    EXPECT_EQ((registry_.*write)(L"v", nullptr), 0);
    EXPECT_EQ((registry_.*read)(L"v", nullptr), 0);
  };
  using R = CRegistry;
  by_value(&R::WriteBool, &R::ReadBool, 1, 8, "\1\0\0\0"s);
  by_value(&R::WriteColor, &R::ReadColor, 0x00FF8001UL, 9UL, "\1\x80\xFF\0"s);
  by_value(&R::WriteDword, &R::ReadDword, 0xFFFFFFFEUL, 9UL, "\xFE\xFF\xFF\xFF");
  by_value(&R::WriteInt, &R::ReadInt, -2, -1, "\xFE\xFF\xFF\xFF");
  by_value(&R::WriteFloat, &R::ReadFloat, -1.5, 0.5, "\0\0\0\0\0\0\xF8\xBF"s);
  by_value(&R::WriteDateTime, &R::ReadDateTime, COleDateTime{.m_dt = 2.0, .m_status = 1},
           COleDateTime{.m_dt = 3.0, .m_status = 2}, "\0\0\0\0\0\0\0\x40\1\0\0\0\0\0\0\0"s);
  CPoint point{.x = 1, .y = -2}, read_point{};
  CSize size{.cx = 0x01020304, .cy = 5}, read_size{};
  CRect rect{.left = 1, .top = 2, .right = 3, .bottom = -1}, read_rect{};
  by_pointer(&R::WritePoint, &R::ReadPoint, &point, &read_point, "\1\0\0\0\xFE\xFF\xFF\xFF"s);
  by_pointer(&R::WriteSize, &R::ReadSize, &size, &read_size, "\4\3\2\1\5\0\0\0"s);
  by_pointer(&R::WriteRect, &R::ReadRect, &rect, &read_rect, "\1\0\0\0\2\0\0\0\3\0\0\0\xFF\xFF\xFF\xFF"s);
  LOGFONTW description{};
  description.lfHeight = -12;
  description.lfFaceName[0] = L'A';
  CFont font, read_font;
  EXPECT_EQ(registry_.WriteFont(L"v", &font), 0);
  ASSERT_EQ(font.Create(description), 1);
  by_pointer(&R::WriteFont, &R::ReadFont, &font, &read_font,
             "\xF4\xFF\xFF\xFF"s + std::string(24, '\0') + "A"s + std::string(63, '\0'));
}

// Readers of the suite rely on the bytes that are stored: as many as there are characters, and one.
TEST_F(Registry, WriteStringStoresHalf) {
  const struct {
    const wchar_t* text;
    std::string stored;
    const wchar_t* read;
  } cases[] = {{L"abcdef", "a\0b\0c\0d"s, L"abc"},
               {L"abc", "a\0b\0"s, L"ab"},
               {L"\u00E5b", "\xE5\0b"s, L"\u00E5"},
               {L"a", "a\0"s, L"a"},
               {L"", "\0"s, L""}};
  for (const auto& each : cases) {
    EXPECT_EQ(Stored(registry_.WriteString(L"v", each.text)), each.stored);
    EXPECT_EQ(registry_.ReadString(L"v", L"?"), each.read);
    EXPECT_EQ(registry_.GetDataType(L"v"), 1U);
  }
  EXPECT_EQ(registry_.WriteString(L"v", CString(L'x', 254)), 1);
  EXPECT_EQ(registry_.WriteString(L"v", CString(L'y', 255)), 0);
  EXPECT_EQ(registry_.ReadString(L"v", L"?"), CString(L'x', 127));
}

TEST_F(Registry, ReadStringTakesTextUpTo126Characters) {
  const struct {
    unsigned type;
    std::string stored;
    CString read;
    int error;
  } cases[] = {{REG_EXPAND_SZ, RegistryBytes(L"%TEMP%\\a"), L"%TEMP%\\a", 0},
               {REG_DWORD, "a\0\0\0"s, L"?", 0},
               {REG_BINARY, RegistryBytes(L"a"), L"?", 0},
               {REG_SZ, RegistryBytes(CString(L'x', 126)), CString(L'x', 126), 0},
               {REG_SZ, RegistryBytes(CString(L'x', 127)), L"?", 234}};
  for (const auto& each : cases) {
    Store(each.type, each.stored);
    EXPECT_EQ(registry_.ReadString(L"v", L"?"), each.read);
    EXPECT_EQ(registry_.m_nLastError, each.error);
  }
  EXPECT_EQ(registry_.ReadString(L"missing", L"?"), L"?");
  EXPECT_EQ(registry_.m_nLastError, 2);
}

TEST_F(Registry, ReadStringKey3264FindsWhatOnlyThe64BitViewHas) {
  RegistryKey key;
  ASSERT_EQ(key.Create(HKEY_LOCAL_MACHINE, Key(L"X"), KEY_ALL_ACCESS | KEY_WOW64_64KEY), kRegistryDone);
  ASSERT_EQ(key.Write(L"Path", REG_SZ, RegistryBytes(L"C:\\64")), kRegistryDone);
  EXPECT_EQ(registry_.SetRootKey(HKEY_LOCAL_MACHINE), 1);
  EXPECT_EQ(registry_.ReadStringKey3264(Key(L"X"), L"Path", L"?"), L"C:\\64");
  EXPECT_EQ(registry_.m_nLastError, 0);
  for (const wchar_t* missing : {L"X", L"Y"})
    EXPECT_EQ(registry_.ReadStringKey3264(Key(missing), L"missing", L"?"), L"?");
  EXPECT_EQ(registry_.m_nLastError, 2);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"A"));
  EXPECT_EQ(key.Delete(L"Path"), kRegistryDone);
}

}  // namespace
}  // namespace velmora
