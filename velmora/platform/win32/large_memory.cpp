#include "velmora/platform/large_memory.h"

#include <new>

namespace velmora {

// Large pages need a privilege here that users do not have.
void* TakeMemory(size_t size) { return ::operator new(size, std::nothrow); }

void GiveMemoryBack(void* memory, size_t /*size*/) { ::operator delete(memory); }

}  // namespace velmora
