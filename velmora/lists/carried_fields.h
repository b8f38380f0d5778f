// The fields of a list's columns that have no role.
#ifndef VELMORA_LISTS_CARRIED_FIELDS_H_
#define VELMORA_LISTS_CARRIED_FIELDS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/lists/layout.h"

namespace velmora {

// The carried fields of the rows of a block.
class CarriedFields {
 public:
  explicit CarriedFields(size_t columns) : columns_(columns) {}
  void Add(const ListLayout& layout, const RowFields& fields) {
    for (const ListLayout::Carried& carried : layout.carried) {
      text_ += fields.Field(carried.column);
      ends_.push_back(static_cast<std::uint32_t>(text_.size()));
    }
  }
  void Clear() {
    text_.clear();
    ends_.clear();
  }
  size_t Columns() const { return columns_; }
  std::string_view Field(size_t row, size_t column) const {
    const size_t at = row * columns_ + column;
    const size_t begin = at == 0 ? 0 : ends_[at - 1];
    return std::string_view(text_).substr(begin, ends_[at] - begin);
  }

 private:
  size_t columns_;
  std::string text_;
  std::vector<std::uint32_t> ends_;  // in text_
};

}  // namespace velmora

#endif  // VELMORA_LISTS_CARRIED_FIELDS_H_
