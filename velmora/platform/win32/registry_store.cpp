#include "velmora/platform/registry_store.h"

#include <algorithm>

#include "velmora/text/letters.h"

namespace velmora {
namespace {

static_assert(kRegistryDone == ERROR_SUCCESS && kRegistryNotFound == ERROR_FILE_NOT_FOUND &&
              kRegistryDenied == ERROR_ACCESS_DENIED && kRegistryBadRoot == ERROR_INVALID_HANDLE &&
              kRegistryNoMemory == ERROR_OUTOFMEMORY && kRegistryBadArgument == ERROR_INVALID_PARAMETER &&
              kRegistryDiskFull == ERROR_DISK_FULL && kRegistryBadPath == ERROR_BAD_PATHNAME &&
              kRegistryBusy == ERROR_BUSY && kRegistryMoreData == ERROR_MORE_DATA &&
              kRegistryDamaged == ERROR_BADDB && kRegistryCannotOpen == ERROR_CANTOPEN &&
              kRegistryCannotRead == ERROR_CANTREAD && kRegistryCannotWrite == ERROR_CANTWRITE &&
              kRegistryKeyDeleted == ERROR_KEY_DELETED);

constexpr size_t kLongestValueName = 16383;
constexpr DWORD kMostBytes = 0x7FFFFFFF;

// The system would cut the name at the zero.
bool HasZero(const CString& text) { return text.Find(L'\0') >= 0; }

BYTE* AsBytes(char* bytes) { return reinterpret_cast<BYTE*>(bytes); }

}  // namespace

struct RegistryKey::System {
  System() = default;
  System(const System&) = delete;
  System& operator=(const System&) = delete;
  ~System() { RegCloseKey(key); }

  HKEY key = nullptr;
};

RegistryKey::RegistryKey() = default;
RegistryKey::~RegistryKey() = default;
RegistryKey::RegistryKey(RegistryKey&&) noexcept = default;
RegistryKey& RegistryKey::operator=(RegistryKey&&) noexcept = default;

int RegistryKey::Open(HKEY root, const CString& path, int access) {
  Close();
  if (HasZero(path)) return kRegistryBadArgument;
  auto opened = std::make_unique<System>();
  const LSTATUS result = RegOpenKeyExW(root, path, 0, static_cast<REGSAM>(access), &opened->key);
  if (result == ERROR_SUCCESS) system_ = std::move(opened);
  return result;
}

int RegistryKey::Create(HKEY root, const CString& path, int access) {
  Close();
  if (HasZero(path)) return kRegistryBadArgument;
  auto made = std::make_unique<System>();
  const LSTATUS result = RegCreateKeyExW(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         static_cast<REGSAM>(access), nullptr, &made->key, nullptr);
  if (result == ERROR_SUCCESS) system_ = std::move(made);
  return result;
}

void RegistryKey::Close() { system_.reset(); }

int RegistryKey::Describe(const CString& name, unsigned* type, size_t* size) const {
  if (!system_) return kRegistryBadRoot;
  if (HasZero(name)) return kRegistryNotFound;
  DWORD found_type = 0;
  DWORD found_size = 0;
  const LSTATUS result = RegQueryValueExW(system_->key, name, nullptr, &found_type, nullptr, &found_size);
  if (result != ERROR_SUCCESS) return result;
  if (type != nullptr) *type = found_type;
  if (size != nullptr) *size = found_size;
  return result;
}

int RegistryKey::Read(const CString& name, std::span<char> buffer, size_t* size) const {
  if (!system_) return kRegistryBadRoot;
  if (HasZero(name)) return kRegistryNotFound;
  // Without a buffer the system would only return the size.
  char nothing = 0;
  BYTE* into = AsBytes(buffer.empty() ? &nothing : buffer.data());
  auto bytes = static_cast<DWORD>(std::min<size_t>(buffer.size(), kMostBytes));
  const LSTATUS result = RegQueryValueExW(system_->key, name, nullptr, nullptr, into, &bytes);
  *size = bytes;
  return result;
}

int RegistryKey::Write(const CString& name, unsigned type, std::string_view bytes) {
  if (!system_) return kRegistryBadRoot;
  if (HasZero(name) || bytes.size() > kMostBytes) return kRegistryBadArgument;
  // For text without a terminating zero the system reads beyond the bytes and includes a zero that it finds
  // there; the frame prevents that.
  std::string framed(2, '\0');
  framed.append(bytes).append(4, '\x01');
  return RegSetValueExW(system_->key, name, 0, type, AsBytes(framed.data() + 2),
                        static_cast<DWORD>(bytes.size()));
}

int RegistryKey::Delete(const CString& name) {
  if (!system_) return kRegistryBadRoot;
  if (HasZero(name)) return kRegistryNotFound;
  return RegDeleteValueW(system_->key, name);
}

int RegistryKey::Count(unsigned* keys, unsigned* values) const {
  if (!system_) return kRegistryBadRoot;
  DWORD key_count = 0;
  DWORD value_count = 0;
  const LSTATUS result = RegQueryInfoKeyW(system_->key, nullptr, nullptr, nullptr, &key_count, nullptr,
                                          nullptr, &value_count, nullptr, nullptr, nullptr, nullptr);
  *keys = key_count;
  *values = value_count;
  return result;
}

int RegistryKey::ListKeys(std::vector<CString>* names) const {
  names->clear();
  if (!system_) return kRegistryBadRoot;
  for (DWORD index = 0;; ++index) {
    wchar_t name[512] = L"";
    DWORD length = 512;
    const LSTATUS result =
        RegEnumKeyExW(system_->key, index, name, &length, nullptr, nullptr, nullptr, nullptr);
    if (result == ERROR_NO_MORE_ITEMS) break;
    if (result != ERROR_SUCCESS) return result;
    names->push_back(name);
  }
  std::sort(names->begin(), names->end(),
            [](const CString& a, const CString& b) { return CompareNoCase(a.GetView(), b.GetView()) < 0; });
  return kRegistryDone;
}

int RegistryKey::ListValues(std::vector<StoredValue>* values) const {
  values->clear();
  if (!system_) return kRegistryBadRoot;
  std::wstring name(kLongestValueName + 1, L'\0');
  std::string bytes(256, '\0');
  for (DWORD index = 0;;) {
    auto length = static_cast<DWORD>(name.size());
    auto size = static_cast<DWORD>(bytes.size());
    DWORD type = 0;
    const LSTATUS result = RegEnumValueW(system_->key, index, name.data(), &length, nullptr, &type,
                                         AsBytes(bytes.data()), &size);
    if (result == ERROR_NO_MORE_ITEMS) break;
    if (result == ERROR_MORE_DATA && size > bytes.size()) {
      bytes.resize(size);
      continue;
    }
    if (result != ERROR_SUCCESS) return result;
    values->push_back({.name = CString(name.c_str()), .type = type, .bytes = bytes.substr(0, size)});
    ++index;
  }
  std::sort(values->begin(), values->end(), [](const StoredValue& a, const StoredValue& b) {
    return CompareNoCase(a.name.GetView(), b.name.GetView()) < 0;
  });
  return kRegistryDone;
}

int RegistryKey::Flush() { return system_ ? RegFlushKey(system_->key) : kRegistryBadRoot; }

std::string RegistryFile() { return {}; }

int DeleteRegistryKey(HKEY root, const CString& path) {
  if (HasZero(path)) return kRegistryBadArgument;
  // The system would try to delete the root.
  if (path.IsEmpty()) return kRegistryDenied;
  return RegDeleteKeyW(root, path);
}

}  // namespace velmora
