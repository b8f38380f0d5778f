// Rows of a list of points or stations: comma, semicolon or tab between the fields, UTF-8, UTF-16 or
// Windows-1252, with or without a byte-order mark. A row is a line, or several where a field in quotes holds
// line breaks.
#ifndef VELMORA_LISTS_ROWS_H_
#define VELMORA_LISTS_ROWS_H_

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "velmora/common/finding.h"
#include "velmora/lists/list_source.h"
#include "velmora/text/codepage.h"

namespace velmora {

// The row at the start of a text.
struct RowExtent {
  size_t size = 0;  // with its line end; 0 when the text ends before the row does
  std::int64_t lines = 1;
  bool unclosed = false;  // a field's quote is not closed; the row ends with the line of that quote
  bool too_long = false;  // a line has more than kLongestRow bytes
};
// A row, and a line of it, has at most kLongestRow bytes, and a field kMostLines lines. A quote that is
// closed only beyond that, or on another line within a field, is an unclosed one: it takes no more than its
// own line. `at_end`: nothing follows the text.
RowExtent MeasureRow(std::string_view text, char separator, bool at_end);
inline constexpr size_t kLongestRow = size_t{1} << 20;
inline constexpr std::int64_t kMostLines = 100;
// The separator of the row at the start of `text`: a tab if it has one outside quotes, else a semicolon, else
// a comma. What is behind a quote that is not closed counts only where nothing separates fields before it.
// Nothing when the text ends before the row.
std::optional<char> DetectSeparator(std::string_view text, bool at_end);

// Whole rows of a list. Without an encoding, each row that is valid UTF-8 is UTF-8, else Windows-1252.
struct RowBlock {
  std::string bytes;
  std::optional<TextEncoding> encoding;
  std::int64_t first_line = 1;
};

struct Row {
  std::string_view bytes;  // without its line end
  std::int64_t line = 0;   // its first one
  bool unclosed = false;   // as in RowExtent
};

// Whether a CR stands in the row, quotes apart, as where lines end in CR alone.
bool HasLoneReturn(std::string_view row);

inline std::string_view WithoutLineEnd(std::string_view row) {
  if (row.ends_with('\n')) row.remove_suffix(1);
  if (row.ends_with('\r')) row.remove_suffix(1);
  return row;
}

// Reads a list, which ends at an end-of-file character (0x1A); what follows one is reported. Memory does not
// grow with its length.
class RowReader {
 public:
  static constexpr size_t kBlockSize = size_t{128} << 10;

  // `file` as for OpenList. `encoding` is that of a file without a byte-order mark; nothing: as in RowBlock.
  // Blocks have about `block_size` bytes. Throws a ListError when the file cannot be opened.
  RowReader(std::string file, std::optional<TextEncoding> encoding, size_t block_size = kBlockSize);

  // For the rows before the separator is known: what was read and not yet taken. More reads on and returns
  // false at the end; the views are then no longer valid. Skip takes rows.
  std::string_view Pending() const { return std::string_view(pending_).substr(start_); }
  bool More();
  bool AtEnd() const { return at_end_; }
  void Skip(size_t bytes, std::int64_t lines);
  std::optional<TextEncoding> Encoding() const;

  // For rows that take `factor` times the memory of other lists' rows.
  void ShrinkBlocks(size_t factor) { block_size_ = std::max<size_t>(1, block_size_ / factor); }

  // The next rows. False at the end; throws a ListError when the file cannot be read on or has a line that is
  // too long.
  bool NextBlock(char separator, RowBlock* block);
  // The same for a single one, valid until the next call.
  bool NextRow(char separator, Row* row);

  // At the end: text that is not read behind an end-of-file character.
  const std::optional<Finding>& EndNote() const { return end_note_; }
  // Of the next row.
  std::int64_t Line() const { return line_; }
  const std::string& File() const { return file_; }
  std::uint64_t Size() const { return source_.size; }   // bytes, 0 when unknown
  std::uint64_t Consumed() const { return consumed_; }  // bytes read so far, for progress
  bool PacksNumbers() const { return source_.packs_numbers; }
  [[noreturn]] void RefuseLongRow(std::int64_t line) const;

 private:
  size_t WholeRows(char separator) const;
  void ReadInto(std::string* to);
  void AppendUtf16();
  void EndAtMark(size_t from);

  std::string file_;
  ListSource source_;
  std::optional<TextEncoding> encoding_;  // of the file
  size_t block_size_;
  std::string pending_;
  size_t start_ = 0;
  std::string units_;  // UTF-16 not yet decoded
  std::int64_t line_;
  std::uint64_t consumed_ = 0;
  bool at_end_ = false;
  std::optional<Finding> end_note_;
};

}  // namespace velmora

#endif  // VELMORA_LISTS_ROWS_H_
