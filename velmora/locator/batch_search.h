// The search near the line for many points at once: one body, compiled for each width of vectors, with the
// same results.
#ifndef VELMORA_LOCATOR_BATCH_SEARCH_H_
#define VELMORA_LOCATOR_BATCH_SEARCH_H_

#include <cstddef>
#include <cstdint>

#include "velmora/locator/candidate_grid.h"
#include "velmora/locator/plan_snapshot.h"

namespace velmora {

// What the search reads.
struct BatchView {
  GridLayout layout;
  std::uint64_t* slots;
  PackedCell* cells;
  const double* h;
  const double* v;
  const double* inverse;
  const double* chord_slacks;  // may be null
  const double* stations;
  const PlanSnapshot* plan;
  const CandidateGrid* grid;  // null where the whole plan is searched
  size_t last;                // vertex
  bool descending;
  const std::uint32_t* roads;  // PlanSnapshot::Roads(), null for a single road
};

inline constexpr size_t kMostInBatch = 128;  // points
inline constexpr int kUnsolved = -2;         // a result that is left to the caller

// Answers those of up to kMostInBatch points that plainly have their foot on one segment; the result of the
// others is kUnsolved, with their outputs untouched. The result is 0 on a single road, of several the road's
// number. Computes the cells that are not known.
using BatchSearch = void (*)(const BatchView& view, const double* x, const double* y, size_t count,
                             double* station, double* offset, int* result);

struct BatchRoutines : ChordRoutines {
  BatchSearch search;
  size_t most_without_cells;  // segments of a plan: with more, cells take less than all boxes
};

BatchRoutines BaselineRoutines();  // every processor of its kind
BatchRoutines WideRoutines();      // where HasWideLanes()
BatchRoutines FastestRoutines();

}  // namespace velmora

#endif  // VELMORA_LOCATOR_BATCH_SEARCH_H_
