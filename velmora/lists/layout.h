// Where the fields of a list's rows are, and the fields of one row.
#ifndef VELMORA_LISTS_LAYOUT_H_
#define VELMORA_LISTS_LAYOUT_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/common/finding.h"
#include "velmora/lists/fields.h"
#include "velmora/lists/packed_number.h"
#include "velmora/lists/rows.h"

namespace velmora {

struct ListLayout {
  char separator = ',';
  DecimalSign decimal = DecimalSign::kPoint;
  bool packs_numbers = false;  // as ListSource
  bool has_header = false;
  size_t width = 0;              // columns: a row with a field beyond them is unreadable
  size_t header_count = 0;       // fields of the header with empty ones at its end; 0 without one
  bool doubtful_commas = false;  // one between two columns can be a decimal comma
  std::optional<size_t> second;  // the later of two coordinates' columns side by side
  std::vector<std::optional<size_t>> columns;  // by role
  struct Carried {
    size_t column;
    std::string title;
  };
  std::vector<Carried> carried;  // the columns without a role, in the order of the list
  Findings notes;                // for the user: titles that are not known, text above the header
};

// The fields of a row, as UTF-8: views into the row where that is possible.
class RowFields {
 public:
  explicit RowFields(const ListLayout& layout) : layout_(layout) {}

  // False for a row without anything in it. The row's bytes outlive the fields.
  bool Split(const Row& row, std::optional<TextEncoding> encoding);

  // The same in steps, for a row whose fields the caller finds: Clear, Add each of them, Finish. Add is false
  // where a row has too many.
  void Clear() { fields_.clear(); }
  bool Add(std::string_view field) {
    if (fields_.size() == kMostFields) return false;
    fields_.push_back(TrimmedField(field));
    return true;
  }
  // `problem` as Problem(), before the number of fields is looked at.
  bool Finish(const char* problem);

  // Why the row cannot be read whatever its fields hold; empty when it can.
  const std::string& Problem() const { return problem_; }

  // Empty when the row has no such field.
  std::string_view Field(size_t column) const {
    const std::string_view field = Raw(column);
    return layout_.packs_numbers && field.starts_with(kPackedMark) ? Unpacked(column) : field;
  }
  std::string_view Text(size_t role) const {
    const std::optional<size_t>& column = layout_.columns[role];
    return column ? Field(*column) : std::string_view();
  }
  bool IsEmpty(size_t role) const {
    const std::optional<size_t>& column = layout_.columns[role];
    return !column || Raw(*column).empty();
  }
  // False when the field is empty or not a number.
  bool Read(size_t role, double* value) const {
    const std::optional<size_t>& column = layout_.columns[role];
    if (!column) return false;
    if (layout_.packs_numbers && ReadPackedNumber(Raw(*column), value)) return true;
    return ReadFieldNumber(Field(*column), layout_.decimal, value);
  }

 private:
  static constexpr size_t kMostFields = 10'000;
  void CheckCommas(size_t count);
  std::string_view Raw(size_t column) const {
    return column < fields_.size() ? fields_[column] : std::string_view();
  }
  std::string_view Unpacked(size_t column) const;

  const ListLayout& layout_;
  std::vector<std::string_view> fields_;
  std::string decoded_;
  std::string unquoted_;
  std::string problem_;
  mutable std::vector<std::array<char, kLongestShortest>> unpacked_;  // by column, of those asked for
};

}  // namespace velmora

#endif  // VELMORA_LISTS_LAYOUT_H_
