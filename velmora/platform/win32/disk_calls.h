// The system calls that change or read the disk. All of them are made here, with the hook of disk_hook.h
// around each, except those inside the system's own private profiles. GetLastError gives the reason of a
// failure.
#ifndef VELMORA_PLATFORM_WIN32_DISK_CALLS_H_
#define VELMORA_PLATFORM_WIN32_DISK_CALLS_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "velmora/platform/win32/system_file.h"

namespace velmora {

FileHandle OpenToRead(const wchar_t* path);
// -1 on failure. `path` is for the hook only.
std::int64_t ReadSome(HANDLE file, const std::wstring& path, std::span<char> buffer);

// Open without sharing.
FileHandle CreateNew(const std::wstring& path);
// Returns how much was written, 0 on failure. `path` is for the hook only, here and below.
size_t WriteSome(HANDLE file, const std::wstring& path, std::string_view bytes);
bool FlushToDisk(HANDLE file, const std::wstring& path);
// Where the system can, also when the file of the new name is open for reading.
bool RenameOpenFile(HANDLE file, const std::wstring& path, const std::wstring& name, bool replace);
bool RemoveOpenFile(HANDLE file, const std::wstring& path);

bool RemoveFile(const wchar_t* path);
bool RemoveFolder(const wchar_t* path);
bool MakeOneFolder(const wchar_t* path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_WIN32_DISK_CALLS_H_
