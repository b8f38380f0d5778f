// The registry. On Windows its calls do not pass the disk hook: only runs without failures are checked there.
#include "tests/reliability/operations.h"
#include "velmora/environment/registry.h"
#include "velmora/platform/registry_store.h"

namespace velmora::testing {
namespace {

const HKEY kUserRoot = HKEY_CURRENT_USER;
const CString kKey = kSweptKey;

void PrepareRegistry(Scene&) {
  EXPECT_TRUE(SetRegistryText(kUserRoot, kKey, L"text", L"old"));
  EXPECT_TRUE(SetRegistryText(kUserRoot, kKey, L"other", L"stays"));
  EXPECT_TRUE(SetRegistryText(kUserRoot, kKey + L"\\empty", L"", L"old"));
}

int MakeKey(Scene&) {
  RegistryKey key;
  int result = key.Create(kUserRoot, kKey + L"\\made", KEY_ALL_ACCESS);
  if (result == kRegistryDone) result = key.Write(L"value", REG_BINARY, std::string(20'000, 'v'));
  return result == kRegistryDone ? key.Flush() : result;
}

int DeleteOfOpenKey(Scene&) {
  RegistryKey key;
  const int result = key.Open(kUserRoot, kKey, KEY_ALL_ACCESS);
  return result == kRegistryDone ? key.Delete(L"text") : result;
}

// One change of the swept key; 0 when it cannot be opened.
int InKey(int lazy, int (*change)(CRegistry&)) {
  CRegistry registry;
  registry.m_bLazyWrite = lazy;
  return registry.SetKey(kKey, 1, KEY_ALL_ACCESS) == 0 ? 0 : change(registry);
}

// All kinds of values; 0 when one could not be stored.
int WriteAll(CRegistry& r) {
  CPoint point{.x = 1, .y = 2};
  CSize size{.cx = 3, .cy = 4};
  CRect rect{.left = 5, .top = 6, .right = 7, .bottom = 8};
  CFont font;
  LOGFONTW description{};
  description.lfHeight = 12;
  font.Create(description);
  const bool all =
      r.WriteBool(L"bool", 1) != 0 && r.WriteColor(L"color", 2) != 0 && r.WriteDword(L"dword", 3) != 0 &&
      r.WriteInt(L"int", 4) != 0 && r.WriteFloat(L"float", 0.5) != 0 &&
      r.WriteDateTime(L"date", {.m_dt = 2, .m_status = 0}) != 0 && r.WritePoint(L"point", &point) != 0 &&
      r.WriteSize(L"size", &size) != 0 && r.WriteRect(L"rect", &rect) != 0 &&
      r.WriteFont(L"font", &font) != 0 && r.WriteString(L"text", L"new") != 0;
  return all ? 1 : 0;
}

}  // namespace

Operations RegistryOperations() {
  // Of a failing disk; it never counts as a damaged file or a missing key.
  const std::vector<std::string> errors = {AsText(kRegistryDiskFull), AsText(kRegistryCannotOpen),
                                           AsText(kRegistryCannotRead)};
  std::vector<std::string> writing_errors = errors;
  writing_errors.push_back(AsText(kRegistryCannotWrite));
  const std::vector<std::string> zero = {"0"};
  Operations operations = {
      {"SetATextOfTheRegistry", PrepareRegistry,
       [](Scene&) { return SetRegistryText(kUserRoot, kKey, L"text", L"new"); }},
      {"MakeTheRegistry", Nothing, MakeKey, "0", writing_errors, true},
      {"DeleteAValueOfAnOpenKey", PrepareRegistry, DeleteOfOpenKey, "0", errors},
      {"DeleteAKeyOfTheRegistry", PrepareRegistry,
       [](Scene&) { return DeleteRegistryKey(kUserRoot, kKey + L"\\empty"); }, "0", errors, true},
      {"WriteEveryKindOfValue", PrepareRegistry, [](Scene&) { return InKey(1, WriteAll); }, "1", zero, true},
      {"WriteAValueToTheDisk", PrepareRegistry,
       [](Scene&) { return InKey(0, [](CRegistry& r) { return r.WriteInt(L"text", 7); }); }},
      {"CreateAKey", PrepareRegistry, [](Scene&) { return CRegistry().CreateKey(kKey + L"\\made"); }},
      {"DeleteAKey",
       PrepareRegistry,
       [](Scene&) { return CRegistry().DeleteKey(kKey + L"\\empty"); },
       "1",
       {"0", "1"},  // one that cannot be opened counts as missing
       true},
      {"DeleteAValue", PrepareRegistry,
       [](Scene&) { return InKey(1, [](CRegistry& r) { return r.DeleteValue(L"text"); }); }}};
  for (Operation& operation : operations) operation.registry = Registry::kSweptKey;
  return operations;
}

}  // namespace velmora::testing
