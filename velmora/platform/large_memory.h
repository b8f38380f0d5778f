// Memory in large pieces.
#ifndef VELMORA_PLATFORM_LARGE_MEMORY_H_
#define VELMORA_PLATFORM_LARGE_MEMORY_H_

#include <cstddef>

#include "velmora/export.h"

namespace velmora {

// Pieces are multiples of this, in bytes.
inline constexpr size_t kLargePiece = size_t{2} << 20;

// Memory in large pages where the system has them: what is filled for the first time is handed over page by
// page, and with the usual small ones that takes longer than the filling. Null when memory runs out.
VELMORA_API void* AllocateLargeMemory(size_t size);
// Frees what AllocateLargeMemory returned.
VELMORA_API void FreeLargeMemory(void* memory);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_LARGE_MEMORY_H_
