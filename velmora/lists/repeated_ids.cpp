#include "velmora/lists/repeated_ids.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace velmora {

// The id's slot or the empty one for it; null where a made-up list has filled all slots that it can have.
RepeatedIds::Slot* RepeatedIds::Find(std::uint64_t hash) {
  constexpr size_t kMostSteps = 64;
  for (size_t step = 0; step < kMostSteps; ++step) {
    Slot& slot = slots_[(hash + step) & (slots_.size() - 1)];
    if (slot.hash == hash || slot.hash == 0) return &slot;
  }
  return nullptr;
}

void RepeatedIds::Grow() {
  const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(slots_.size() * 2));
  for (const Slot& slot : old)
    if (Slot* const to = slot.hash == 0 ? nullptr : Find(slot.hash)) *to = slot;
}

void RepeatedIds::Add(std::string_view id, std::int64_t line) {
  if (id.empty() || IsFull()) return;
  ++added_;
  const std::uint64_t hash = std::max<std::uint64_t>(1, std::hash<std::string_view>()(id));
  Slot* slot = Find(hash);
  if (slot == nullptr) return;
  if (slot->hash == hash) {
    if (repeated_++ > 0) return;
    first_id_ = id;
    first_line_ = slot->line;
    again_line_ = line;
    return;
  }
  *slot = {hash, line};
  if (++used_ * 2 > slots_.size()) Grow();
}

std::optional<Finding> RepeatedIds::Note() const {
  if (repeated_ == 0) return std::nullopt;
  const std::int64_t more = repeated_ - 1;
  return Finding{again_line_,
                 "id " + Quoted(first_id_) + " is on line " + std::to_string(first_line_) + " too" +
                     (more == 0 ? ""
                                : "; " + std::to_string(more) +
                                      (more == 1 ? " more row repeats" : " more rows repeat") + " an id")};
}

}  // namespace velmora
