#include "velmora/platform/large_memory.h"

#include <sys/mman.h>

#include <new>

namespace velmora {
namespace {

constexpr std::align_val_t kAlignment{kLargePiece};

}  // namespace

void* AllocateLargeMemory(size_t size) {
  void* memory = ::operator new(size, kAlignment, std::nothrow);
  if (memory != nullptr) (void)madvise(memory, size, MADV_HUGEPAGE);
  return memory;
}

void FreeLargeMemory(void* memory) { ::operator delete(memory, kAlignment); }

}  // namespace velmora
