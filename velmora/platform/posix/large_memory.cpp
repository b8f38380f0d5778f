#include "velmora/platform/large_memory.h"

#include <sys/mman.h>

#include <new>

namespace velmora {

void* TakeMemory(size_t size) {
  if (size < kLargePiece) return ::operator new(size, std::nothrow);
  void* memory = ::operator new(size, std::align_val_t(kLargePiece), std::nothrow);
  if (memory != nullptr) (void)madvise(memory, size / kLargePiece * kLargePiece, MADV_HUGEPAGE);
  return memory;
}

void GiveMemoryBack(void* memory, size_t size) {
  if (size < kLargePiece)
    ::operator delete(memory);
  else
    ::operator delete(memory, std::align_val_t(kLargePiece));
}

}  // namespace velmora
