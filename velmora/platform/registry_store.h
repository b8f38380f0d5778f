// The registry: a tree of keys below a few roots, each with named, typed values. Names compare without regard
// to letter case and keep the spelling with which they were created.
//
// On Windows it is the system's. On other systems it is an SQLite database: the file named by the environment
// variable VELMORA_REGISTRY, else velmora/registry.db in the user's data folder ($XDG_DATA_HOME, else
// ~/.local/share). The first write creates it and its folders; an empty file counts as missing. Any number of
// programs may use it at the same time, and a killed program does not damage it. Local disks only: WAL mode
// uses shared memory. The roots are separate trees; on Windows some show parts of others.
//
// Below HKEY_LOCAL_MACHINE\SOFTWARE there are two views, for 32-bit and for 64-bit programs:
//
//   key                               access without a flag   KEY_WOW64_32KEY   KEY_WOW64_64KEY
//   SOFTWARE\Name                     32-bit (*)              32-bit            64-bit
//   SOFTWARE\Wow6432Node\Name         32-bit                  32-bit            32-bit
//
// (*) As for the suite's 32-bit programs. A 64-bit program on Windows gets the 64-bit view; to find the same
// key in both, give the view or spell out Wow6432Node.
#ifndef VELMORA_PLATFORM_REGISTRY_STORE_H_
#define VELMORA_PLATFORM_REGISTRY_STORE_H_

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/export.h"
#include "velmora/platform/types.h"
#include "velmora/text/string.h"

namespace velmora {

// Every operation returns 0 or an error number of Windows, on every system. These are the numbers that the
// database returns; Windows has more.
inline constexpr int kRegistryDone = 0;      // success
inline constexpr int kRegistryNotFound = 2;  // no such key or value
inline constexpr int kRegistryDenied =
    5;  // access not requested in Open; write-protected; a key with sub-keys
inline constexpr int kRegistryBadRoot = 6;    // not one of the roots; a key that is not open
inline constexpr int kRegistryNoMemory = 14;  // memory ran out
inline constexpr int kRegistryBadArgument =
    87;                                        // a name that is too long or not valid text; a value too large
inline constexpr int kRegistryDiskFull = 112;  // nothing was written
inline constexpr int kRegistryBadPath = 161;   // begins with a backslash
inline constexpr int kRegistryBusy = 170;      // locked by other programs for over a minute
inline constexpr int kRegistryMoreData = 234;  // the buffer is too small
inline constexpr int kRegistryDamaged = 1009;  // the file is damaged or not a registry database
inline constexpr int kRegistryCannotOpen = 1011;   // the path is a folder or a device
inline constexpr int kRegistryCannotRead = 1012;   // disk error
inline constexpr int kRegistryCannotWrite = 1013;  // the file cannot be created
inline constexpr int kRegistryKeyDeleted = 1018;   // since it was opened

// The registry's file; empty on Windows and where the user's data folder is unknown.
std::string RegistryFile();

// A value of a key.
struct StoredValue {
  CString name;       // spelled as when it was first written; empty: the key's default value
  unsigned type = 0;  // REG_SZ, ...
  std::string bytes;  // as stored; RegistryText for text
};

// An open key, closed by the destructor. Reading never creates or changes anything. Not thread-safe.
class VELMORA_API RegistryKey {
 public:
  RegistryKey();   // not open: every operation but Open and Create returns kRegistryBadRoot
  ~RegistryKey();  // as Close
  // Takes over the other's open key; the other is not open then. @{
  RegistryKey(RegistryKey&&) noexcept;
  RegistryKey& operator=(RegistryKey&&) noexcept;
  // @}

  // Opens the key `path` below the root; its parts are separated by one or more backslashes, and an empty
  // path is the root. `access` (KEY_READ, ...) decides which operations are permitted; write access to a
  // registry that cannot be written fails here. Closes the previous key first.
  int Open(HKEY root, const CString& path, int access);
  // The same; creates the key and missing keys above it.
  int Create(HKEY root, const CString& path, int access);
  void Close();  // does nothing when no key is open

  // Type and size in bytes of a value; the empty name is the key's default value. Either output may be
  // null.
  int Describe(const CString& name, unsigned* type, size_t* size) const;
  // Reads a value into the buffer. *size is the number of bytes read; with kRegistryMoreData the number
  // needed.
  int Read(const CString& name, std::span<char> buffer, size_t* size) const;
  // Stores a value of a type (REG_SZ, ...), or replaces it.
  int Write(const CString& name, unsigned type, std::string_view bytes);
  // Deletes a value; kRegistryNotFound when there is none.
  int Delete(const CString& name);

  // How many keys stand directly below this one, and how many values it has.
  int Count(unsigned* keys, unsigned* values) const;
  // The keys directly below, or the key's values, by name without regard to letter case. @{
  int ListKeys(std::vector<CString>* names) const;
  int ListValues(std::vector<StoredValue>* values) const;
  // @}

  // Flushes everything written to the disk.
  int Flush();

 private:
  struct System;
  std::unique_ptr<System> system_;
};

// Deletes the key and its values, in the view of an access without a flag. A key with sub-keys is not
// deleted: kRegistryDenied.
VELMORA_API int DeleteRegistryKey(HKEY root, const CString& path);

// The bytes of a REG_SZ value: UTF-16 with a terminating zero, empty for invalid text.
VELMORA_API std::string RegistryBytes(const CString& text);
// Its text: the whole characters before the zero or the end.
VELMORA_API CString RegistryText(std::string_view bytes);

// Stores the text as a REG_SZ value; a missing key is created. False when the text is not valid or the
// registry cannot be written.
VELMORA_API bool SetRegistryText(HKEY root, const CString& path, const CString& name, const CString& value);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_REGISTRY_STORE_H_
