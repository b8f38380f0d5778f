// Compiler extensions, each under one name. The library uses none of them by its own spelling, so that any
// compiler with C++20 can build it.
#ifndef VELMORA_PORTABILITY_H_
#define VELMORA_PORTABILITY_H_

#if defined(_MSC_VER) && !defined(__clang__)
#define VELMORA_ALWAYS_INLINE __forceinline
#define VELMORA_NEVER_INLINE __declspec(noinline)
#else
#define VELMORA_ALWAYS_INLINE [[gnu::always_inline]] inline
#define VELMORA_NEVER_INLINE [[gnu::noinline]]
#endif

namespace velmora {

// Asks for the memory at `at` before it is read or written. A hint, without effect where the compiler has
// none.
inline void PrefetchForRead([[maybe_unused]] const void* at) {
#if !defined(_MSC_VER) || defined(__clang__)
  __builtin_prefetch(at, 0);
#endif
}
inline void PrefetchForWrite([[maybe_unused]] const void* at) {
#if !defined(_MSC_VER) || defined(__clang__)
  __builtin_prefetch(at, 1);
#endif
}

}  // namespace velmora

#endif  // VELMORA_PORTABILITY_H_
