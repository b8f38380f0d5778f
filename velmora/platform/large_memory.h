// Memory in large pieces.
#ifndef VELMORA_PLATFORM_LARGE_MEMORY_H_
#define VELMORA_PLATFORM_LARGE_MEMORY_H_

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#include "velmora/export.h"

namespace velmora {

// Pieces are multiples of this, in bytes.
inline constexpr size_t kLargePiece = size_t{2} << 20;

// Memory in large pages where the system has them: what is filled for the first time is handed over page by
// page, and with the usual small ones that takes longer than the filling. Null when memory runs out.
VELMORA_API void* AllocateLargeMemory(size_t size);
// Frees what AllocateLargeMemory returned.
VELMORA_API void FreeLargeMemory(void* memory);

// For vectors, in large pages when they are large.
template <class T>
struct LargeAllocator {
  using value_type = T;

  LargeAllocator() = default;
  template <class U>
  explicit LargeAllocator(const LargeAllocator<U>&) {}
  T* allocate(size_t count) {
    if (!IsLarge(count)) return std::allocator<T>().allocate(count);
    void* const memory = AllocateLargeMemory(count * sizeof(T));
    if (memory == nullptr) throw std::bad_alloc();
    return static_cast<T*>(memory);
  }
  void deallocate(T* memory, size_t count) {
    if (IsLarge(count))
      FreeLargeMemory(memory);
    else
      std::allocator<T>().deallocate(memory, count);
  }
  bool operator==(const LargeAllocator&) const = default;

 private:
  static bool IsLarge(size_t count) { return count > kLargePiece / sizeof(T); }
};
template <class T>
using LargeVector = std::vector<T, LargeAllocator<T>>;

}  // namespace velmora

#endif  // VELMORA_PLATFORM_LARGE_MEMORY_H_
