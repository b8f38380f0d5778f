#include "velmora/lists/block_rows.h"

#include <array>

#include "velmora/platform/byte_marks.h"

namespace velmora {

std::uint64_t TextMarks::Marks() const {
  const std::string_view rest = text_.substr(base_);
  if (rest.size() >= kAtOnce) return MarksAmong64(rest.data(), separator_);
  std::array<char, kAtOnce> last{};
  rest.copy(last.data(), rest.size());
  return MarksAmong64(last.data(), separator_) & ((std::uint64_t{1} << rest.size()) - 1);
}

BlockRows::BlockRows(const RowBlock& block, const ListLayout& layout)
    : block_(block),
      text_(block.bytes),
      separator_(layout.separator),
      may_be_plain_(separator_ != '"' && separator_ != '\n' && separator_ != '\r'),
      marks_(text_, separator_),
      fields_(layout),
      next_line_(block.first_line) {}

bool BlockRows::Next() {
  while (start_ < text_.size()) {
    line_ = next_line_;
    if (may_be_plain_ && SplitPlainRow()) {
      ++next_line_;
      if (fields_.Finish("")) return true;
      continue;
    }
    const std::string_view rest = text_.substr(start_);
    const RowExtent extent = MeasureRow(rest, separator_, true);
    start_ += extent.size;
    next_line_ += extent.lines;
    marks_.Seek(start_);
    if (fields_.Split({WithoutLineEnd(rest.substr(0, extent.size)), line_, extent.unclosed}, block_.encoding))
      return true;
  }
  return false;
}

// Takes a row that is one line without quotes, in UTF-8, apart, and moves past it. False for another one.
bool BlockRows::SplitPlainRow() {
  fields_.Clear();
  bool ascii = true;
  for (size_t field = start_;;) {
    const size_t at = marks_.Next();
    const char mark = at < text_.size() ? text_[at] : '\n';
    if (mark == separator_ || mark == '\n') {
      if (!fields_.Add(text_.substr(field, at - field))) return false;
      field = at + 1;
      if (mark == separator_) continue;
      if (!ascii && !IsItsOwnDecoding(text_.substr(start_, at - start_), block_.encoding)) return false;
      start_ = std::min(field, text_.size());
      return true;
    }
    if (mark == '"') return false;
    if (mark != '\r')
      ascii = false;
    else if (at + 1 == text_.size() || text_[at + 1] != '\n')
      return false;
  }
}

}  // namespace velmora
