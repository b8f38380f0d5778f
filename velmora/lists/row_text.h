// Rows of a list that is not text, as text: one line a row, tabs between the fields. Of a row that is too
// long for a list (kLongestRow) the start is kept, for the reader to refuse it.
#ifndef VELMORA_LISTS_ROW_TEXT_H_
#define VELMORA_LISTS_ROW_TEXT_H_

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "velmora/lists/packed_number.h"
#include "velmora/lists/rows.h"
#include "velmora/text/fixed_digits.h"
#include "velmora/text/text_buffer.h"
#include "velmora/text/words.h"

namespace velmora {

class RowText {
 public:
  // `packs_numbers`: the reader knows fields as in packed_number.h.
  explicit RowText(bool packs_numbers) : packs_numbers_(packs_numbers) {}

  // A text in UTF-8; its line breaks become blanks.
  void AddText(std::string_view utf8) {
    if (!AddPlain(utf8)) AddGeneral(utf8);
  }
  // False for a text that has control characters, quotes or bytes that are not ASCII: nothing is added.
  bool AddPlain(std::string_view text) {
    text = Cut(text);
    char* const at = buffer_.Room(text.size() + words::kSize, at_);
    const size_t size = text.size();
    std::uint64_t marks = 0;
    const auto put = [&](std::uint64_t word, size_t to) {
      marks |= UnplainIn(word);
      words::Store(word, at + to);
    };
    if (size < words::kSize) {
      put(words::LoadShort(text.data(), size) | kBlanks << (8 * size), 0);
    } else {
      for (size_t i = 0; i + words::kSize < size; i += words::kSize) put(words::Load(text.data() + i), i);
      put(words::Load(text.data() + size - words::kSize), size - words::kSize);
    }
    at_ = at;
    if (marks != 0) return false;
    at_ += size;
    End();
    return true;
  }
  void AddInteger(std::int64_t number) {
    at_ = buffer_.Room(kLongestInteger, at_);
    const auto bits = static_cast<std::uint64_t>(number);
    if (number < 0) *at_++ = '-';
    at_ += fixed_digits::WriteInteger(number < 0 ? 0 - bits : bits, at_);
    End();
  }
  // Only where numbers are packed.
  void AddNumber(double number) {
    at_ = PutPackedNumber(number, buffer_.Room(kPackedSize + 1, at_));
    End();
  }
  void AddEmpty() {
    at_ = buffer_.Room(1, at_);
    End();
  }
  // After at least one field, or none for an empty line.
  void EndRow() {
    at_ = buffer_.Room(1, at_);
    if (at_ != buffer_.Begin() && at_[-1] == '\t') --at_;
    *at_++ = '\n';
    row_ = Size();
  }

  size_t Size() { return static_cast<size_t>(at_ - buffer_.Begin()); }
  // Appends the rows, which have ended, to *text, and goes on without them.
  void MoveTo(std::string* text) {
    text->append(buffer_.Begin(), Size());
    at_ = buffer_.Begin();
    row_ = 0;
  }

 private:
  static constexpr std::uint64_t kOnes = 0x0101010101010101U;
  static constexpr std::uint64_t kBlanks = kOnes * ' ';
  static constexpr size_t kLongestInteger = 40;  // and what WriteInteger writes beyond it

  // Not 0 where a byte is below the blank, a quote or not ASCII.
  static std::uint64_t UnplainIn(std::uint64_t word) {
    const std::uint64_t quotes = word ^ kOnes * '"';
    return (word | (word - kBlanks) | (quotes - kOnes)) & (kOnes << 7);
  }
  std::string_view Cut(std::string_view text) {
    return text.substr(0, kLongestRow + 1 - std::min(kLongestRow, Size() - row_));
  }
  void End() { *at_++ = '\t'; }
  void AddGeneral(std::string_view utf8);

  bool packs_numbers_;
  TextBuffer buffer_;
  char* at_ = nullptr;
  size_t row_ = 0;  // where it begins
};

}  // namespace velmora

#endif  // VELMORA_LISTS_ROW_TEXT_H_
