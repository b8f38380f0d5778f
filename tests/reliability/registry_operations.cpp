// The registry. On Windows it is the system's, which no watch stands before: there only the results of a run
// without trouble are looked at.
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

// What a failing disk may answer; never that the file is damaged or a key missing.
std::vector<std::string> Errors(std::initializer_list<int> results) {
  std::vector<std::string> errors;
  for (const int error : results) errors.push_back(std::to_string(error));
  return errors;
}

// One change of the swept key.
template <class Change>
std::string InKey(int lazy, Change change) {
  CRegistry registry;
  registry.m_bLazyWrite = lazy;
  if (registry.SetKey(kKey, 1, KEY_ALL_ACCESS) == 0) return "0";
  return std::to_string(change(registry));
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

void AddRegistryOperations(std::vector<Operation>* operations) {
  const auto add = [&](Operation operation) {
    operation.registry = Registry::kSweptKey;
    operations->push_back(std::move(operation));
  };
  add({.name = "SetATextOfTheRegistry",
       .covers = "SetRegistryText",
       .prepare = PrepareRegistry,
       .run = [](Scene&) {
         return std::to_string(SetRegistryText(kUserRoot, kKey, L"text", L"new") ? 1 : 0);
       }});
  add({.name = "MakeTheRegistry",
       .covers = "RegistryKey::Create RegistryKey::Write RegistryKey::Flush",
       .prepare = [](Scene&) {},
       .run =
           [](Scene&) {
             RegistryKey key;
             int result = key.Create(kUserRoot, kKey + L"\\made", KEY_ALL_ACCESS);
             if (result == kRegistryDone) result = key.Write(L"value", REG_BINARY, std::string(20'000, 'v'));
             if (result == kRegistryDone) result = key.Flush();
             return std::to_string(result);
           },
       .done = "0",
       .failures =
           Errors({kRegistryDiskFull, kRegistryCannotOpen, kRegistryCannotRead, kRegistryCannotWrite}),
       .several = true});
  add({.name = "DeleteAValueOfAnOpenKey",
       .covers = "RegistryKey::Delete",
       .prepare = PrepareRegistry,
       .run =
           [](Scene&) {
             RegistryKey key;
             int result = key.Open(kUserRoot, kKey, KEY_ALL_ACCESS);
             if (result == kRegistryDone) result = key.Delete(L"text");
             return std::to_string(result);
           },
       .done = "0",
       .failures = Errors({kRegistryDiskFull, kRegistryCannotOpen, kRegistryCannotRead})});
  add({.name = "DeleteAKeyOfTheRegistry",
       .covers = "DeleteRegistryKey",
       .prepare = PrepareRegistry,
       .run = [](Scene&) { return std::to_string(DeleteRegistryKey(kUserRoot, kKey + L"\\empty")); },
       .done = "0",
       .failures = Errors({kRegistryDiskFull, kRegistryCannotOpen, kRegistryCannotRead}),
       .several = true});
  add({.name = "WriteEveryKindOfValue",
       .covers = "CRegistry::SetKey CRegistry::WriteBool CRegistry::WriteColor CRegistry::WriteDword "
                 "CRegistry::WriteInt "
                 "CRegistry::WriteFloat CRegistry::WriteDateTime CRegistry::WritePoint CRegistry::WriteSize "
                 "CRegistry::WriteRect CRegistry::WriteFont CRegistry::WriteString",
       .prepare = PrepareRegistry,
       .run = [](Scene&) { return InKey(1, WriteAll); },
       .several = true});
  add({.name = "WriteAValueToTheDisk",
       .covers = "CRegistry::WriteInt",
       .prepare = PrepareRegistry,
       .run = [](Scene&) { return InKey(0, [](CRegistry& r) { return r.WriteInt(L"text", 7); }); }});
  add({.name = "CreateAKey", .covers = "CRegistry::CreateKey", .prepare = PrepareRegistry, .run = [](Scene&) {
         return std::to_string(CRegistry().CreateKey(kKey + L"\\made"));
       }});
  add({.name = "DeleteAKey",
       .covers = "CRegistry::DeleteKey",
       .prepare = PrepareRegistry,
       .run = [](Scene&) { return std::to_string(CRegistry().DeleteKey(kKey + L"\\empty")); },
       .failures = {"0", "1"},  // one that cannot be opened counts as missing
       .several = true});
  add({.name = "DeleteAValue",
       .covers = "CRegistry::DeleteValue",
       .prepare = PrepareRegistry,
       .run = [](Scene&) { return InKey(1, [](CRegistry& r) { return r.DeleteValue(L"text"); }); }});
}

}  // namespace velmora::testing
