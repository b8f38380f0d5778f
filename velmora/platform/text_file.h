// Text files, line by line. On disk they are Windows-1252 with CR LF; read are LF and CR LF, and a
// file that begins with a UTF-8 or UTF-16 mark is read, and written back, in that encoding.
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

// Reads a file's lines without holding the file in memory. At the file's end it is closed at once, so
// that it can be replaced.
class VELMORA_API TextReader {
 public:
  // For files of unknown origin (a list of points from anywhere): lines of a file without a mark
  // are UTF-8 when they are valid UTF-8, else Windows-1252.
  enum class Guess { kWindows1252, kUtf8First };

  [[nodiscard]] bool Open(const CString& path, Guess guess = Guess::kWindows1252);
  [[nodiscard]] bool OpenStandardInput(Guess guess = Guess::kWindows1252);

  // The next line without its line end; false at the end of the file, on a read error and when a
  // line is longer than kLongestLine (a file that is no text, or grows without end).
  [[nodiscard]] bool ReadLine(CString* line);
  static constexpr size_t kLongestLine = size_t{4} << 20;  // bytes

  // For readers of plain ASCII that do without a line's text: the bytes that have been read from the file
  // and not been returned, and how many of them, whole lines, are not to be. Empty in an encoding in which
  // ASCII is not one byte a character.
  std::string_view Buffered() const;
  void Skip(size_t count) { start_ += count; }

  // For many lines at once: replaces *lines by the next whole lines, at least one and about `size` bytes of
  // them, as the file has them. False as ReadLine, for a line of more than `longest` bytes. Not for UTF-16.
  [[nodiscard]] bool ReadBlock(size_t size, std::string* lines, size_t longest = kLongestLine);

  // Whether reading ended before the end of the file.
  bool Failed() const { return failed_; }
  // Whether the last line read had a line end.
  bool LineWasEnded() const { return ended_; }

  TextEncoding Encoding() const { return encoding_; }
  std::uint64_t Size() const { return size_; }          // bytes, 0 when unknown
  std::uint64_t Consumed() const { return consumed_; }  // bytes read so far, for progress

 private:
  bool Start(Guess guess);
  bool Fill();
  bool TakeLine(std::string_view* bytes);

  InputFile file_;
  Guess guess_ = Guess::kWindows1252;
  TextEncoding encoding_ = TextEncoding::kWindows1252;
  std::string_view Pending() const { return std::string_view(buffer_).substr(start_, end_ - start_); }

  std::string buffer_;  // grows when a line needs it
  std::wstring text_;   // of the line at hand
  size_t start_ = 0;    // of what has not been returned, in buffer_
  size_t end_ = 0;      // of what has been read
  std::uint64_t size_ = 0;
  std::uint64_t consumed_ = 0;
  bool at_end_ = false;
  bool failed_ = false;
  bool ended_ = false;
};

// Writes a whole text file. The target changes only in Commit, see FileReplacement.
class VELMORA_API TextWriter {
 public:
  // The encoding is that of the mark the old file begins with, else Windows-1252. False as
  // FileReplacement::Begin.
  [[nodiscard]] bool Begin(const CString& target, const CString& temporary = CString());
  // Appends text as it stands; each "\n" becomes CR LF. A character that the encoding lacks makes
  // this and Commit fail. So does, in Windows-1252, a start of the text that would be read as a mark.
  void Write(std::wstring_view text);
  // The same for ASCII with its line ends as they are on disk.
  void WriteAscii(std::string_view lines);
  // Whether Commit is bound to fail.
  bool Failed() const { return failed_; }
  // False when anything since Begin failed; the old file is then as it was.
  [[nodiscard]] bool Commit();

 private:
  void Flush();

  FileReplacement file_;
  TextEncoding encoding_ = TextEncoding::kWindows1252;
  std::string bytes_;
  bool at_start_ = true;  // of the file
  bool failed_ = true;    // until begun
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_TEXT_FILE_H_
