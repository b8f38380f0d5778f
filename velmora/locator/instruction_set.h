// The vector instructions that a search may use.
#ifndef VELMORA_LOCATOR_INSTRUCTION_SET_H_
#define VELMORA_LOCATOR_INSTRUCTION_SET_H_

#include <vector>

#include "velmora/export.h"

namespace velmora {

enum class InstructionSet { kSse2, kAvx2, kAvx512 };

// What this machine has, the fastest last; every machine has SSE2. AVX-512 comes before AVX2: few places have
// more than four segments to compare, and its wider steps take longer.
VELMORA_API std::vector<InstructionSet> AvailableInstructionSets();

}  // namespace velmora

#endif  // VELMORA_LOCATOR_INSTRUCTION_SET_H_
