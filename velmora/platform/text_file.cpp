#include "velmora/platform/text_file.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>
#include <vector>

#include "velmora/platform/text_units.h"

namespace velmora {
namespace {

constexpr size_t kLeastRead = size_t{4} << 10;
constexpr size_t kMostRead = size_t{256} << 10;  // at once
constexpr size_t kWrite = size_t{64} << 10;
constexpr char kEndOfFile = 0x1A;
constexpr size_t kNotFound = std::string_view::npos;  // also of wide text

// The place of the first ASCII character `c` at or after `from`, a place where a unit starts.
size_t FindUnit(std::string_view bytes, char c, size_t from, TextEncoding encoding) {
  if (!IsUtf16(encoding)) return bytes.find(c, from);
  for (size_t at = from; at + 1 < bytes.size(); at += 2)
    if (UnitIs(bytes, at, c, encoding)) return at;
  return kNotFound;
}

std::string_view WithoutCarriageReturn(std::string_view line, TextEncoding encoding) {
  const size_t unit = UnitSize(encoding);
  if (line.size() < unit || !UnitIs(line, line.size() - unit, '\r', encoding)) return line;
  return line.substr(0, line.size() - unit);
}

}  // namespace

// Keeps the memory.
void TextReader::StartOver() {
  TextReader fresh;
  fresh.buffer_.swap(buffer_);
  fresh.text_.swap(text_);
  *this = std::move(fresh);
}

bool TextReader::Open(const CString& path, Guess guess, InputFile::Accept accept) {
  StartOver();
  return file_.Open(path, accept) && Start(guess);
}

bool TextReader::OpenStandardInput(Guess guess) {
  StartOver();
  return file_.OpenStandardInput() && Start(guess);
}

void TextReader::OpenBytes(std::string bytes) {
  *this = TextReader();
  buffer_ = std::move(bytes);
  end_ = buffer_.size();
  buffer_.resize(end_ + kZerosAfter);
  size_ = consumed_ = end_;
  at_end_ = true;
  encoding_ = EncodingFromMark(Pending());
  start_ = ByteOrderMark(encoding_).size();
  EndAtMark(0);
}

bool TextReader::Start(Guess guess) {
  guess_ = guess;
  size_ = file_.Size();
  while (end_ < kLongestMark && ReadMore()) {
  }
  encoding_ = EncodingFromMark(Pending());
  start_ = ByteOrderMark(encoding_).size();
  EndAtMark(0);
  return !failed_;
}

// The text after an end-of-file character is not read. Those before `from` in Pending() have been searched.
void TextReader::EndAtMark(size_t from) {
  const size_t mark =
      FindUnit(Pending(), kEndOfFile, from / UnitSize(encoding_) * UnitSize(encoding_), encoding_);
  if (mark == kNotFound) return;
  // Old programs fill the last block with the character.
  constexpr std::string_view kFilling("\x1A\0\r\n", 4);
  has_tail_ = Pending().find_first_not_of(kFilling, mark) != kNotFound || size_ > consumed_;
  end_ = start_ + mark;
  at_end_ = true;
  file_.Close();
}

bool TextReader::Fill() {
  const size_t searched = Pending().size();
  if (!ReadMore()) return false;
  EndAtMark(searched);
  return Pending().size() > searched;
}

// Reads the next bytes into the buffer, over those that were returned.
bool TextReader::ReadMore() {
  if (at_end_ || failed_) return false;
  if (start_ > 0) std::memmove(buffer_.data(), buffer_.data() + start_, end_ - start_);
  end_ -= start_;
  start_ = 0;
  // Small files take one read: what is shorter than asked for ends where the file's size says.
  const size_t room = size_ == 0
                          ? kMostRead / 4
                          : static_cast<size_t>(std::clamp<std::uint64_t>(size_ + 1, kLeastRead, kMostRead));
  if (buffer_.size() < end_ + room + kZerosAfter) buffer_.resize(end_ + room + kZerosAfter);
  const std::int64_t count = file_.Read(std::span(buffer_).subspan(end_, room));
  failed_ = count < 0;
  if (count > 0) {
    end_ += static_cast<size_t>(count);
    consumed_ += static_cast<std::uint64_t>(count);
  }
  std::memset(buffer_.data() + end_, 0, kZerosAfter);
  at_end_ = count == 0 || (consumed_ == size_ && static_cast<size_t>(count) < room);
  if (failed_ || at_end_) file_.Close();
  return count > 0;
}

// The bytes of the next line, valid until the next call.
bool TextReader::TakeLine(std::string_view* bytes) {
  const size_t unit = UnitSize(encoding_);
  size_t searched = 0;
  for (;;) {
    const std::string_view rest = Pending();
    const size_t end = FindUnit(rest, '\n', searched, encoding_);
    if (std::min(end, rest.size()) > kLongestLine) {
      failed_ = true;
      return false;
    }
    if (end != kNotFound) {
      *bytes = WithoutCarriageReturn(rest.substr(0, end), encoding_);
      start_ += end + unit;
      ended_ = true;
      return true;
    }
    searched = rest.size() / unit * unit;
    if (Fill()) continue;
    if (failed_ || rest.empty()) return false;
    *bytes = Pending();
    start_ = end_;
    // Half a character at the end: a line feed added by a program without UTF-16.
    ended_ = unit == 2 && bytes->size() % unit != 0 && bytes->back() == '\n';
    if (ended_) *bytes = WithoutCarriageReturn(bytes->substr(0, bytes->size() - 1), encoding_);
    return true;
  }
}

bool TextReader::ReadLine(CString* line) {
  std::string_view bytes;
  if (failed_ || !TakeLine(&bytes)) return false;
  const bool is_utf8 =
      encoding_ == TextEncoding::kWindows1252 && guess_ == Guess::kUtf8First && IsValidUtf8(bytes);
  text_.clear();
  AppendDecoded(bytes, is_utf8 ? TextEncoding::kUtf8 : encoding_, &text_);
  *line = CString(std::wstring_view(text_));
  return true;
}

bool TextReader::ReadBlock(size_t size, std::string* lines, size_t longest) {
  if (failed_) return false;
  size_t end = 0;  // after the last line end, in Pending()
  size_t searched = 0;
  do {
    const std::string_view unseen = Pending().substr(searched);
    const size_t last = unseen.rfind('\n');
    if (last != kNotFound) end = searched + last + 1;
    searched += unseen.size();
    if (end == 0 && searched > longest) failed_ = true;
  } while ((end == 0 || searched < size) && !failed_ && Fill());
  if (at_end_) end = Pending().size();
  lines->assign(Pending().substr(0, end));
  start_ += end;
  return end > 0;
}

bool TextReader::ReadRest(std::uint64_t most) {
  while (consumed_ <= most && Fill()) {
  }
  failed_ = failed_ || consumed_ > most;
  at_end_ = true;
  file_.Close();
  return !failed_;
}

std::string_view TextReader::Buffered() const {
  return failed_ || IsUtf16(encoding_) ? std::string_view() : Pending();
}

bool TextWriter::Begin(const CString& target, const CString& temporary) {
  target_ = target;
  bytes_.clear();
  failed_ = true;
  // Before the mark is read: Begin refuses targets that must not be opened, such as pipes.
  if (!file_.Begin(target, temporary)) return false;
  if (FileOrFolderExists(target)) {
    TextReader old;
    if (!old.Open(target)) {
      file_.Abandon();
      return false;
    }
    encoding_ = old.Encoding();
  } else {
    encoding_ = TextEncoding::kWindows1252;
  }
  bytes_ = ByteOrderMark(encoding_);
  at_start_ = true;
  failed_ = false;
  return true;
}

void TextWriter::Write(std::wstring_view text) {
  failed_ = failed_ || text.find(kEndOfFile) != kNotFound;
  while (!text.empty() && !failed_) {
    const size_t end = text.find(L'\n');
    failed_ = !AppendEncoded(text.substr(0, end), encoding_, &bytes_);
    if (end == kNotFound) {
      text = {};
    } else {
      failed_ = failed_ || !AppendEncoded(L"\r\n", encoding_, &bytes_);
      text.remove_prefix(end + 1);
    }
    if (bytes_.size() >= kWrite) Flush();
  }
}

void TextWriter::WriteAscii(std::string_view lines) {
  if (failed_) return;
  if (IsUtf16(encoding_)) {
    failed_ = !AppendEncoded(std::wstring(lines.begin(), lines.end()), encoding_, &bytes_);
  } else if (lines.size() < kWrite) {
    bytes_.append(lines);
  } else {
    Flush();
    failed_ = failed_ || !file_.Write(lines);
  }
  if (bytes_.size() >= kWrite) Flush();
}

void TextWriter::Flush() {
  if (at_start_ && EncodingFromMark(bytes_) != encoding_) failed_ = true;
  at_start_ = false;
  failed_ = failed_ || !file_.Write(bytes_);
  bytes_.clear();
}

// Copies what stands in the old file from its end-of-file character on: no reader sees it, so no writer may
// drop it.
void TextWriter::KeepTail() {
  InputFile old;
  if (failed_ || !FileOrFolderExists(target_)) return;
  failed_ = !old.Open(target_);
  std::vector<char> piece(kWrite);
  bool in_tail = false;
  size_t kept = 0;  // bytes of a piece that await the next: half a unit
  while (!failed_) {
    const std::int64_t count = old.Read(std::span(piece).subspan(kept));
    failed_ = count < 0;
    if (count <= 0) break;
    std::string_view read(piece.data(), kept + static_cast<size_t>(count));
    if (!in_tail) {
      const size_t mark = FindUnit(read, kEndOfFile, 0, encoding_);
      in_tail = mark != kNotFound;
      kept = in_tail ? 0 : read.size() % UnitSize(encoding_);
      if (!in_tail && kept > 0) piece[0] = read.back();
      read = in_tail ? read.substr(mark) : std::string_view();
    }
    failed_ = failed_ || !file_.Write(read);
  }
}

bool TextWriter::Commit() {
  Flush();
  KeepTail();
  const bool done = !failed_ && file_.Commit();
  file_.Abandon();
  failed_ = true;
  return done;
}

}  // namespace velmora
