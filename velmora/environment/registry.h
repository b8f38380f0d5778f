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

class VELMORA_API CRegistry {
 public:
  CRegistry();
  ~CRegistry();
  CRegistry(const CRegistry&) = default;
  CRegistry& operator=(const CRegistry&) = default;

  // Keys. Results are 1 on success and 0 on failure, except where noted.

  // Back to HKEY_CURRENT_USER, an empty path and lazy writing. Always 1.
  int ClearKey();
  // HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE or HKEY_USERS; any other changes nothing.
  int SetRootKey(HKEY root);
  HKEY GetRootKey() const;
  CString GetCurrentPath() const;
  // Whether there is a current path.
  int PathIsValid() const;
  // Makes `path` current when it can be opened with that access (which may include KEY_WOW64_64KEY or
  // KEY_WOW64_32KEY), or created with `canCreate`. An empty path is always accepted. On failure the current
  // path is unchanged.
  int SetKey(const CString& path, int canCreate, int access);
  int CreateKey(const CString& path);
  // 1 also when there is no such key; 0 when it has sub-keys. A key that cannot be opened with
  // KEY_ALL_ACCESS counts as missing, here and in KeyExists and ValueExists.
  int DeleteKey(const CString& path);
  int DeleteValue(const CString& name);
  int KeyExists(const CString& path, HKEY parent = nullptr);
  int ValueExists(const CString& name);
  // In bytes; -1 on failure.
  int GetDataSize(const CString& name);
  // REG_SZ, ...; 0 on failure.
  unsigned long GetDataType(const CString& name);
  // -1 on failure.
  int GetSubKeyCount();
  int GetValueCount();
  // Does nothing and returns 0.
  int RenameValue(const CString& from, const CString& to);

  // Values of a fixed size, of any stored type. A value of another size is ignored: the functions with
  // `otherwise` return it, the others return 0 and leave the object unchanged. A null pointer gives 0.
  int ReadBool(const CString& name, int otherwise);
  unsigned long ReadColor(const CString& name, unsigned long otherwise);
  unsigned long ReadDword(const CString& name, unsigned long otherwise);
  int ReadInt(const CString& name, int otherwise);
  double ReadFloat(const CString& name, double otherwise);
  COleDateTime ReadDateTime(const CString& name, COleDateTime otherwise);
  int ReadPoint(const CString& name, CPoint* point);
  int ReadSize(const CString& name, CSize* size);
  int ReadRect(const CString& name, CRect* rect);
  // The object's previous font is detached, not deleted.
  int ReadFont(const CString& name, CFont* font);

  // REG_SZ and REG_EXPAND_SZ (not expanded); at most 126 characters.
  CString ReadString(const CString& name, const CString& otherwise);
  // From the key `subkey` below the root; the current path is not used. Tries the 64-bit view when the key
  // cannot be opened, not when it lacks the value.
  CString ReadStringKey3264(const CString& subkey, const CString& name, const CString& otherwise);

  // 1 when the value was stored.
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
  // Fewer than 255 characters, of which about the first half is stored; SetRegistryText stores all.
  int WriteString(const CString& name, const CString& value);

  int m_nLastError;  // the last result of SetKey, GetDataType, ReadString, ReadStringKey3264
  HKEY m_hRootKey;
  int m_bLazyWrite;          // 0: every write is flushed to the disk
  CString m_strCurrentPath;  // below the root
};

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_REGISTRY_H_
