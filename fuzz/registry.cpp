// The registry: any bytes as a value, read as every type; and any file as its database.
// Argument: the value's type.
#include "velmora/environment/registry.h"

#include <functional>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/platform/files.h"
#include "velmora/platform/registry_store.h"

namespace velmora::fuzz {
namespace {

constexpr wchar_t kKey[] = L"Software\\Fuzz";
constexpr wchar_t kValue[] = L"Value";
constexpr int kLongestString = 126;

// Reads the value as one type: each call opens the registry.
void ReadAs(unsigned which, const CString& name) {
  CRegistry registry;
  registry.SetKey(kKey, 0, KEY_READ);
  CPoint point;
  CSize size;
  CRect rect;
  CFont font;
  const std::function<void()> kReads[] = {
      [&] { registry.ReadBool(name, 0); },       [&] { registry.ReadDword(name, 0); },
      [&] { registry.ReadFloat(name, 0); },      [&] { registry.ReadDateTime(name, {}); },
      [&] { registry.ReadPoint(name, &point); }, [&] { registry.ReadSize(name, &size); },
      [&] { registry.ReadRect(name, &rect); },   [&] { registry.ReadFont(name, &font); },
  };
  kReads[which % std::size(kReads)]();
  Require(registry.ReadString(name, L"").GetLength() <= kLongestString, "a text has a limit");
}

}  // namespace

void Run(const Input& input) {
  const std::string& bytes = input.File();
  const bool is_database = bytes.starts_with("SQLite format 3");
  if (is_database) {
    for (const wchar_t* name : {L"registry.db-wal", L"registry.db-shm"}) RemoveWholeFile(Scratch(name));
    Put(L"registry.db", bytes);
  }
  RegistryKey key;
  const int made = key.Create(HKEY_CURRENT_USER, kKey, KEY_ALL_ACCESS);
  if (!is_database) {
    Require(made == kRegistryDone, "the key is made");
    const auto type = static_cast<unsigned>(input.Bytes(0).empty() ? 0 : input.Bytes(0)[0] & 0x7F);
    Require(key.Write(kValue, type, bytes) == kRegistryDone, "every value can be written");
    std::string read(bytes.size(), '\0');
    size_t size = 0;
    Require(key.Read(kValue, read, &size) == kRegistryDone && read == bytes, "what was written is read");
    ReadAs(type, kValue);
    return;
  }
  std::vector<StoredValue> values;
  std::vector<CString> keys;
  unsigned counts[2];
  key.Count(&counts[0], &counts[1]);
  key.ListKeys(&keys);
  key.ListValues(&values);
  for (const StoredValue& value : values) ReadAs(value.type, value.name);
  if (key.Write(kValue, REG_SZ, "ab") == kRegistryDone) ReadAs(REG_SZ, kValue);
  key.Delete(kValue);
  key.Close();
  DeleteRegistryKey(HKEY_CURRENT_USER, kKey);
  for (const wchar_t* name : {L"registry.db", L"registry.db-wal", L"registry.db-shm"})
    RemoveWholeFile(Scratch(name));
}

}  // namespace velmora::fuzz
