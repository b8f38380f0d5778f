#include "velmora/locator/instruction_set.h"

#include "velmora/locator/near_kernel.h"

namespace velmora {

std::vector<InstructionSet> AvailableInstructionSets() {
  std::vector<InstructionSet> sets = {InstructionSet::kSse2};
  if (__builtin_cpu_supports("avx512f") != 0) sets.push_back(InstructionSet::kAvx512);
  if (__builtin_cpu_supports("avx2") != 0) sets.push_back(InstructionSet::kAvx2);
  return sets;
}

NearRoutines NearRoutinesFor(InstructionSet set) {
  switch (set) {
    case InstructionSet::kAvx512:
      return NearRoutinesAvx512();
    case InstructionSet::kAvx2:
      return NearRoutinesAvx2();
    default:
      return NearRoutinesSse2();
  }
}

}  // namespace velmora
