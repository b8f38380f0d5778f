// Typed values of a registry key. An object holds a root and a path; every call opens the key and closes it.
//
//   CRegistry registry;
//   if (registry.SetKey(L"Software\\Quorval\\Zennik", 1, KEY_ALL_ACCESS)) registry.WriteInt(L"Width", 640);
//   const int width = registry.ReadInt(L"Width", 800);   // 800 when it is missing
//
// Values are stored as little-endian bytes on every system (platform/registry_store.h). No operation shows a
// message or throws.
#ifndef VELMORA_ENVIRONMENT_REGISTRY_H_
#define VELMORA_ENVIRONMENT_REGISTRY_H_

#include "velmora/export.h"
#include "velmora/platform/gdi_types.h"
#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// Results are 1 on success and 0 on failure, except where noted. Names of values and paths compare without
// regard to letter case. Not thread-safe.
class VELMORA_API CRegistry {
 public:
  CRegistry();   // as after ClearKey, with m_nLastError 0
  ~CRegistry();  // the key stays as it is
  // A copy has the same root, path and flags; they are then independent. @{
  CRegistry(const CRegistry&) = default;
  CRegistry& operator=(const CRegistry&) = default;
  // @}

  // --- keys

  // Back to HKEY_CURRENT_USER, an empty path and lazy writing. Always 1.
  int ClearKey();
  // HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE or HKEY_USERS; any other changes nothing.
  int SetRootKey(HKEY root);
  HKEY GetRootKey() const;         // m_hRootKey
  CString GetCurrentPath() const;  // m_strCurrentPath: below the root, empty for the root itself
  // Whether there is a current path.
  int PathIsValid() const;
  // Makes `path` current when it can be opened with that access (which may include KEY_WOW64_64KEY or
  // KEY_WOW64_32KEY), or created with `canCreate`. An empty path is always accepted. On failure the current
  // path is unchanged.
  int SetKey(const CString& path, int canCreate, int access);
  // Creates the key and missing keys above it, and makes it current; a key that exists is made current.
  int CreateKey(const CString& path);
  // Deletes a key below the root with its values. 1 also when there is no such key; 0 when it has sub-keys. A
  // key that cannot be opened with KEY_ALL_ACCESS counts as missing, here and in KeyExists and ValueExists.
  int DeleteKey(const CString& path);
  // Deletes a value of the current key; 0 also when there is none.
  int DeleteValue(const CString& name);
  // Whether there is a key of this path below the root `parent` (null: m_hRootKey).
  int KeyExists(const CString& path, HKEY parent = nullptr);
  // Whether the current key has a value of this name.
  int ValueExists(const CString& name);
  // The size of a value in bytes; -1 on failure.
  int GetDataSize(const CString& name);
  // The type of a value: REG_SZ, ...; 0 on failure.
  unsigned long GetDataType(const CString& name);
  // The number of keys directly below the current one, and of its values; -1 on failure. @{
  int GetSubKeyCount();
  int GetValueCount();
  // @}
  // Does nothing and returns 0.
  int RenameValue(const CString& from, const CString& to);

  // --- values

  // Read a value of a fixed size, of any stored type: 4 bytes, 8 (ReadFloat, ReadPoint, ReadSize) or 16
  // (ReadDateTime, ReadRect). When the value is missing or of another size, the functions with `otherwise`
  // return that; the others return 1, or 0 with the object unchanged. A null pointer gives 0. @{
  int ReadBool(const CString& name, int otherwise);
  unsigned long ReadColor(const CString& name, unsigned long otherwise);
  unsigned long ReadDword(const CString& name, unsigned long otherwise);
  int ReadInt(const CString& name, int otherwise);
  double ReadFloat(const CString& name, double otherwise);
  COleDateTime ReadDateTime(const CString& name, COleDateTime otherwise);
  int ReadPoint(const CString& name, CPoint* point);
  int ReadSize(const CString& name, CSize* size);
  int ReadRect(const CString& name, CRect* rect);
  // @}
  // Creates the font that a value of 92 bytes describes (LOGFONTW). Returns 1, or 0 with the object
  // unchanged. The object's previous font is detached, not deleted.
  int ReadFont(const CString& name, CFont* font);

  // The text of a REG_SZ or REG_EXPAND_SZ value (not expanded); at most 126 characters, a longer one gives
  // `otherwise`, too.
  CString ReadString(const CString& name, const CString& otherwise);
  // The same from the key `subkey` below the root, of a value of any type; the current path is not used.
  // Tries the 64-bit view when the key cannot be opened, not when it lacks the value.
  CString ReadStringKey3264(const CString& subkey, const CString& name, const CString& otherwise);

  // Store a value of the same sizes in the current key, which must exist. Return 1; 0 when it was not stored,
  // for a null pointer and for a font object without a font. @{
  int WriteBool(const CString& name, int value);
  int WriteColor(const CString& name, unsigned long value);
  int WriteDword(const CString& name, unsigned long value);
  int WriteInt(const CString& name, int value);
  int WriteFloat(const CString& name, double value);
  int WriteDateTime(const CString& name, COleDateTime value);
  int WritePoint(const CString& name, CPoint* point);
  int WriteSize(const CString& name, CSize* size);
  int WriteRect(const CString& name, CRect* rect);
  int WriteFont(const CString& name, CFont* font);
  // @}
  // Stores a text. 1; 0 when it was not stored, also for one of 255 characters or more. About the first half
  // of it is stored; SetRegistryText stores all.
  int WriteString(const CString& name, const CString& value);

  // 0 or an error number (platform/registry_store.h): the result of the last SetKey, GetDataType, ReadString
  // or ReadStringKey3264.
  int m_nLastError;
  HKEY m_hRootKey;           // HKEY_CURRENT_USER after construction
  int m_bLazyWrite;          // 0: every write is flushed to the disk
  CString m_strCurrentPath;  // below the root
};

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_REGISTRY_H_
