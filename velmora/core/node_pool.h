// Memory for the nodes of one list: a few chunks that grow with the list, so that a list of a million
// records needs few allocations and is freed at once.
#ifndef VELMORA_CORE_NODE_POOL_H_
#define VELMORA_CORE_NODE_POOL_H_

#include <algorithm>
#include <cstddef>
#include <new>

#include "velmora/platform/large_memory.h"

namespace velmora {

// Allocates pieces of `size` bytes with the alignment of operator new.
class NodePool {
 public:
  // For pieces of `size` bytes; allocates nothing yet.
  explicit NodePool(size_t size) : size_(Aligned(std::max(size, sizeof(Free)))) {}
  ~NodePool() { FreeAll(); }
  NodePool(const NodePool&) = delete;
  NodePool& operator=(const NodePool&) = delete;

  // A piece of uninitialised memory; null when memory runs out.
  void* Take() {
    if (free_ != nullptr) {
      Free* piece = free_;
      free_ = piece->next;
      return piece;
    }
    if (next_ == end_ && !Grow()) return nullptr;
    void* piece = next_;
    next_ += size_;
    return piece;
  }
  // Takes a piece back for reuse; the memory stays with the pool until FreeAll.
  void Give(void* piece) { free_ = new (piece) Free{free_}; }

  // Frees everything, pieces in use included.
  void FreeAll() {
    while (chunks_ != nullptr) {
      Chunk* chunk = chunks_;
      chunks_ = chunk->next;
      if (chunk->is_large)
        FreeLargeMemory(chunk);
      else
        ::operator delete(chunk);
    }
    free_ = nullptr;
    next_ = end_ = nullptr;
    nodes_ = 0;
  }

 private:
  struct Free {
    Free* next;
  };
  struct Chunk {
    Chunk* next;
    bool is_large;
  };

  static constexpr size_t Aligned(size_t size) {
    constexpr size_t kAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
    return (size + kAlignment - 1) / kAlignment * kAlignment;
  }

  // Grows by a quarter, for long lists in large pieces: a short list has one node per allocation.
  bool Grow() {
    const size_t head = Aligned(sizeof(Chunk));
    size_t size = head + std::max(nodes_ / 4, size_t{1}) * size_;
    if (size > kLargePiece) size = (size + kLargePiece - 1) / kLargePiece * kLargePiece;
    const size_t count = (size - head) / size_;
    const bool is_large = size >= kLargePiece;
    void* memory = is_large ? AllocateLargeMemory(size) : ::operator new(size, std::nothrow);
    if (memory == nullptr) return false;
    chunks_ = new (memory) Chunk{chunks_, is_large};
    next_ = static_cast<char*>(memory) + head;
    end_ = next_ + count * size_;
    nodes_ += count;
    return true;
  }

  size_t size_;
  size_t nodes_ = 0;  // in all chunks
  Chunk* chunks_ = nullptr;
  Free* free_ = nullptr;  // freed pieces, which are reused first
  char* next_ = nullptr;  // the unused rest of the newest chunk
  char* end_ = nullptr;
};

}  // namespace velmora

#endif  // VELMORA_CORE_NODE_POOL_H_
