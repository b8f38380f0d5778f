#include "velmora/environment/registry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

#include "tests/support/print_text.h"
#include "tests/support/test_registry.h"
#include "velmora/platform/registry_store.h"

namespace velmora {
namespace {

using namespace std::string_literals;

class Registry : public TestRegistry {
 protected:
  Registry() { EXPECT_EQ(registry_.CreateKey(Key(L"A")), 1); }

  // Stores bytes beside the wrapper.
  void Store(const CString& name, unsigned type, std::string_view bytes) const {
    RegistryKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, Key(L"A"), KEY_WRITE), kRegistryDone);
    ASSERT_EQ(key.Write(name, type, bytes), kRegistryDone);
  }
  std::string Stored(const CString& name) const {
    char bytes[1024];
    size_t size = 0;
    RegistryKey key;
    EXPECT_EQ(key.Open(HKEY_CURRENT_USER, Key(L"A"), KEY_READ), kRegistryDone);
    EXPECT_EQ(key.Read(name, bytes, &size), kRegistryDone) << ToUtf8(name);
    return {bytes, size};
  }

  CRegistry registry_;
};

TEST(RegistryObject, BeginsAtTheUserAndCopiesAllItsFields) {
  CRegistry registry;
  EXPECT_EQ(registry.m_nLastError, 0);
  EXPECT_EQ(registry.GetRootKey(), HKEY_CURRENT_USER);
  EXPECT_EQ(registry.m_bLazyWrite, 1);
  EXPECT_EQ(registry.PathIsValid(), 0);
  registry.m_nLastError = 7;
  registry.m_bLazyWrite = 0;
  registry.m_strCurrentPath = L"A";
  EXPECT_EQ(registry.SetRootKey(HKEY_USERS), 1);
  CRegistry assigned;
  assigned = registry;
  for (CRegistry* copy : {&assigned, &registry}) {
    EXPECT_EQ(copy->m_nLastError, 7);
    EXPECT_EQ(copy->m_bLazyWrite, 0);
    EXPECT_EQ(copy->GetCurrentPath(), L"A");
    EXPECT_EQ(copy->PathIsValid(), 1);
    EXPECT_EQ(copy->ClearKey(), 1);
    EXPECT_EQ(copy->GetRootKey(), HKEY_CURRENT_USER);
    EXPECT_EQ(copy->m_bLazyWrite, 1);
    EXPECT_EQ(copy->GetCurrentPath(), L"");
    EXPECT_EQ(copy->m_nLastError, 7);
  }
}

TEST(RegistryObject, FourRoots) {
  CRegistry registry;
  for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_USERS, HKEY_LOCAL_MACHINE}) {
    EXPECT_EQ(registry.SetRootKey(root), 1);
    EXPECT_EQ(registry.GetRootKey(), root);
  }
  for (const HKEY root : {HKEY_CURRENT_CONFIG, HKEY{nullptr}}) EXPECT_EQ(registry.SetRootKey(root), 0);
  EXPECT_EQ(registry.GetRootKey(), HKEY_LOCAL_MACHINE);
}

TEST_F(Registry, SetKeyMovesOnlyToWhatOpens) {
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"A"));
  EXPECT_EQ(registry_.SetKey(Key(L"B"), 0, KEY_READ), 0);
  EXPECT_EQ(registry_.m_nLastError, 2);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"A"));
  EXPECT_EQ(registry_.SetKey(Key(L"B\\C"), 1, KEY_ALL_ACCESS), 1);
  EXPECT_EQ(registry_.m_nLastError, 0);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"B\\C"));
  registry_.m_bLazyWrite = 0;
  EXPECT_EQ(registry_.SetKey(Key(L"a"), 0, KEY_READ | KEY_WOW64_64KEY), 1);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"a"));
  EXPECT_EQ(registry_.CreateKey(L"\\B"), 0);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"a"));
  EXPECT_EQ(registry_.SetKey(L"", 0, 0), 1);
  EXPECT_EQ(registry_.PathIsValid(), 0);
}

TEST_F(Registry, KeysAndValuesAreCountedAndDeleted) {
  EXPECT_EQ(registry_.KeyExists(Key(L"A\\B")), 0);
  EXPECT_EQ(registry_.DeleteKey(Key(L"A\\B")), 1);
  EXPECT_EQ(registry_.CreateKey(Key(L"A\\B")), 1);
  EXPECT_EQ(registry_.CreateKey(Key(L"A\\C")), 1);
  EXPECT_EQ(registry_.KeyExists(Key(L"A\\B")), 1);
  EXPECT_EQ(registry_.KeyExists(Key(L"A\\B"), HKEY_CURRENT_USER), 1);
  EXPECT_EQ(registry_.KeyExists(Key(L"A\\B"), HKEY_LOCAL_MACHINE), 0);
  EXPECT_EQ(registry_.SetKey(Key(L"A"), 0, KEY_READ), 1);
  EXPECT_EQ(registry_.WriteInt(L"v", 1), 1);
  EXPECT_EQ(registry_.GetSubKeyCount(), 2);
  EXPECT_EQ(registry_.GetValueCount(), 1);
  EXPECT_EQ(registry_.DeleteKey(Key(L"A")), 0);
  EXPECT_EQ(registry_.DeleteKey(Key(L"A\\B")), 1);
  EXPECT_EQ(registry_.GetSubKeyCount(), 1);
  EXPECT_EQ(registry_.RenameValue(L"v", L"w"), 0);
  EXPECT_EQ(registry_.ValueExists(L"v"), 1);
  EXPECT_EQ(registry_.DeleteValue(L"v"), 1);
  EXPECT_EQ(registry_.DeleteValue(L"v"), 0);
  EXPECT_EQ(registry_.ValueExists(L"v"), 0);
  EXPECT_EQ(registry_.GetDataSize(L"v"), -1);
  EXPECT_EQ(registry_.GetDataType(L"v"), 0U);
  EXPECT_EQ(registry_.m_nLastError, 2);

  registry_.m_strCurrentPath = Key(L"missing");
  EXPECT_EQ(registry_.GetSubKeyCount(), -1);
  EXPECT_EQ(registry_.GetValueCount(), -1);
  EXPECT_EQ(registry_.GetDataSize(L"v"), -1);
  EXPECT_EQ(registry_.ValueExists(L"v"), 0);
  EXPECT_EQ(registry_.DeleteValue(L"v"), 0);
  EXPECT_EQ(registry_.WriteInt(L"v", 1), 0);
  EXPECT_EQ(registry_.WriteString(L"v", L"x"), 0);
}

TEST_F(Registry, TypedValuesAreStoredAsTheirBytes) {
  registry_.m_bLazyWrite = 0;
  CPoint point{.x = 1, .y = -2};
  CSize size{.cx = 0x01020304, .cy = 5};
  CRect rect{.left = 1, .top = 2, .right = 3, .bottom = -1};
  EXPECT_EQ(registry_.WriteBool(L"bool", 1), 1);
  EXPECT_EQ(registry_.WriteColor(L"color", 0x00FF8001UL), 1);
  EXPECT_EQ(registry_.WriteDword(L"dword", 0xFFFFFFFEUL), 1);
  EXPECT_EQ(registry_.WriteInt(L"int", -2), 1);
  EXPECT_EQ(registry_.WriteFloat(L"float", -1.5), 1);
  EXPECT_EQ(registry_.WriteDateTime(L"time", {.m_dt = 2.0, .m_status = 1}), 1);
  EXPECT_EQ(registry_.WritePoint(L"point", &point), 1);
  EXPECT_EQ(registry_.WriteSize(L"size", &size), 1);
  EXPECT_EQ(registry_.WriteRect(L"rect", &rect), 1);
  EXPECT_EQ(Stored(L"bool"), "\1\0\0\0"s);
  EXPECT_EQ(Stored(L"color"), "\1\x80\xFF\0"s);
  EXPECT_EQ(Stored(L"dword"), "\xFE\xFF\xFF\xFF");
  EXPECT_EQ(Stored(L"int"), "\xFE\xFF\xFF\xFF");
  EXPECT_EQ(Stored(L"float"), "\0\0\0\0\0\0\xF8\xBF"s);
  EXPECT_EQ(Stored(L"time"), "\0\0\0\0\0\0\0\x40\1\0\0\0\0\0\0\0"s);
  EXPECT_EQ(Stored(L"point"), "\1\0\0\0\xFE\xFF\xFF\xFF"s);
  EXPECT_EQ(Stored(L"size"), "\4\3\2\1\5\0\0\0"s);
  EXPECT_EQ(Stored(L"rect"), "\1\0\0\0\2\0\0\0\3\0\0\0\xFF\xFF\xFF\xFF"s);
  for (const wchar_t* name :
       {L"bool", L"color", L"dword", L"int", L"float", L"time", L"point", L"size", L"rect"})
    EXPECT_EQ(registry_.GetDataType(name), 3U);
  EXPECT_EQ(registry_.GetDataSize(L"rect"), 16);

  EXPECT_EQ(registry_.ReadBool(L"bool", 0), 1);
  EXPECT_EQ(registry_.ReadColor(L"color", 0), 0x00FF8001UL);
  EXPECT_EQ(registry_.ReadDword(L"DWORD", 0), 0xFFFFFFFEUL);
  EXPECT_EQ(registry_.ReadInt(L"int", 0), -2);
  EXPECT_EQ(registry_.ReadFloat(L"float", 0), -1.5);
  EXPECT_EQ(registry_.ReadDateTime(L"time", {}).m_dt, 2.0);
  EXPECT_EQ(registry_.ReadDateTime(L"time", {}).m_status, 1);
  point = {};
  size = {};
  rect = {};
  EXPECT_EQ(registry_.ReadPoint(L"point", &point), 1);
  EXPECT_EQ(registry_.ReadSize(L"size", &size), 1);
  EXPECT_EQ(registry_.ReadRect(L"rect", &rect), 1);
  EXPECT_TRUE(point.x == 1 && point.y == -2);
  EXPECT_TRUE(size.cx == 0x01020304 && size.cy == 5);
  EXPECT_TRUE(rect.left == 1 && rect.top == 2 && rect.right == 3 && rect.bottom == -1);
}

TEST_F(Registry, TheSizeDecidesAndNotTheType) {
  Store(L"dword", REG_DWORD, "\5\0\0\0"s);
  Store(L"text", REG_SZ, "\6\0\0\0"s);
  Store(L"long", REG_BINARY, std::string(93, '\1'));
  Store(L"short", REG_BINARY, "\1\0\0"s);
  EXPECT_EQ(registry_.ReadInt(L"dword", -1), 5);
  EXPECT_EQ(registry_.ReadDword(L"text", 1), 6U);
  for (const wchar_t* name : {L"long", L"short", L"missing"}) {
    EXPECT_EQ(registry_.ReadBool(name, 8), 8);
    EXPECT_EQ(registry_.ReadColor(name, 9), 9U);
    EXPECT_EQ(registry_.ReadInt(name, -1), -1);
    EXPECT_EQ(registry_.ReadFloat(name, 0.5), 0.5);
    EXPECT_EQ(registry_.ReadDateTime(name, {.m_dt = 3, .m_status = 2}).m_status, 2);
    CPoint point{.x = 1, .y = 2};
    CSize size{.cx = 3, .cy = 4};
    CRect rect{.left = 5, .top = 6, .right = 7, .bottom = 8};
    CFont font;
    EXPECT_EQ(registry_.ReadPoint(name, &point), 0);
    EXPECT_EQ(registry_.ReadSize(name, &size), 0);
    EXPECT_EQ(registry_.ReadRect(name, &rect), 0);
    EXPECT_EQ(registry_.ReadFont(name, &font), 0);
    EXPECT_TRUE(point.y == 2 && size.cy == 4 && rect.bottom == 8);
  }
  EXPECT_EQ(registry_.ReadPoint(L"dword", nullptr), 0);
  EXPECT_EQ(registry_.WriteRect(L"dword", nullptr), 0);
}

TEST_F(Registry, FontsAreStoredAsTheirDescription) {
  LOGFONTW description{};
  description.lfHeight = -12;
  description.lfWeight = 700;
  description.lfItalic = 1;
  description.lfCharSet = 1;
  constexpr std::string_view kFace = "Arial";
  std::copy(kFace.begin(), kFace.end(), description.lfFaceName);
  CFont font;
  EXPECT_EQ(registry_.WriteFont(L"font", &font), 0);
  ASSERT_EQ(font.Create(description), 1);
  EXPECT_EQ(registry_.WriteFont(L"font", &font), 1);
  EXPECT_EQ(registry_.GetDataSize(L"font"), 92);
  EXPECT_EQ(Stored(L"font").substr(0, 4), "\xF4\xFF\xFF\xFF");
  EXPECT_EQ(Stored(L"font").substr(28, 6), "A\0r\0i\0"s);

  CFont read;
  description.lfHeight = 99;
  ASSERT_EQ(read.Create(description), 1);
  EXPECT_EQ(registry_.ReadFont(L"font", &read), 1);
  LOGFONTW found{};
  ASSERT_EQ(read.GetLogFont(&found), 1);
  EXPECT_EQ(found.lfHeight, -12);
  EXPECT_EQ(found.lfWeight, 700);
  EXPECT_EQ(std::memcmp(found.lfFaceName, description.lfFaceName, sizeof found.lfFaceName), 0);
  read.Detach();
  EXPECT_EQ(read.GetLogFont(&found), 0);
  EXPECT_EQ(registry_.WriteFont(L"font", nullptr), 0);
  EXPECT_EQ(registry_.ReadFont(L"font", nullptr), 0);
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
    EXPECT_EQ(registry_.WriteString(L"v", each.text), 1);
    EXPECT_EQ(Stored(L"v"), each.stored);
    EXPECT_EQ(registry_.ReadString(L"v", L"?"), each.read);
    EXPECT_EQ(registry_.GetDataType(L"v"), 1U);
  }
  EXPECT_EQ(registry_.WriteString(L"v", CString(L'x', 254)), 1);
  EXPECT_EQ(registry_.ReadString(L"v", L"?"), CString(L'x', 127));
  for (const int length : {255, 300}) EXPECT_EQ(registry_.WriteString(L"w", CString(L'x', length)), 0);
  EXPECT_EQ(registry_.ValueExists(L"w"), 0);
}

TEST_F(Registry, ReadStringTakesTextUpTo126Characters) {
  Store(L"expand", REG_EXPAND_SZ, RegistryBytes(L"%TEMP%\\a"));
  Store(L"dword", REG_DWORD, "a\0\0\0"s);
  Store(L"binary", REG_BINARY, RegistryBytes(L"a"));
  Store(L"126", REG_SZ, RegistryBytes(CString(L'x', 126)));
  Store(L"127", REG_SZ, RegistryBytes(CString(L'x', 127)));
  EXPECT_EQ(registry_.ReadString(L"expand", L"?"), L"%TEMP%\\a");
  EXPECT_EQ(registry_.ReadString(L"dword", L"?"), L"?");
  EXPECT_EQ(registry_.ReadString(L"binary", L"?"), L"?");
  EXPECT_EQ(registry_.m_nLastError, 0);
  EXPECT_EQ(registry_.ReadString(L"126", L"?"), CString(L'x', 126));
  EXPECT_EQ(registry_.m_nLastError, 0);
  EXPECT_EQ(registry_.ReadString(L"127", L"?"), L"?");
  EXPECT_EQ(registry_.m_nLastError, 234);
  EXPECT_EQ(registry_.ReadString(L"missing", L"?"), L"?");
  EXPECT_EQ(registry_.m_nLastError, 2);
}

TEST_F(Registry, ReadStringKey3264FindsWhatOnlyThe64BitViewHas) {
  {
    RegistryKey key;
    ASSERT_EQ(key.Create(HKEY_LOCAL_MACHINE, Key(L"X"), KEY_ALL_ACCESS | KEY_WOW64_64KEY), kRegistryDone);
    ASSERT_EQ(key.Write(L"Path", REG_SZ, RegistryBytes(L"C:\\64")), kRegistryDone);
  }
  EXPECT_EQ(registry_.SetRootKey(HKEY_LOCAL_MACHINE), 1);
  EXPECT_EQ(registry_.ReadStringKey3264(Key(L"X"), L"Path", L"?"), L"C:\\64");
  EXPECT_EQ(registry_.m_nLastError, 0);
  EXPECT_EQ(registry_.ReadStringKey3264(Key(L"X"), L"missing", L"?"), L"?");
  EXPECT_EQ(registry_.ReadStringKey3264(Key(L"Y"), L"Path", L"?"), L"?");
  EXPECT_EQ(registry_.m_nLastError, 2);
  EXPECT_EQ(registry_.GetCurrentPath(), Key(L"A"));

  // What both views can open is read in the first.
  const CString name = Base().Mid(Base().Find(L'\\'));
  ASSERT_TRUE(SetRegistryText(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Wow6432Node" + name, L"Path", L"C:\\32"));
  EXPECT_EQ(registry_.ReadStringKey3264(L"Software\\Wow6432Node" + name, L"Path", L"?"), L"C:\\32");
  EXPECT_EQ(DeleteRegistryKey(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Wow6432Node" + name), kRegistryDone);
  RegistryKey key;
  ASSERT_EQ(key.Open(HKEY_LOCAL_MACHINE, Key(L"X"), KEY_ALL_ACCESS | KEY_WOW64_64KEY), kRegistryDone);
  EXPECT_EQ(key.Delete(L"Path"), kRegistryDone);
}

}  // namespace
}  // namespace velmora
