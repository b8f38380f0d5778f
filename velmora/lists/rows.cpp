#include "velmora/lists/rows.h"

#include <algorithm>

#include "velmora/lists/fields.h"
#include "velmora/lists/list_error.h"
#include "velmora/text/string.h"

namespace velmora {
namespace {

constexpr size_t kNone = std::string_view::npos;
constexpr std::string_view kSeparators = "\t;,";

std::int64_t LineFeeds(std::string_view text) {
  constexpr size_t kPart = 128;  // counted in bytes side by side
  std::int64_t feeds = 0;
  for (; !text.empty(); text.remove_prefix(std::min(text.size(), kPart))) {
    std::uint8_t in_part = 0;
    for (const char c : text.substr(0, kPart))
      in_part = static_cast<std::uint8_t>(in_part + (c == '\n' ? 1 : 0));
    feeds += in_part;
  }
  return feeds;
}

// The end of the line that holds `at`, after its line feed. kNone when the text ends before it.
size_t LineEnd(std::string_view text, size_t at, bool at_end) {
  const size_t feed = text.find('\n', at);
  if (feed != kNone) return feed + 1;
  return at_end ? text.size() : kNone;
}

// The closing quote of a field whose text starts at `at`; kNone when there is none before kLongestRow.
size_t ClosingQuote(std::string_view text, size_t at) {
  text = text.substr(0, kLongestRow);
  for (;; at += 2) {
    at = text.find('"', at);
    if (at == kNone || at + 1 >= text.size() || text[at + 1] != '"') return at;
  }
}

// A field in quotes.
struct QuotedField {
  bool goes_on = false;   // the text ends before this can be told; the rest does not count
  bool unclosed = false;  // as in RowExtent
  size_t quote = kNone;   // the closing one
  size_t line_end = kNone;
  std::int64_t breaks = 0;  // line feeds before it
};

// The field whose first quote is at `at`, on a line that ends at `line_end`, in a row with one of
// `separators`.
QuotedField MeasureQuoted(std::string_view text, size_t at, size_t line_end, std::string_view separators,
                          bool at_end) {
  QuotedField field;
  field.quote = ClosingQuote(text, at + 1);
  field.line_end = line_end;
  if (field.quote >= line_end)
    field.line_end = field.quote == kNone ? kNone : LineEnd(text, field.quote, at_end);
  field.breaks = LineFeeds(text.substr(0, std::min(field.quote, kLongestRow)).substr(at));
  const bool cut = !at_end && (field.line_end == kNone || field.quote + 1 == text.size());
  field.goes_on = cut && field.breaks < kMostLines && text.size() <= kLongestRow;
  field.unclosed = field.line_end > kLongestRow || field.breaks >= kMostLines ||
                   (field.breaks > 0 && !FieldEndsAt(text, field.quote + 1, separators));
  return field;
}

}  // namespace

RowExtent MeasureRow(std::string_view text, char separator, bool at_end) {
  RowExtent row;
  size_t end = LineEnd(text, 0, at_end);
  row.too_long = std::min(end, text.size()) > kLongestRow;
  if (end == kNone || row.too_long) return row;
  if (text.substr(0, end).find('"') == kNone) {
    row.size = end;
    return row;
  }
  size_t at = 0;
  for (;;) {  // at the start of a field
    while (at < end && text[at] != separator && IsBlankByte(text[at])) ++at;
    if (at < end && text[at] == '"') {
      const QuotedField field = MeasureQuoted(text, at, end, std::string_view(&separator, 1), at_end);
      if (field.goes_on) return {};
      row.unclosed = field.unclosed;
      if (row.unclosed) break;
      row.lines += field.breaks;
      end = field.line_end;
      at = field.quote + 1;
    }
    at = text.substr(0, end).find(separator, at);
    if (at == kNone) break;
    ++at;
  }
  row.size = end;
  return row;
}

std::optional<char> DetectSeparator(std::string_view text, bool at_end) {
  size_t end = LineEnd(text, 0, at_end);
  if (std::min(end, text.size()) > kLongestRow) return ',';  // no row, whatever separates its fields
  if (end == kNone) return std::nullopt;
  bool semicolon = false;
  bool comma = false;
  bool field_starts = true;
  for (size_t at = 0; at < end; ++at) {
    const char c = text[at];
    if (c == '"' && field_starts) {
      const QuotedField field = MeasureQuoted(text, at, end, kSeparators, at_end);
      if (field.goes_on) return std::nullopt;
      if (field.unclosed && (semicolon || comma)) break;
      if (!field.unclosed) {
        end = field.line_end;
        at = field.quote;
      }
    }
    if (c == '\t') return c;
    semicolon = semicolon || c == ';';
    comma = comma || c == ',';
    field_starts = c == ',' || c == ';' || (field_starts && IsBlankByte(c));
  }
  return semicolon ? ';' : ',';
}

bool HasLoneReturn(std::string_view row) {
  const size_t at = row.find('\r');
  return at != kNone && row.find_first_not_of('\r', at) != kNone && row.find('"') == kNone;
}

RowReader::RowReader(std::string file, std::optional<TextEncoding> encoding, size_t block_size)
    : file_(std::move(file)),
      source_(OpenList(file_)),
      encoding_(encoding),
      block_size_(block_size),
      line_(source_.first_line) {
  constexpr size_t kLongestMark = 3;
  while (pending_.size() < kLongestMark && !at_end_) ReadInto(&pending_);
  const TextEncoding marked = EncodingFromMark(pending_);
  pending_.erase(0, ByteOrderMark(marked).size());
  encoding_ = marked == TextEncoding::kWindows1252 ? encoding : marked;
  if (encoding_ && IsUtf16(*encoding_)) {
    units_.swap(pending_);
    AppendUtf16();
  }
  EndAtMark(0);
}

std::optional<TextEncoding> RowReader::Encoding() const {
  return encoding_ && IsUtf16(*encoding_) ? TextEncoding::kUtf8 : encoding_;
}

bool RowReader::More() {
  if (at_end_) return false;
  pending_.erase(0, start_);
  start_ = 0;
  const size_t before = pending_.size();
  const bool utf16 = encoding_ && IsUtf16(*encoding_);
  ReadInto(utf16 ? &units_ : &pending_);
  if (utf16) AppendUtf16();
  EndAtMark(before);
  return !at_end_;
}

void RowReader::ReadInto(std::string* to) {
  constexpr size_t kMostRead = size_t{256} << 10;
  const size_t before = to->size();
  if (!source_.read(std::min(kMostRead, block_size_), to))
    throw ListError{file_, line_ + LineFeeds(pending_), "reading stopped here: the file cannot be read on"};
  at_end_ = to->size() == before;
  consumed_ += to->size() - before;
}

// Drops an end-of-file character among the bytes from `from` on, and what follows it.
void RowReader::EndAtMark(size_t from) {
  constexpr char kEndOfFile = '\x1A';
  const size_t mark = pending_.find(kEndOfFile, from);
  if (mark == kNone) return;
  std::string rest = pending_.substr(mark);
  if (!at_end_) ReadInto(&rest);
  pending_.erase(mark);
  at_end_ = true;
  // Some programs fill the file up with these.
  const auto fills = [](char c) { return c == kEndOfFile || c == '\0' || IsBlankByte(c); };
  if (!std::all_of(rest.begin(), rest.end(), fills))
    end_note_ = Finding{line_ + LineFeeds(pending_),
                        "ends here, at an end-of-file character (0x1A); what follows it is not read"};
}

// Decodes the units read so far, but for a half one at the end and the first half of a pair.
void RowReader::AppendUtf16() {
  const bool little = *encoding_ == TextEncoding::kUtf16Le;
  size_t size = units_.size() / 2 * 2;
  const auto high = [&](size_t unit) { return static_cast<unsigned char>(units_[unit + (little ? 1 : 0)]); };
  if (!at_end_ && size > 0 && (high(size - 2) & 0xFC) == 0xD8) size -= 2;
  std::wstring text;
  AppendDecoded(std::string_view(units_).substr(0, size), *encoding_, &text);
  pending_ += Utf8FromWide(text);
  units_.erase(0, size);
}

void RowReader::Skip(size_t bytes, std::int64_t lines) {
  start_ += bytes;
  line_ += lines;
}

// The bytes of the rows that are pending as a whole.
size_t RowReader::WholeRows(char separator) const {
  const std::string_view text = Pending();
  if (text.size() <= kLongestRow && text.find('"') == kNone)
    return at_end_ ? text.size() : text.rfind('\n') + 1;
  size_t size = 0;
  std::int64_t line = line_;
  while (size < text.size()) {
    const RowExtent row = MeasureRow(text.substr(size), separator, at_end_);
    if (row.too_long) RefuseLongRow(line);
    if (row.size == 0) break;
    size += row.size;
    line += row.lines;
  }
  return size;
}

bool RowReader::NextBlock(char separator, RowBlock* block) {
  while (Pending().size() < block_size_ && More()) {
  }
  size_t size = WholeRows(separator);
  while (size == 0 && !at_end_) {
    More();
    size = WholeRows(separator);
  }
  block->first_line = line_;
  block->encoding = Encoding();
  if (start_ == 0) {  // as it mostly is: only the row that is not yet whole is copied
    block->bytes.swap(pending_);
    pending_.assign(block->bytes, size);
    block->bytes.resize(size);
  } else {
    block->bytes.assign(Pending().substr(0, size));
    start_ += size;
  }
  line_ += LineFeeds(block->bytes);
  return size > 0;
}

bool RowReader::NextRow(char separator, Row* row) {
  RowExtent extent = MeasureRow(Pending(), separator, at_end_);
  while (extent.size == 0 && !extent.too_long && !at_end_) {
    More();
    extent = MeasureRow(Pending(), separator, at_end_);
  }
  if (extent.too_long) RefuseLongRow(line_);
  if (extent.size == 0) return false;
  *row = {WithoutLineEnd(Pending().substr(0, extent.size)), line_, extent.unclosed};
  Skip(extent.size, extent.lines);
  return true;
}

void RowReader::RefuseLongRow(std::int64_t line) const {
  throw ListError{file_, line, "this line is too long for a row; is the file a list of points?"};
}

}  // namespace velmora
