// The rows of a block, taken apart.
#ifndef VELMORA_LISTS_BLOCK_ROWS_H_
#define VELMORA_LISTS_BLOCK_ROWS_H_

#include <bit>
#include <cstdint>
#include <string_view>

#include "velmora/lists/layout.h"
#include "velmora/lists/rows.h"

namespace velmora {

// Goes through a text by its separators, line ends, quotes and bytes that are not ASCII.
class TextMarks {
 public:
  TextMarks(std::string_view text, char separator) : text_(text), separator_(separator) { Seek(0); }
  // The next mark; the text's size at its end.
  size_t Next() {
    while (marks_ == 0) {
      if (text_.size() - base_ <= kAtOnce) return text_.size();
      base_ += kAtOnce;
      marks_ = Marks();
    }
    const size_t at = base_ + static_cast<size_t>(std::countr_zero(marks_));
    marks_ &= marks_ - 1;
    return at;
  }
  // Goes on at `from`.
  void Seek(size_t from) {
    base_ = from;
    marks_ = Marks();
  }

 private:
  static constexpr size_t kAtOnce = 64;
  std::uint64_t Marks() const;

  std::string_view text_;
  char separator_;
  size_t base_ = 0;
  std::uint64_t marks_ = 0;  // those not yet given of the kAtOnce bytes from base_ on
};

// Goes through a block in any thread. A row without quotes, as most are, is taken apart as it is found.
class BlockRows {
 public:
  // Both outlive this.
  BlockRows(const RowBlock& block, const ListLayout& layout);

  // The next row with anything in it, in Fields. False at the end.
  bool Next();
  const RowFields& Fields() const { return fields_; }
  std::int64_t Line() const { return line_; }

 private:
  bool SplitPlainRow();

  const RowBlock& block_;
  std::string_view text_;
  char separator_;
  bool may_be_plain_;
  TextMarks marks_;
  RowFields fields_;
  size_t start_ = 0;  // of the next row
  std::int64_t line_ = 0;
  std::int64_t next_line_;
};

}  // namespace velmora

#endif  // VELMORA_LISTS_BLOCK_ROWS_H_
