// The calls to the system that change the disk or read from it. No other source makes them: each passes
// the watch (velmora/platform/disk_watch.h).
//
// Like the system's own they return -1 and set errno on failure. A call that a signal interrupts is made
// again.
#ifndef VELMORA_PLATFORM_POSIX_DISK_CALLS_H_
#define VELMORA_PLATFORM_POSIX_DISK_CALLS_H_

#include <sys/types.h>

#include <span>
#include <string>
#include <string_view>

#include "velmora/platform/posix/file_descriptor.h"

namespace velmora {

// A name in an open folder.
struct Place {
  FileDescriptor folder;
  std::string folder_path;  // for the watch only
  std::string name;
};

int OpenToRead(const std::string& path, int more_flags);
// `path` is for the watch only.
ssize_t ReadSome(int fd, const std::string& path, std::span<char> buffer);

int CreateNew(const Place& place, mode_t mode);
// How much was written, at least one byte.
ssize_t WriteSome(int fd, const Place& place, std::string_view bytes);
int FlushToDisk(int fd, const Place& place);
int RenameOver(const Place& from, const Place& to);
// Fails when something has the name.
int RenameToFreeName(const Place& from, const Place& to);
int RemoveName(const Place& place);
// Makes what happened to the names in the folder last.
int FlushFolder(const Place& place);

int RemoveFile(const std::string& path);
int RemoveFolder(const std::string& path);
// The new folder's name is on the disk when this returns.
int MakeOneFolder(const std::string& path, mode_t mode);
// Creates a folder and the missing ones above it, accessible to the user only, as the XDG rules for user data
// require. True when the folder exists afterwards.
bool MakeFolders(const std::string& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_DISK_CALLS_H_
