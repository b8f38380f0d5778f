// Points in no order, put into one in which those close together on the ground follow each other: where the
// plan is larger than the processor's caches, jumping about in it costs more than the sorting.
#ifndef VELMORA_LOCATOR_GROUND_ORDER_H_
#define VELMORA_LOCATOR_GROUND_ORDER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "velmora/locator/segment_bounds.h"
#include "velmora/platform/large_memory.h"

namespace velmora {

class SpatialSort {
 public:
  // Room for up to `most` points over a plan's extent; about `cells` patches of ground.
  SpatialSort(const Box& extent, size_t cells, size_t most);

  // Whether there was memory for it.
  bool IsUsable() const {
    return points_ != nullptr && cells_ != nullptr && starts_ != nullptr && answers_ != nullptr;
  }

  size_t Most() const { return most_; }

  struct Point {
    double x;
    double y;
    std::uint32_t from;  // its position in the caller's order
  };
  // Takes up to `most` points. Points that are nowhere come somewhere.
  void Sort(const double* x, const double* y, size_t count);
  const Point* Points() const { return points_.get(); }

  struct Answer {
    double station;
    double offset;
    std::uint32_t from;
    int result;
  };
  // Takes the answer to each point of a batch once, in any order, and then puts them where they belong: first
  // with those whose places are close by, so that nothing is written all over a large array.
  void Keep(const Answer& answer) {
    Answer* const place = &answers_[next_[answer.from >> kPlacesBits]++];
    __builtin_prefetch(place + kAhead, 1);
    *place = answer;
  }
  void ScatterAnswers(size_t count, double* station, double* offset, int* result) const;

 private:
  static constexpr unsigned kPlacesBits = 13;
  static constexpr size_t kAhead = 10;  // answers: memory is asked for before it is written

  struct GiveBack {
    void operator()(void* memory) const { GiveLargeMemoryBack(memory); }
  };
  template <class T>
  using LargeArray = std::unique_ptr<T[], GiveBack>;
  template <class T>
  static LargeArray<T> Take(size_t count) {
    return LargeArray<T>(static_cast<T*>(TakeLargeMemory(count * sizeof(T))));
  }

  PlanePoint low_;
  double per_metre_;
  int columns_ = 1;
  int rows_ = 1;
  size_t most_;
  LargeArray<Point> points_;
  LargeArray<std::uint32_t> cells_;  // of the caller's points
  std::unique_ptr<std::uint32_t[]> starts_;
  LargeArray<Answer> answers_;  // those with places from i << kPlacesBits on at that position
  std::vector<std::uint32_t> next_;
};

// Whether most points lie farther than `close` from the one before.
bool AreScattered(const double* x, const double* y, size_t count, double close);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_GROUND_ORDER_H_
