// Vectors of numbers whose memory is in large pages when it is large. New elements are not set, so that the
// pages are allocated to the thread that first writes them.
#ifndef VELMORA_PLATFORM_LARGE_VECTOR_H_
#define VELMORA_PLATFORM_LARGE_VECTOR_H_

#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "velmora/platform/large_memory.h"

namespace velmora {

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
  template <class U>
  void construct(U* at) {
    ::new (static_cast<void*>(at)) U;
  }
  template <class U, class... Values>
  void construct(U* at, Values&&... values) {
    ::new (static_cast<void*>(at)) U(std::forward<Values>(values)...);
  }
  bool operator==(const LargeAllocator&) const = default;

 private:
  static bool IsLarge(size_t count) { return count > kLargePiece / sizeof(T); }
};
template <class T>
using LargeVector = std::vector<T, LargeAllocator<T>>;

}  // namespace velmora

#endif  // VELMORA_PLATFORM_LARGE_VECTOR_H_
