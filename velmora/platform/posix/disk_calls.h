// The system calls that change or read the disk. All of them are made here, with the hook of disk_hook.h
// around each. They return -1 and set errno on failure; interrupted calls are repeated.
#ifndef VELMORA_PLATFORM_POSIX_DISK_CALLS_H_
#define VELMORA_PLATFORM_POSIX_DISK_CALLS_H_

#include <sys/types.h>

#include <span>
#include <string>
#include <string_view>

#include "velmora/platform/posix/file_descriptor.h"

namespace velmora {

// A name in an open folder.
struct FolderEntry {
  FileDescriptor folder;
  std::string folder_path;  // for the hook only
  std::string name;
};

int OpenToRead(const std::string& path, int more_flags);
// `path` is for the hook only.
ssize_t ReadSome(int fd, const std::string& path, std::span<char> buffer);

int CreateNew(const FolderEntry& entry, mode_t mode);
// Returns how much was written, at least one byte.
ssize_t WriteSome(int fd, const FolderEntry& entry, std::string_view bytes);
int FlushToDisk(int fd, const FolderEntry& entry);
int RenameOver(const FolderEntry& from, const FolderEntry& to);
// Fails when the name exists.
int RenameToFreeName(const FolderEntry& from, const FolderEntry& to);
int RemoveName(const FolderEntry& entry);
// The same for a signal handler: without the hook.
int RemoveNameInHandler(int folder, const char* name);
// Flushes the folder's names to the disk.
int FlushFolder(const FolderEntry& entry);

int RemoveFile(const std::string& path);
int RemoveFolder(const std::string& path);
// Flushes the new folder's name to the disk.
int MakeOneFolder(const std::string& path, mode_t mode);
// Creates a folder and the missing ones above it, accessible to the user only, as the XDG rules for user data
// require. True when the folder exists afterwards.
bool MakeFolders(const std::string& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_DISK_CALLS_H_
