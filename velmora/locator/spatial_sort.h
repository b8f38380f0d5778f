// Sorts points by where they lie on the ground: where the plan is larger than the processor's caches, random
// access to it costs more than the sorting.
#ifndef VELMORA_LOCATOR_SPATIAL_SORT_H_
#define VELMORA_LOCATOR_SPATIAL_SORT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "velmora/locator/segment_bounds.h"
#include "velmora/platform/large_memory.h"
#include "velmora/portability.h"

namespace velmora {

class SpatialSort {
 public:
  // For up to `most` points over a plan's extent, which is divided into about `cells` cells.
  SpatialSort(const BoundingBox& extent, size_t cells, size_t most);

  // False when memory ran out.
  bool IsUsable() const {
    return points_ != nullptr && cells_ != nullptr && starts_ != nullptr && answers_ != nullptr;
  }

  size_t Most() const { return most_; }

  struct Point {
    double x;
    double y;
    std::uint32_t from;  // its position in the caller's order
  };
  // Takes up to `most` points. Non-finite points are clamped to the grid; their order is unspecified.
  void Sort(const double* x, const double* y, size_t count);
  const Point* Points() const { return points_.get(); }

  struct Answer {
    double station;
    double offset;
    std::uint32_t from;
    int result;
  };
  // Keeps the answers to the points of a batch, each once and in any order, and then scatters them to the
  // caller's arrays. Buckets answers by destination, so that writes stay within the cache.
  void Keep(const Answer& answer) {
    Answer* const place = &answers_[next_[answer.from >> kBucketBits]++];
    VELMORA_PREFETCH_WRITE(place + kAhead);
    *place = answer;
  }
  void ScatterAnswers(size_t count, double* station, double* offset, int* result) const;

 private:
  static constexpr unsigned kBucketBits = 13;
  static constexpr size_t kAhead = 10;  // answers to prefetch

  struct Free {
    void operator()(void* memory) const { FreeLargeMemory(memory); }
  };
  template <class T>
  using LargeArray = std::unique_ptr<T[], Free>;
  template <class T>
  static LargeArray<T> Take(size_t count) {
    return LargeArray<T>(static_cast<T*>(AllocateLargeMemory(count * sizeof(T))));
  }

  PlanePoint low_;
  double per_metre_;
  int columns_ = 1;
  int rows_ = 1;
  size_t most_;
  LargeArray<Point> points_;
  LargeArray<std::uint32_t> cells_;  // of the caller's points
  std::unique_ptr<std::uint32_t[]> starts_;
  LargeArray<Answer> answers_;       // bucket i begins at i << kBucketBits
  std::vector<std::uint32_t> next_;  // of each bucket, the position after its last answer
};

// Whether most points lie farther than `close` from the one before.
bool AreScattered(const double* x, const double* y, size_t count, double close);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_SPATIAL_SORT_H_
