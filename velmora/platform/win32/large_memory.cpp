#include "velmora/platform/large_memory.h"

#include <new>

namespace velmora {

// Large pages need a privilege here that users do not have.
void* AllocateLargeMemory(size_t size) { return ::operator new(size, std::nothrow); }

void FreeLargeMemory(void* memory) { ::operator delete(memory); }

}  // namespace velmora
