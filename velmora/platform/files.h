// Files and folders. Paths are the suite's, with backslashes; posix/native_path.h translates them for other
// systems.
//
// No function throws or shows a message; false is a failure. A file that another program replaces at the same
// time is read as the whole old or the whole new file.
#ifndef VELMORA_PLATFORM_FILES_H_
#define VELMORA_PLATFORM_FILES_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

class NewFile;

// What a name leads to.
enum class FileKind {
  kFile,    // regular
  kFolder,  // a folder
  kOther,   // pipe, terminal or device
};

// Local time with the summer time rule of the file's own day, as the system's listings show it.
struct FileTime {
  int year = 0;    // 2026, ...
  int month = 0;   // 1 to 12
  int day = 0;     // 1 to 31
  int hour = 0;    // 0 to 23
  int minute = 0;  // 0 to 59
  int second = 0;  // 0 to 59
};

// What the system knows about a file or folder.
struct FileStatus {
  FileKind kind = FileKind::kFile;  // a file, a folder or neither
  std::uint64_t size = 0;           // bytes; 0 for a folder
  bool write_protected = false;     // the user may not write it; on Windows: read-only
  std::int64_t modified = 0;        // 100 ns since 1601-01-01 UTC, to compare files
  FileTime modified_local;          // the same, for people
};

// An entry of a folder.
struct FoundFile {
  CString name;              // without folder, spelled as on disk
  CString short_name;        // the 8.3 name, empty where there is none
  FileStatus status;         // when the folder was listed
  bool may_be_link = false;  // its RealPath can be in another folder
};

// Nothing when there is no such file or folder. Symbolic links are followed.
VELMORA_API std::optional<FileStatus> GetFileStatus(const CString& path);
// Whether the name leads to anything: a file, a folder, a pipe or a device.
bool FileOrFolderExists(const CString& path);
// Why there is no status. A link that leads nowhere is missing.
enum class NoStatus { kMissing, kNoPermission, kPathTooLong };
// For a name that GetFileStatus finds nothing of.
NoStatus WhyNoStatus(const CString& path);
// Whether there is an ordinary file, or a folder, of this name. @{
inline bool IsFile(const CString& path) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  return status && status->kind == FileKind::kFile;
}
inline bool IsFolder(const CString& path) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  return status && status->kind == FileKind::kFolder;
}
// @}

// The path of the file or folder without links (symbolic ones, and the junctions of Windows), "." and "..";
// also that of a root has no backslash at its end. For comparison with other results of RealPath, not for
// display. Nothing when there is no such entry or a link leads nowhere.
std::optional<CString> RealPath(const CString& path);

// Whether both names lead to one existing file or folder, by whatever names, links and letter case. `a` is
// looked up first and kept open while `b` is.
bool IsSameFile(const CString& a, const CString& b);
// Whether the name leads to the ordinary file that the process reads as its standard input.
bool IsStandardInput(const CString& path);

// Copies a file with its modification time. An existing target is replaced in one step unless
// `keep_existing` is set; on failure it is unchanged.
bool CopyWholeFile(const CString& from, const CString& to, bool keep_existing);
// Deletes a file. False for a write-protected one on every system.
bool RemoveWholeFile(const CString& path);
// Deletes a folder; false when it holds anything.
bool RemoveEmptyFolder(const CString& path);
// Makes one level of folders; false when it exists already or its parent does not.
bool MakeFolder(const CString& path);

// The entries that match `folder\pattern`, on Windows in the order in which the system delivers them,
// elsewhere "." and ".." first and the others by name without regard to case.
// The pattern follows MatchesWildcard. Empty when nothing matches. write_protected reflects
// the entry's own permission bits only.
std::vector<FoundFile> FindFiles(const CString& pattern);
// Whether a name matches a pattern with "*" and "?" by the rules of Windows: without regard to letter case;
// "*.*" matches every name, and "?" may match nothing at the end or before a point.
bool MatchesWildcard(std::wstring_view name, std::wstring_view pattern);

// Reads a file from its start.
class VELMORA_API InputFile {
 public:
  InputFile();   // no open file
  ~InputFile();  // as Close
  // Takes over the other's open file; the other has none then. @{
  InputFile(InputFile&&) noexcept;
  InputFile& operator=(InputFile&&) noexcept;
  // @}

  // Whether pipes, terminals and devices are opened, which may wait for another program.
  enum class Accept { kAnything, kRegularFiles };

  // Opens a file; the previous one is closed. False when it does not exist, is a folder, is not accepted or
  // cannot be read.
  [[nodiscard]] bool Open(const CString& path, Accept accept = Accept::kAnything);
  // Reads the process's standard input, which Close leaves open.
  [[nodiscard]] bool OpenStandardInput();
  // Returns how many bytes were read: 0 at the end of the file, -1 on an error. A short read is not the end.
  [[nodiscard]] std::int64_t Read(std::span<char> buffer);
  // The size in bytes, 0 when it is unknown (a pipe).
  std::uint64_t Size() const;
  void Close();  // without an open file it does nothing

 private:
  struct System;
  std::unique_ptr<System> system_;
};

// Replaces a file's content: writes a new file beside it, which Commit renames over the old one. Without a
// successful Commit the old file, or its absence, is unchanged. After a crash or a power cut the name has the
// whole old or the whole new content.
//
// The new file is in the target's folder, is flushed to the disk before the rename, and gets the permissions
// of the old one; a symbolic link stays a link. Two programs that replace the same file wait for each other,
// up to five seconds, and so do two threads of one program. A thread that has begun a replacement would wait
// for itself: its second Begin for the same file fails at once. The next replacement of the file overwrites
// what a killed program left behind.
//
// Close your own readers of the target first: not every system can replace an open file. Commit waits about
// two seconds for the readers of other programs.
class FileReplacement {
 public:
  FileReplacement();   // nothing begun
  ~FileReplacement();  // as Abandon
  // Takes over the other's replacement; the other has begun none then. @{
  FileReplacement(FileReplacement&&) noexcept;
  FileReplacement& operator=(FileReplacement&&) noexcept;
  // @}

  // Creates the new file. False when the target cannot be opened for writing: it is a folder, it is
  // write-protected (also for users who can override that), its folder is missing or the disk is full.
  // `temporary`, a path on the target's disk, overrides the new file's name.
  [[nodiscard]] bool Begin(const CString& target, const CString& temporary = CString());
  // Appends to the new file, buffered. After one failure all later calls fail, and Commit too.
  [[nodiscard]] bool Write(std::string_view bytes);
  // Flushes the new file to the disk and renames it over the old one. On failure it is removed.
  [[nodiscard]] bool Commit();
  // Removes the new file; the old one stays.
  void Abandon();

 private:
  std::unique_ptr<NewFile> file_;
};

// A whole replacement in one call.
[[nodiscard]] bool ReplaceFileContent(const CString& target, std::string_view bytes);

// What separates the names of a path: backslashes, and slashes on systems that write paths with them.
std::wstring_view PathSeparators();
// A name from the system that begins with a drive where the system itself has none and would take it for a
// relative name: without "." and "..", "C:\a\..\x" as "C:/x". Nothing for any other name.
std::optional<std::string> DrivePath(std::string_view name);
// A name from the system (an argument, an environment variable) as a path of the suite. Bytes that are not
// valid text are preserved.
CString PathFromSystem(std::string_view name);
// The same for a file to be written: where the disk distinguishes letter case, the name is taken as spelled
// and is never the entry that differs from it in letter case only.
CString PathAsSpelled(std::string_view name);
// The path in the system's notation, for messages.
std::string PathForDisplay(const CString& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_FILES_H_
