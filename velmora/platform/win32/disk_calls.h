// The calls to the system that change the disk or read from it. No other source makes them, but for the
// system's own private profiles: each passes the watch (velmora/platform/disk_watch.h).
//
// Like the system's own they leave the reason of a failure in GetLastError.
#ifndef VELMORA_PLATFORM_WIN32_DISK_CALLS_H_
#define VELMORA_PLATFORM_WIN32_DISK_CALLS_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "velmora/platform/win32/system_file.h"

namespace velmora {

FileHandle OpenToRead(const wchar_t* path);
// -1 on failure. `path` is for the watch only.
std::int64_t ReadSome(HANDLE file, const std::wstring& path, std::span<char> buffer);

// Open without sharing.
FileHandle CreateNew(const std::wstring& path);
// How much was written, 0 on failure. `path` is for the watch only, here and below.
size_t WriteSome(HANDLE file, const std::wstring& path, std::string_view bytes);
bool FlushToDisk(HANDLE file, const std::wstring& path);
// Also when somebody reads the file that has the name, where the system can do that.
bool RenameOpenFile(HANDLE file, const std::wstring& path, const std::wstring& name, bool replace);
bool RemoveOpenFile(HANDLE file, const std::wstring& path);

bool RemoveFile(const wchar_t* path);
bool RemoveFolder(const wchar_t* path);
bool MakeOneFolder(const wchar_t* path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_WIN32_DISK_CALLS_H_
