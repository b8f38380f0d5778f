// Memory in large pieces.
#ifndef VELMORA_PLATFORM_LARGE_MEMORY_H_
#define VELMORA_PLATFORM_LARGE_MEMORY_H_

#include <cstddef>

#include "velmora/export.h"

namespace velmora {

// From here on a piece lies in pages of its own, large ones where the system has them: memory that is filled
// for the first time is handed over page by page, and with the usual small ones that takes longer than the
// filling.
inline constexpr size_t kLargePiece = size_t{2} << 20;

// Null when memory runs out. A multiple of kLargePiece is used to the last byte.
VELMORA_API void* TakeMemory(size_t size);
VELMORA_API void GiveMemoryBack(void* memory, size_t size);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_LARGE_MEMORY_H_
