#include <cstdint>

#include "cli/context/registry_error.h"
#include "cli/env/commands.h"
#include "cli/terminal/error.h"
#include "cli/terminal/questions.h"
#include "velmora/platform/registry_store.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

struct KeyPath {
  HKEY root;
  CString path;
};

// "HKLM\SOFTWARE\Name", the root in its long or short form, with slashes or backslashes.
KeyPath ParseKeyPath(const std::string& text) {
  const struct {
    const wchar_t* name;
    HKEY root;
  } kRoots[] = {{L"HKLM", HKEY_LOCAL_MACHINE},
                {L"HKCU", HKEY_CURRENT_USER},
                {L"HKCR", HKEY_CLASSES_ROOT},
                {L"HKU", HKEY_USERS},
                {L"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
                {L"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
                {L"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
                {L"HKEY_USERS", HKEY_USERS}};
  std::wstring path(FromUtf8(text).GetView());
  for (wchar_t& c : path) c = c == L'/' ? L'\\' : c;
  const size_t cut = std::min(path.find(L'\\'), path.size());
  for (const auto& root : kRoots)
    if (EqualNoCase(path.substr(0, cut), root.name))
      return {root.root, CString(std::wstring_view(path).substr(std::min(cut + 1, path.size())))};
  throw Refusal(Quoted(text) + " names no root; start with HKLM\\, HKCU\\, HKCR\\ or HKU\\");
}

std::string TypeName(unsigned type) {
  switch (type) {
    case REG_SZ:
      return "text";
    case REG_EXPAND_SZ:
      return "expandable text";
    case REG_BINARY:
      return "binary";
    case REG_DWORD:
      return "dword";
    default:
      return "type " + std::to_string(type);
  }
}

std::string ValueText(const StoredValue& value) {
  if (value.type == REG_SZ || value.type == REG_EXPAND_SZ) return ToUtf8(RegistryText(value.bytes));
  if (value.type == REG_DWORD && value.bytes.size() == 4) {
    std::uint32_t number = 0;
    for (size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(value.bytes[i]);
    return std::to_string(number);
  }
  std::string hex;
  for (const char byte : value.bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    const auto b = static_cast<unsigned char>(byte);
    hex += hex.empty() ? "" : " ";
    hex += kDigits[b >> 4];
    hex += kDigits[b & 15];
  }
  return hex;
}

void Check(int error, const std::string& where) {
  if (error != kRegistryDone) throw Refusal(At(where, RegistryErrorText(error)));
}

std::vector<StoredValue> ValuesOf(const EnvOptions& options, std::vector<CString>* keys) {
  const KeyPath at = ParseKeyPath(options.key);
  RegistryKey key;
  Check(key.Open(at.root, at.path, KEY_READ), options.key);
  std::vector<StoredValue> values;
  Check(key.ListValues(&values), options.key);
  if (keys != nullptr) Check(key.ListKeys(keys), options.key);
  return values;
}

}  // namespace

void RegistryGet(const EnvOptions& options) {
  const CString name = FromUtf8(options.section);
  for (const StoredValue& value : ValuesOf(options, nullptr)) {
    if (!EqualNoCase(value.name.GetView(), name.GetView())) continue;
    OutputFile output;
    output.Write(ValueText(value) + "\n");
    output.Finish();
    return;
  }
  throw Refusal(At(options.key, "has no value " + Quoted(options.section)));
}

void RegistrySet(const EnvOptions& options) {
  const KeyPath at = ParseKeyPath(options.key);
  if (!SetRegistryText(at.root, at.path, FromUtf8(options.section), FromUtf8(options.value))) {
    RegistryKey key;
    int error = key.Open(at.root, at.path, KEY_WRITE);
    // A key that is not there could not be made either.
    if (error == kRegistryNotFound) error = kRegistryCannotWrite;
    throw Refusal(At(options.key, "cannot be written: " +
                                      RegistryErrorText(error == kRegistryDone ? kRegistryDenied : error)));
  }
}

void RegistryDelete(const EnvOptions& options) {
  const KeyPath at = ParseKeyPath(options.key);
  RegistryKey key;
  if (!options.section.empty()) {
    Check(key.Open(at.root, at.path, KEY_WRITE), options.key);
    const int error = key.Delete(FromUtf8(options.section));
    if (error == kRegistryNotFound) throw Refusal(At(options.key, "has no value " + Quoted(options.section)));
    Check(error, options.key);
    return;
  }
  unsigned keys = 0;
  unsigned values = 0;
  Check(key.Open(at.root, at.path, KEY_READ), options.key);
  Check(key.Count(&keys, &values), options.key);
  key.Close();
  if (at.path.IsEmpty()) throw Refusal(At(options.key, "is a root and cannot be deleted"));
  if (keys > 0) throw Refusal(At(options.key, "has sub-keys; delete them first"));
  Confirm(At(options.key, "delete this key and its values?"), options.yes);
  Check(DeleteRegistryKey(at.root, at.path), options.key);
}

void RegistryList(const EnvOptions& options) {
  std::vector<CString> keys;
  const std::vector<StoredValue> values = ValuesOf(options, &keys);
  OutputFile output(options.output.file, {});
  RecordWriter records(output, options.output.Format(),
                       {{"name", "name"}, {"type", "type"}, {"value", "value"}});
  for (const CString& key : keys) records.Row({ToUtf8(key), std::string("key"), {}});
  for (const StoredValue& value : values)
    records.Row({ToUtf8(value.name), TypeName(value.type), ValueText(value)});
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
