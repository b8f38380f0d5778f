// The search near the line, for many points at once: one routine for each instruction set, all with the
// same results.
#ifndef VELMORA_LOCATOR_NEAR_KERNEL_H_
#define VELMORA_LOCATOR_NEAR_KERNEL_H_

#include <cstddef>
#include <cstdint>

#include "velmora/locator/instruction_set.h"
#include "velmora/locator/near_table.h"
#include "velmora/locator/plan_snapshot.h"

namespace velmora {

// What the routines read.
struct NearView {
  NearGrid grid;
  const std::uint64_t* slots;
  const std::uint64_t* squares;
  const double* h;
  const double* v;
  const double* inverse;
  const double* pads;  // may be null
  const double* stations;
  const PlanSnapshot* plan;
  const NearTable* table;
  size_t last;  // vertex
  bool descending;
};

inline constexpr size_t kNearBlock = 128;  // points at a time, at most
inline constexpr int kNearUnsolved = 1;    // a result that is left to be worked out

// Answers those of up to kNearBlock points whose square is known and that plainly have their foot on one
// segment; the result of the others is kNearUnsolved, with their outputs untouched.
using NearKernel = void (*)(const NearView& view, const double* x, const double* y, size_t count,
                            double* station, double* offset, int* result);

// The routines for one instruction set.
struct NearRoutines {
  NearKernel find;
  ChordDistances distances;
};

// One source each.
NearRoutines NearRoutinesSse2();
NearRoutines NearRoutinesAvx2();
NearRoutines NearRoutinesAvx512();

NearRoutines NearRoutinesFor(InstructionSet set);

}  // namespace velmora

#endif  // VELMORA_LOCATOR_NEAR_KERNEL_H_
