// The vector instructions that a search may use.
#ifndef VELMORA_ALIGNMENT_INSTRUCTION_SET_H_
#define VELMORA_ALIGNMENT_INSTRUCTION_SET_H_

#include <vector>

#include "velmora/export.h"

namespace velmora {

enum class InstructionSet { kSse2, kAvx2, kAvx512 };

// What this machine has, the best last; every machine has SSE2.
VELMORA_API std::vector<InstructionSet> AvailableInstructionSets();

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_INSTRUCTION_SET_H_
