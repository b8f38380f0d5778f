// Notices ids that occur twice in a list.
#ifndef VELMORA_LISTS_REPEATED_IDS_H_
#define VELMORA_LISTS_REPEATED_IDS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/common/finding.h"

namespace velmora {

class RepeatedIds {
 public:
  // In the order of the lines. Empty ids are ignored, and so are those after the first kMostIds, so that
  // memory and time are bounded.
  void Add(std::string_view id, std::int64_t line);
  bool IsFull() const { return added_ == kMostIds; }
  static constexpr size_t kMostIds = size_t{1} << 18;

  // The first id that came again, with both lines, and how many more rows have one.
  std::optional<Finding> Note() const;

 private:
  struct Slot {
    std::uint64_t hash = 0;  // 0: empty
    std::int64_t line = 0;
  };
  Slot* Find(std::uint64_t hash);
  void Grow();

  std::vector<Slot> slots_ = std::vector<Slot>(1024);  // a power of two, at most half of them used
  size_t added_ = 0;
  size_t used_ = 0;
  std::string first_id_;
  std::int64_t first_line_ = 0;
  std::int64_t again_line_ = 0;
  std::int64_t repeated_ = 0;  // rows
};

}  // namespace velmora

#endif  // VELMORA_LISTS_REPEATED_IDS_H_
