// Text files, line by line. They are written in Windows-1252 with CR LF and read with LF or CR LF; a file
// with a UTF-8 or UTF-16 byte-order mark is read and written in that encoding. The end-of-file character of
// DOS, 1A, ends the text; a rewritten file keeps it and what stands behind it.
#ifndef VELMORA_PLATFORM_TEXT_FILE_H_
#define VELMORA_PLATFORM_TEXT_FILE_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "velmora/export.h"
#include "velmora/platform/files.h"
#include "velmora/text/codepage.h"
#include "velmora/text/string.h"

namespace velmora {

// Reads a file's lines without holding the whole file in memory. Closes the file when its end is reached, so
// that it can be replaced.
class VELMORA_API TextReader {
 public:
  // The encoding of a file without a mark. kUtf8First, for files of unknown origin: lines are UTF-8 when they
  // are valid UTF-8, else Windows-1252.
  enum class Guess { kWindows1252, kUtf8First };

  // Starts over with a file, or with the process's standard input. False as InputFile::Open, and when its
  // start cannot be read. @{
  [[nodiscard]] bool Open(const CString& path, Guess guess = Guess::kWindows1252,
                          InputFile::Accept accept = InputFile::Accept::kAnything);
  [[nodiscard]] bool OpenStandardInput(Guess guess = Guess::kWindows1252);
  // @}
  // A file's content instead of a file.
  void OpenBytes(std::string bytes);

  // The next line without its line end; false at the end of the file, on a read error and for a line longer
  // than kLongestLine.
  [[nodiscard]] bool ReadLine(CString* line);
  static constexpr size_t kLongestLine = size_t{4} << 20;  // bytes

  // For parsers of plain ASCII: the bytes that are read but not yet returned. Empty in UTF-16. As many as
  // kZerosAfter bytes after them can be read, and the first is a zero or an end-of-file character.
  std::string_view Buffered() const;
  static constexpr size_t kZerosAfter = 128;
  // Removes that many of them, whole lines, from their front.
  void Skip(size_t count) { start_ += count; }

  // Replaces *lines by the bytes of the next whole lines, at least one and about `size` bytes. False as
  // ReadLine, with `longest` as the limit of a line. Not for UTF-16.
  [[nodiscard]] bool ReadBlock(size_t size, std::string* lines, size_t longest = kLongestLine);

  // Reads the rest of the file into memory and closes it. False on a read error and for more than `most`
  // bytes.
  [[nodiscard]] bool ReadRest(std::uint64_t most);

  // Whether an error ended reading before the end of the file.
  bool Failed() const { return failed_; }
  // At the end: whether text that is not read follows an end-of-file character.
  bool HasTail() const { return has_tail_; }
  // Whether the last line had a line end.
  bool LineWasEnded() const { return ended_; }

  // By the file's mark, else Windows-1252.
  TextEncoding Encoding() const { return encoding_; }
  std::uint64_t Size() const { return size_; }          // bytes, 0 when unknown
  std::uint64_t Consumed() const { return consumed_; }  // bytes read so far, for progress

 private:
  void StartOver();
  bool Start(Guess guess);
  bool Fill();
  bool ReadMore();
  void EndAtMark(size_t from);
  bool TakeLine(std::string_view* bytes);

  InputFile file_;
  Guess guess_ = Guess::kWindows1252;
  TextEncoding encoding_ = TextEncoding::kWindows1252;
  std::string_view Pending() const { return std::string_view(buffer_).substr(start_, end_ - start_); }

  std::string buffer_;  // grows when a line needs it
  std::wstring text_;   // of the current line
  size_t start_ = 0;    // of the bytes not yet returned, in buffer_
  size_t end_ = 0;      // of the bytes read
  std::uint64_t size_ = 0;
  std::uint64_t consumed_ = 0;
  bool at_end_ = false;
  bool failed_ = false;
  bool ended_ = false;
  bool has_tail_ = false;
};

// Writes a whole text file; the target changes in Commit (FileReplacement).
class TextWriter {
 public:
  // The encoding is that of the old file's byte-order mark, else Windows-1252. False as
  // FileReplacement::Begin.
  [[nodiscard]] bool Begin(const CString& target, const CString& temporary = CString());
  // Appends text; each "\n" becomes CR LF. A character outside the encoding or an end-of-file character makes
  // this and Commit fail, and so does, in Windows-1252, a file that would begin with the bytes of a
  // byte-order mark.
  void Write(std::wstring_view text);
  // The same for ASCII text that has CR LF already.
  void WriteAscii(std::string_view lines);
  // Whether Commit will fail.
  bool Failed() const { return failed_; }
  // False when anything since Begin failed; the old file is then unchanged.
  [[nodiscard]] bool Commit();

 private:
  void Flush();
  void KeepTail();

  FileReplacement file_;
  CString target_;
  TextEncoding encoding_ = TextEncoding::kWindows1252;
  std::string bytes_;
  bool at_start_ = true;  // of the file
  bool failed_ = true;    // until begun
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_TEXT_FILE_H_
