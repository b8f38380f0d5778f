#include "velmora/environment/registry.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include "velmora/platform/registry_store.h"

namespace velmora {
namespace {

constexpr size_t kTextBuffer = 255;  // bytes
constexpr size_t kTooLong = 255;     // UTF-16 units
constexpr size_t kUnit = 2;          // bytes of a UTF-16 unit

constexpr int AsFlag(int result) { return result == kRegistryDone ? 1 : 0; }

// Puts values into a row of bytes and takes them out again, the low byte first.
class Packer {
 public:
  explicit Packer(char* at) : at_(at) {}

  Packer& operator<<(std::uint64_t value) { return Put(value, 8); }
  Packer& operator<<(std::uint32_t value) { return Put(value, 4); }
  Packer& operator<<(int value) { return *this << static_cast<std::uint32_t>(value); }
  Packer& operator<<(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return *this << bits;
  }

 private:
  Packer& Put(std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i) *at_++ = static_cast<char>(value >> (8 * i));
    return *this;
  }

  char* at_;
};

class Unpacker {
 public:
  explicit Unpacker(const char* at) : at_(at) {}

  std::uint64_t Take(int count) {
    std::uint64_t value = 0;
    for (int i = 0; i < count; ++i) value |= std::uint64_t{static_cast<unsigned char>(*at_++)} << (8 * i);
    return value;
  }
  std::uint32_t Dword() { return static_cast<std::uint32_t>(Take(4)); }
  int Int() { return static_cast<int>(Dword()); }
  double Double() {
    const std::uint64_t bits = Take(8);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

 private:
  const char* at_;
};

template <size_t kSize>
std::optional<std::array<char, kSize>> ReadFixed(const CRegistry& registry, const CString& name) {
  std::array<char, kSize> bytes{};
  size_t size = 0;
  RegistryKey key;
  if (key.Open(registry.m_hRootKey, registry.m_strCurrentPath, KEY_READ) != kRegistryDone ||
      key.Read(name, bytes, &size) != kRegistryDone || size != kSize)
    return std::nullopt;
  return bytes;
}

int WriteBytes(const CRegistry& registry, const CString& name, unsigned type, std::string_view bytes) {
  RegistryKey key;
  if (key.Open(registry.m_hRootKey, registry.m_strCurrentPath, KEY_WRITE) != kRegistryDone ||
      key.Write(name, type, bytes) != kRegistryDone)
    return 0;
  if (registry.m_bLazyWrite == 0) key.Flush();
  return 1;
}

template <size_t kSize>
int WriteFixed(const CRegistry& registry, const CString& name, const std::array<char, kSize>& bytes) {
  return WriteBytes(registry, name, REG_BINARY, std::string_view(bytes.data(), kSize));
}

std::optional<std::uint32_t> ReadWord(const CRegistry& registry, const CString& name) {
  const auto bytes = ReadFixed<4>(registry, name);
  if (!bytes) return std::nullopt;
  return Unpacker(bytes->data()).Dword();
}

int WriteWord(const CRegistry& registry, const CString& name, std::uint32_t value) {
  std::array<char, 4> bytes{};
  Packer(bytes.data()) << value;
  return WriteFixed(registry, name, bytes);
}

// The text of a value that fits the buffer; its type does not matter here.
int ReadText(const RegistryKey& key, const CString& name, CString* text) {
  std::array<char, kTextBuffer> bytes{};
  size_t size = 0;
  const int result = key.Read(name, bytes, &size);
  if (result == kRegistryDone) *text = RegistryText(std::string_view(bytes.data(), size));
  return result;
}

struct Counts {
  int keys;
  int values;
};
// Nothing for a key that cannot be opened for everything.
std::optional<Counts> CountsOf(HKEY root, const CString& path) {
  RegistryKey key;
  unsigned keys = 0;
  unsigned values = 0;
  if (key.Open(root, path, KEY_ALL_ACCESS) != kRegistryDone || key.Count(&keys, &values) != kRegistryDone)
    return std::nullopt;
  return Counts{static_cast<int>(keys), static_cast<int>(values)};
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
  const auto counts = CountsOf(m_hRootKey, m_strCurrentPath);
  return counts ? counts->keys : -1;
}

int CRegistry::GetValueCount() {
  const auto counts = CountsOf(m_hRootKey, m_strCurrentPath);
  return counts ? counts->values : -1;
}

int CRegistry::RenameValue(const CString& /*from*/, const CString& /*to*/) { return 0; }

int CRegistry::ReadBool(const CString& name, int otherwise) { return ReadInt(name, otherwise); }

unsigned long CRegistry::ReadColor(const CString& name, unsigned long otherwise) {
  return ReadDword(name, otherwise);
}

unsigned long CRegistry::ReadDword(const CString& name, unsigned long otherwise) {
  const auto value = ReadWord(*this, name);
  return value ? *value : otherwise;
}

int CRegistry::ReadInt(const CString& name, int otherwise) {
  const auto value = ReadWord(*this, name);
  return value ? static_cast<int>(*value) : otherwise;
}

double CRegistry::ReadFloat(const CString& name, double otherwise) {
  const auto bytes = ReadFixed<8>(*this, name);
  return bytes ? Unpacker(bytes->data()).Double() : otherwise;
}

COleDateTime CRegistry::ReadDateTime(const CString& name, COleDateTime otherwise) {
  const auto bytes = ReadFixed<sizeof(COleDateTime)>(*this, name);
  if (!bytes) return otherwise;
  Unpacker from(bytes->data());
  COleDateTime value;
  value.m_dt = from.Double();
  value.m_status = from.Int();
  return value;
}

int CRegistry::ReadPoint(const CString& name, CPoint* point) {
  const auto bytes = ReadFixed<8>(*this, name);
  if (!bytes || point == nullptr) return 0;
  Unpacker from(bytes->data());
  point->x = from.Int();
  point->y = from.Int();
  return 1;
}

int CRegistry::ReadSize(const CString& name, CSize* size) {
  CPoint both;
  if (size == nullptr || ReadPoint(name, &both) == 0) return 0;
  *size = {.cx = both.x, .cy = both.y};
  return 1;
}

int CRegistry::ReadRect(const CString& name, CRect* rect) {
  const auto bytes = ReadFixed<16>(*this, name);
  if (!bytes || rect == nullptr) return 0;
  Unpacker from(bytes->data());
  for (int* edge : {&rect->left, &rect->top, &rect->right, &rect->bottom}) *edge = from.Int();
  return 1;
}

int CRegistry::ReadFont(const CString& name, CFont* font) {
  const auto bytes = ReadFixed<sizeof(LOGFONTW)>(*this, name);
  if (!bytes || font == nullptr) return 0;
  LOGFONTW description{};
  std::memcpy(&description, bytes->data(), sizeof description);
  *std::rbegin(description.lfFaceName) = 0;
  CFont made;
  if (made.Create(description) == 0) return 0;
  // Others may still draw with the old one.
  font->Detach();
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
  return WriteWord(*this, name, static_cast<std::uint32_t>(value));
}

int CRegistry::WriteInt(const CString& name, int value) {
  return WriteWord(*this, name, static_cast<std::uint32_t>(value));
}

int CRegistry::WriteFloat(const CString& name, double value) {
  std::array<char, 8> bytes{};
  Packer(bytes.data()) << value;
  return WriteFixed(*this, name, bytes);
}

int CRegistry::WriteDateTime(const CString& name, COleDateTime value) {
  std::array<char, sizeof(COleDateTime)> bytes{};
  Packer(bytes.data()) << value.m_dt << value.m_status;
  return WriteFixed(*this, name, bytes);
}

int CRegistry::WritePoint(const CString& name, CPoint* point) {
  if (point == nullptr) return 0;
  std::array<char, 8> bytes{};
  Packer(bytes.data()) << point->x << point->y;
  return WriteFixed(*this, name, bytes);
}

int CRegistry::WriteSize(const CString& name, CSize* size) {
  if (size == nullptr) return 0;
  CPoint both{.x = size->cx, .y = size->cy};
  return WritePoint(name, &both);
}

int CRegistry::WriteRect(const CString& name, CRect* rect) {
  if (rect == nullptr) return 0;
  std::array<char, 16> bytes{};
  Packer(bytes.data()) << rect->left << rect->top << rect->right << rect->bottom;
  return WriteFixed(*this, name, bytes);
}

int CRegistry::WriteFont(const CString& name, CFont* font) {
  LOGFONTW description{};
  if (font == nullptr || font->GetLogFont(&description) == 0) return 0;
  std::array<char, sizeof description> bytes{};
  std::memcpy(bytes.data(), &description, bytes.size());
  return WriteFixed(*this, name, bytes);
}

int CRegistry::WriteString(const CString& name, const CString& value) {
  const std::string bytes = RegistryBytes(value);
  const size_t units = bytes.size() / kUnit;  // with the end mark
  if (units == 0 || units - 1 >= kTooLong) return 0;
  // The number of characters given as that of bytes: readers of the suite rely on what is stored so.
  return WriteBytes(*this, name, REG_SZ, std::string_view(bytes).substr(0, units));
}

}  // namespace velmora
