#include "velmora/environment/registry.h"

#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <string_view>

#include "velmora/platform/registry_store.h"

namespace velmora {
namespace {

constexpr size_t kTextBuffer = 255;  // bytes
constexpr size_t kTooLong = 255;     // UTF-16 units
constexpr size_t kUnit = 2;          // bytes of a UTF-16 unit

// Values are stored as they lie in memory.
static_assert(std::endian::native == std::endian::little);

// COleDateTime without padding of undefined content.
struct StoredDateTime {
  double days;
  std::int32_t status;
  std::int32_t zero;
};

constexpr int AsFlag(int result) { return result == kRegistryDone ? 1 : 0; }

template <class Value>
std::optional<Value> ReadFixed(const CRegistry& registry, const CString& name) {
  std::array<char, sizeof(Value)> bytes{};
  size_t size = 0;
  RegistryKey key;
  if (key.Open(registry.m_hRootKey, registry.m_strCurrentPath, KEY_READ) != kRegistryDone ||
      key.Read(name, bytes, &size) != kRegistryDone || size != sizeof(Value))
    return std::nullopt;
  return std::bit_cast<Value>(bytes);
}

template <class Value>
int ReadInto(const CRegistry& registry, const CString& name, Value* value) {
  const auto read = ReadFixed<Value>(registry, name);
  if (!read || value == nullptr) return 0;
  *value = *read;
  return 1;
}

int WriteBytes(const CRegistry& registry, const CString& name, unsigned type, std::string_view bytes) {
  RegistryKey key;
  if (key.Open(registry.m_hRootKey, registry.m_strCurrentPath, KEY_WRITE) != kRegistryDone ||
      key.Write(name, type, bytes) != kRegistryDone)
    return 0;
  if (registry.m_bLazyWrite == 0) key.Flush();
  return 1;
}

template <class Value>
int WriteFixed(const CRegistry& registry, const CString& name, const Value& value) {
  const auto bytes = std::bit_cast<std::array<char, sizeof(Value)>>(value);
  return WriteBytes(registry, name, REG_BINARY, std::string_view(bytes.data(), bytes.size()));
}

template <class Value>
int WriteFrom(const CRegistry& registry, const CString& name, const Value* value) {
  return value == nullptr ? 0 : WriteFixed(registry, name, *value);
}

// The text of a value of any type that fits the buffer.
int ReadText(const RegistryKey& key, const CString& name, CString* text) {
  std::array<char, kTextBuffer> bytes{};
  size_t size = 0;
  const int result = key.Read(name, bytes, &size);
  if (result == kRegistryDone) *text = RegistryText(std::string_view(bytes.data(), size));
  return result;
}

struct Counts {
  unsigned keys = 0;
  unsigned values = 0;
};
// Nothing for a key that cannot be opened with KEY_ALL_ACCESS.
std::optional<Counts> CountsOf(const CRegistry& registry) {
  RegistryKey key;
  Counts counts;
  if (key.Open(registry.m_hRootKey, registry.m_strCurrentPath, KEY_ALL_ACCESS) != kRegistryDone ||
      key.Count(&counts.keys, &counts.values) != kRegistryDone)
    return std::nullopt;
  return counts;
}

}  // namespace

CRegistry::CRegistry() : m_nLastError(0), m_hRootKey(HKEY_CURRENT_USER), m_bLazyWrite(1) {}

CRegistry::~CRegistry() { ClearKey(); }

int CRegistry::ClearKey() {
  m_strCurrentPath.Empty();
  m_hRootKey = HKEY_CURRENT_USER;
  m_bLazyWrite = 1;
  return 1;
}

int CRegistry::SetRootKey(HKEY root) {
  if (root != HKEY_CLASSES_ROOT && root != HKEY_CURRENT_USER && root != HKEY_LOCAL_MACHINE &&
      root != HKEY_USERS)
    return 0;
  m_hRootKey = root;
  return 1;
}

HKEY CRegistry::GetRootKey() const { return m_hRootKey; }

CString CRegistry::GetCurrentPath() const { return m_strCurrentPath; }

int CRegistry::PathIsValid() const { return m_strCurrentPath.IsEmpty() ? 0 : 1; }

int CRegistry::SetKey(const CString& path, int canCreate, int access) {
  if (path.IsEmpty()) {
    m_strCurrentPath.Empty();
    return 1;
  }
  RegistryKey key;
  m_nLastError = canCreate != 0 ? key.Create(m_hRootKey, path, access) : key.Open(m_hRootKey, path, access);
  if (m_nLastError != kRegistryDone) return 0;
  m_strCurrentPath = path;
  if (m_bLazyWrite == 0) key.Flush();
  return 1;
}

int CRegistry::CreateKey(const CString& path) {
  RegistryKey key;
  if (key.Create(m_hRootKey, path, KEY_ALL_ACCESS) != kRegistryDone) return 0;
  if (m_bLazyWrite == 0) key.Flush();
  m_strCurrentPath = path;
  return 1;
}

int CRegistry::DeleteKey(const CString& path) {
  return KeyExists(path) == 0 ? 1 : AsFlag(DeleteRegistryKey(m_hRootKey, path));
}

int CRegistry::DeleteValue(const CString& name) {
  RegistryKey key;
  if (key.Open(m_hRootKey, m_strCurrentPath, KEY_SET_VALUE) != kRegistryDone) return 0;
  return AsFlag(key.Delete(name));
}

int CRegistry::KeyExists(const CString& path, HKEY parent) {
  RegistryKey key;
  return AsFlag(key.Open(parent == nullptr ? m_hRootKey : parent, path, KEY_ALL_ACCESS));
}

int CRegistry::ValueExists(const CString& name) {
  RegistryKey key;
  if (key.Open(m_hRootKey, m_strCurrentPath, KEY_ALL_ACCESS) != kRegistryDone) return 0;
  return AsFlag(key.Describe(name, nullptr, nullptr));
}

int CRegistry::GetDataSize(const CString& name) {
  RegistryKey key;
  size_t size = 0;
  if (key.Open(m_hRootKey, m_strCurrentPath, KEY_READ) != kRegistryDone ||
      key.Describe(name, nullptr, &size) != kRegistryDone)
    return -1;
  return static_cast<int>(size);
}

unsigned long CRegistry::GetDataType(const CString& name) {
  RegistryKey key;
  unsigned type = 0;
  m_nLastError = key.Open(m_hRootKey, m_strCurrentPath, KEY_READ);
  if (m_nLastError == kRegistryDone) m_nLastError = key.Describe(name, &type, nullptr);
  return m_nLastError == kRegistryDone ? type : 0;
}

int CRegistry::GetSubKeyCount() {
  const auto counts = CountsOf(*this);
  return counts ? static_cast<int>(counts->keys) : -1;
}

int CRegistry::GetValueCount() {
  const auto counts = CountsOf(*this);
  return counts ? static_cast<int>(counts->values) : -1;
}

int CRegistry::RenameValue(const CString& /*from*/, const CString& /*to*/) { return 0; }

int CRegistry::ReadBool(const CString& name, int otherwise) { return ReadInt(name, otherwise); }

unsigned long CRegistry::ReadColor(const CString& name, unsigned long otherwise) {
  return ReadDword(name, otherwise);
}

unsigned long CRegistry::ReadDword(const CString& name, unsigned long otherwise) {
  const auto value = ReadFixed<std::uint32_t>(*this, name);
  return value ? *value : otherwise;
}

int CRegistry::ReadInt(const CString& name, int otherwise) {
  return ReadFixed<int>(*this, name).value_or(otherwise);
}

double CRegistry::ReadFloat(const CString& name, double otherwise) {
  return ReadFixed<double>(*this, name).value_or(otherwise);
}

COleDateTime CRegistry::ReadDateTime(const CString& name, COleDateTime otherwise) {
  const auto value = ReadFixed<StoredDateTime>(*this, name);
  return value ? COleDateTime{.m_dt = value->days, .m_status = value->status} : otherwise;
}

int CRegistry::ReadPoint(const CString& name, CPoint* point) { return ReadInto(*this, name, point); }
int CRegistry::ReadSize(const CString& name, CSize* size) { return ReadInto(*this, name, size); }
int CRegistry::ReadRect(const CString& name, CRect* rect) { return ReadInto(*this, name, rect); }

int CRegistry::ReadFont(const CString& name, CFont* font) {
  auto description = ReadFixed<LOGFONTW>(*this, name);
  if (!description || font == nullptr) return 0;
  *std::rbegin(description->lfFaceName) = 0;
  CFont made;
  if (made.Create(*description) == 0) return 0;
  font->Detach();  // the old font may still be in use
  *font = std::move(made);
  return 1;
}

CString CRegistry::ReadString(const CString& name, const CString& otherwise) {
  const unsigned long type = GetDataType(name);
  if (type != REG_SZ && type != REG_EXPAND_SZ) return otherwise;
  RegistryKey key;
  CString text;
  m_nLastError = key.Open(m_hRootKey, m_strCurrentPath, KEY_READ);
  if (m_nLastError == kRegistryDone) m_nLastError = ReadText(key, name, &text);
  return m_nLastError == kRegistryDone ? text : otherwise;
}

CString CRegistry::ReadStringKey3264(const CString& subkey, const CString& name, const CString& otherwise) {
  RegistryKey key;
  CString text;
  m_nLastError = key.Open(m_hRootKey, subkey, KEY_READ);
  if (m_nLastError != kRegistryDone) m_nLastError = key.Open(m_hRootKey, subkey, KEY_READ | KEY_WOW64_64KEY);
  if (m_nLastError == kRegistryDone) m_nLastError = ReadText(key, name, &text);
  return m_nLastError == kRegistryDone ? text : otherwise;
}

int CRegistry::WriteBool(const CString& name, int value) { return WriteInt(name, value); }

int CRegistry::WriteColor(const CString& name, unsigned long value) { return WriteDword(name, value); }

int CRegistry::WriteDword(const CString& name, unsigned long value) {
  return WriteFixed(*this, name, static_cast<std::uint32_t>(value));
}

int CRegistry::WriteInt(const CString& name, int value) { return WriteFixed(*this, name, value); }

int CRegistry::WriteFloat(const CString& name, double value) { return WriteFixed(*this, name, value); }

int CRegistry::WriteDateTime(const CString& name, COleDateTime value) {
  return WriteFixed(*this, name, StoredDateTime{.days = value.m_dt, .status = value.m_status, .zero = 0});
}

int CRegistry::WritePoint(const CString& name, CPoint* point) { return WriteFrom(*this, name, point); }
int CRegistry::WriteSize(const CString& name, CSize* size) { return WriteFrom(*this, name, size); }
int CRegistry::WriteRect(const CString& name, CRect* rect) { return WriteFrom(*this, name, rect); }

int CRegistry::WriteFont(const CString& name, CFont* font) {
  LOGFONTW description{};
  if (font == nullptr || font->GetLogFont(&description) == 0) return 0;
  return WriteFixed(*this, name, description);
}

int CRegistry::WriteString(const CString& name, const CString& value) {
  const std::string bytes = RegistryBytes(value);
  const size_t units = bytes.size() / kUnit;  // with the end mark
  if (units == 0 || units - 1 >= kTooLong) return 0;
  // Required oddity: the number of characters is stored as the number of bytes; the suite's readers rely on
  // it.
  return WriteBytes(*this, name, REG_SZ, std::string_view(bytes).substr(0, units));
}

}  // namespace velmora
