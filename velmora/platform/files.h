// Files and folders. Paths are the suite's own, with backslashes; on systems that write them otherwise
// they are translated here and nowhere else (posix/native_path.h tells how).
//
// No function throws or shows anything; a failure is false, and says why only where a caller can use
// it. Names that another program may be changing at the same moment are no reason to fail twice: what
// is read is the old file or the new one, whole.
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

enum class FileKind {
  kFile,    // an ordinary file
  kFolder,  //
  kOther,   // a pipe, a terminal, a device
};

// Local time, as the system's own listings show it: that of the file's own day, summer time or not.
struct FileTime {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

struct FileStatus {
  FileKind kind = FileKind::kFile;
  std::uint64_t size = 0;  // bytes; 0 for a folder
  bool write_protected = false;
  std::int64_t modified = 0;  // 100 ns since 1601-01-01 UTC, to compare files
  FileTime modified_local;
};

struct FoundFile {
  CString name;        // without folder, spelled as on disk
  CString short_name;  // the 8.3 name where the system keeps one
  FileStatus status;
};

// Nothing when there is no such file or folder. Symbolic links are followed.
VELMORA_API std::optional<FileStatus> GetFileStatus(const CString& path);
VELMORA_API bool FileOrFolderExists(const CString& path);
// Whether there is an ordinary file (a folder) of this name.
inline bool IsFile(const CString& path) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  return status && status->kind == FileKind::kFile;
}
inline bool IsFolder(const CString& path) {
  const std::optional<FileStatus> status = GetFileStatus(path);
  return status && status->kind == FileKind::kFolder;
}

// Copies a file with its modification time. An existing target is replaced in one step unless
// `keep_existing` is set; on failure it is as it was.
VELMORA_API bool CopyWholeFile(const CString& from, const CString& to, bool keep_existing);
VELMORA_API bool RemoveWholeFile(const CString& path);
VELMORA_API bool RemoveEmptyFolder(const CString& path);
// One level; false when it exists already or its parent does not.
VELMORA_API bool MakeFolder(const CString& path);

// The entries that match `folder\pattern`, "." and ".." first, the others by name without regard to
// case. The pattern follows the Windows rules: "*" any run, "?" any one character or nothing at the
// end, "*.*" every name, case ignored. Nothing found gives an empty list. An entry counts as
// write-protected by its own bits only, whatever the folder or the disk says.
VELMORA_API std::vector<FoundFile> FindFiles(const CString& pattern);
VELMORA_API bool MatchesWildcard(std::wstring_view name, std::wstring_view pattern);

// A file being read from its start.
class VELMORA_API InputFile {
 public:
  InputFile();
  ~InputFile();
  InputFile(InputFile&&) noexcept;
  InputFile& operator=(InputFile&&) noexcept;

  // False when it does not exist, is a folder or cannot be read. Pipes and terminals can.
  [[nodiscard]] bool Open(const CString& path);
  // The process's standard input, left open at the end.
  [[nodiscard]] bool OpenStandardInput();
  // Fills the start of `buffer` and returns how many bytes came: 0 at the end, -1 on a read error.
  // Fewer than asked for is not the end.
  [[nodiscard]] std::int64_t Read(std::span<char> buffer);
  // The size in bytes, 0 when it is not known (a pipe).
  std::uint64_t Size() const;
  void Close();

 private:
  struct System;
  std::unique_ptr<System> system_;
};

// A new content for a file, written beside it and put in its place in one step by Commit. Until then,
// and if Commit is never called or fails, the old file (or its absence) is untouched. At every moment,
// also of a crash or a power cut, the name stands for the whole old or the whole new content.
//
// The new file lies in the target's own folder, is flushed to disk before it takes the name, and gets
// the permissions of the old one; a target that is a symbolic link keeps being one. Two programs that
// replace the same file at once take turns. What a killed program left behind is overwritten by the
// next replacement of that file.
//
// Whoever replaces a file closes their own reader of it first: not every system can give the name of
// a file that is open to another one. Others' readers are waited for, about two seconds.
class VELMORA_API FileReplacement {
 public:
  FileReplacement();
  ~FileReplacement();  // gives up what was not committed
  FileReplacement(FileReplacement&&) noexcept;
  FileReplacement& operator=(FileReplacement&&) noexcept;

  // Makes the new file. False when the target could not be opened for writing: it is a folder, is
  // write-protected (also for a user who could override that), its folder is missing or full. With
  // `temporary` the new file has that name, on the target's disk, instead of one of our own.
  [[nodiscard]] bool Begin(const CString& target, const CString& temporary = CString());
  // Buffered. After one failure all later ones fail and Commit does too.
  [[nodiscard]] bool Write(std::string_view bytes);
  [[nodiscard]] bool Commit();
  // Removes the new file.
  void Abandon();

 private:
  std::unique_ptr<NewFile> file_;
};

// A whole replacement in one call.
[[nodiscard]] VELMORA_API bool ReplaceFileContent(const CString& target, std::string_view bytes);

// A name as the process was given it (an argument, an environment variable) as a path of ours. Bytes
// that are no text survive the way there and back.
VELMORA_API CString PathFromSystem(std::string_view name);
// The same name as the user of this system writes it, for messages.
VELMORA_API std::string PathForDisplay(const CString& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_FILES_H_
