// The registry: keys in a tree below a few roots, each with named values of a type. Names compare
// without regard to letter case and keep the spelling they were made with.
//
// On Windows it is the system's. Elsewhere it is one SQLite database: the file that the environment
// variable VELMORA_REGISTRY names, else velmora/registry.db in the user's data folder
// ($XDG_DATA_HOME, else ~/.local/share). The first write makes it, with its folders; an empty file
// counts as none. Any number of programs may use it at once, and one that is killed leaves it whole.
// It needs a disk of this machine: programs share memory beside it. Each root is a tree of its own in
// it; Windows shows parts of some in others.
//
// Below HKEY_LOCAL_MACHINE\SOFTWARE there are two views, for 32-bit and for 64-bit programs:
//
//   key                               access without a flag   KEY_WOW64_32KEY   KEY_WOW64_64KEY
//   SOFTWARE\Name                     32-bit (*)              32-bit            64-bit
//   SOFTWARE\Wow6432Node\Name         32-bit                  32-bit            32-bit
//
// (*) The suite's programs are 32-bit, and so the database answers as Windows answers them; a 64-bit
// program on Windows gets the 64-bit view there. What must be found by both names its view, or spells
// Wow6432Node.
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

// Every operation returns 0 or an error number of Windows, on every system. These are the ones that
// the database gives; Windows has more.
inline constexpr int kRegistryDone = 0;
inline constexpr int kRegistryNotFound = 2;   // no such key or value
inline constexpr int kRegistryDenied = 5;     // not opened for that; not to be written; a key with sub-keys
inline constexpr int kRegistryBadRoot = 6;    // not one of the roots; a key that is not open
inline constexpr int kRegistryNoMemory = 14;  //
inline constexpr int kRegistryBadArgument = 87;    // a name that is too long or no text, too large a value
inline constexpr int kRegistryDiskFull = 112;      //
inline constexpr int kRegistryBadPath = 161;       // begins with a backslash
inline constexpr int kRegistryBusy = 170;          // others have kept it for longer than a minute
inline constexpr int kRegistryMoreData = 234;      // the buffer is too small
inline constexpr int kRegistryDamaged = 1009;      // the file is no database of ours, or a damaged one
inline constexpr int kRegistryCannotOpen = 1011;   // a folder or a device stands in its place
inline constexpr int kRegistryCannotRead = 1012;   // the disk fails
inline constexpr int kRegistryCannotWrite = 1013;  // it cannot be made there
inline constexpr int kRegistryKeyDeleted = 1018;   // since it was opened

struct StoredValue {
  CString name;
  unsigned type = 0;  // REG_SZ, ...
  std::string bytes;
};

// An open key, closed at the end. Reading never makes or changes anything. For one thread at a time.
class VELMORA_API RegistryKey {
 public:
  RegistryKey();
  ~RegistryKey();
  RegistryKey(RegistryKey&&) noexcept;
  RegistryKey& operator=(RegistryKey&&) noexcept;

  // The key `path` below the root, whose parts are separated by single or repeated backslashes; an
  // empty path is the root itself. `access` is made of KEY_READ and its like and decides what the
  // operations below may do; writing is refused here already when the registry cannot be written. A
  // key that was open before is closed first.
  int Open(HKEY root, const CString& path, int access);
  // The same, and makes the key and those above it when they are missing.
  int Create(HKEY root, const CString& path, int access);
  void Close();

  // Type and size in bytes of a value; the empty name is the key's default value. Either output may be
  // null.
  int Describe(const CString& name, unsigned* type, size_t* size) const;
  // Fills the start of `buffer` and tells how much. On kRegistryMoreData that is what it takes.
  int Read(const CString& name, std::span<char> buffer, size_t* size) const;
  int Write(const CString& name, unsigned type, std::string_view bytes);
  int Delete(const CString& name);

  int Count(unsigned* keys, unsigned* values) const;
  // By name, without regard to letter case.
  int ListKeys(std::vector<CString>* names) const;
  int ListValues(std::vector<StoredValue>* values) const;

  // Returns when what was written is on the disk.
  int Flush();

 private:
  struct System;
  std::unique_ptr<System> system_;
};

// Removes the key with its values, in the view that an access without a flag has. One with sub-keys
// stays: kRegistryDenied.
VELMORA_API int DeleteRegistryKey(HKEY root, const CString& path);

// Text as the bytes of a REG_SZ value, UTF-16 with its end mark (no bytes at all for what is no text),
// and back: the whole characters before the end mark or the end of the bytes.
VELMORA_API std::string RegistryBytes(const CString& text);
VELMORA_API CString RegistryText(std::string_view bytes);

// Stores the whole text as a REG_SZ value and makes the key when it is missing.
VELMORA_API bool SetRegistryText(HKEY root, const CString& path, const CString& name, const CString& value);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_REGISTRY_STORE_H_
