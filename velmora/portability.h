/* Extensions of compilers, each under one name. No other file spells one or asks which compiler it is, so
 * that any compiler with C++20 can build the library. Clients include it with export.h, also those in C. */
#ifndef VELMORA_PORTABILITY_H_
#define VELMORA_PORTABILITY_H_

/* What a shared library shows, and what a program uses of one. */
#ifdef _WIN32
#define VELMORA_SYMBOL_EXPORT __declspec(dllexport)
#define VELMORA_SYMBOL_IMPORT __declspec(dllimport)
#else
#define VELMORA_SYMBOL_EXPORT __attribute__((visibility("default")))
#define VELMORA_SYMBOL_IMPORT VELMORA_SYMBOL_EXPORT
#endif

/* VELMORA_PREFETCH_READ and _WRITE ask for the memory at an address before it is read or written: a hint,
 * without effect where the compiler has none. VELMORA_PROCESSOR_HAS("avx2") asks the processor that the
 * program runs on; a compiler without it declares what asks in <intrin.h>. Between VELMORA_AVX2_BEGIN and
 * VELMORA_AVX2_END functions are compiled for processors with AVX2. */
#if defined(_MSC_VER) && !defined(__clang__)
#define VELMORA_ALWAYS_INLINE __forceinline
#define VELMORA_NEVER_INLINE __declspec(noinline)
#define VELMORA_PREFETCH_READ(at) static_cast<void>(at)
#define VELMORA_PREFETCH_WRITE(at) static_cast<void>(at)
#define VELMORA_AVX2_BEGIN
#define VELMORA_AVX2_END
#else
#define VELMORA_ALWAYS_INLINE [[gnu::always_inline]] inline
#define VELMORA_NEVER_INLINE [[gnu::noinline]]
#define VELMORA_PREFETCH_READ(at) __builtin_prefetch(at, 0)
#define VELMORA_PREFETCH_WRITE(at) __builtin_prefetch(at, 1)
#define VELMORA_PROCESSOR_HAS(feature) (__builtin_cpu_supports(feature) != 0)
#ifdef __clang__
#define VELMORA_AVX2_BEGIN \
  _Pragma("clang attribute push(__attribute__((target(\"avx2\"))), apply_to = function)")
#define VELMORA_AVX2_END _Pragma("clang attribute pop")
#else
#define VELMORA_AVX2_BEGIN _Pragma("GCC push_options") _Pragma("GCC target(\"avx2\")")
#define VELMORA_AVX2_END _Pragma("GCC pop_options")
#endif
#endif

#endif /* VELMORA_PORTABILITY_H_ */
