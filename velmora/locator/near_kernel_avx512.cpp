// The search near the line with AVX-512.
#include <immintrin.h>

#include <bit>
#include <cmath>
#include <cstring>

#include "velmora/locator/near_kernel.h"

// GCC 12 takes the operands that its own header leaves open for mistakes.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"  // NOLINT: for GCC
// For GCC, then for clang; each passes over the other's.
#pragma GCC push_options       // NOLINT: for GCC
#pragma GCC target("avx512f")  // NOLINT: for GCC
#pragma clang attribute push(__attribute__((target("avx512f"))), apply_to = function)

namespace velmora {
namespace {

using Vec = __m512d;
using Mask = __mmask8;
constexpr size_t kLanes = 8;

inline Vec Load(const double* from) { return _mm512_loadu_pd(from); }
inline void Store(double* to, Vec a) { _mm512_storeu_pd(to, a); }
inline Vec Fill(double a) { return _mm512_set1_pd(a); }
inline Vec Least(Vec a, Vec b) { return _mm512_min_pd(a, b); }
inline Vec Greatest(Vec a, Vec b) { return _mm512_max_pd(a, b); }
inline Vec Root(Vec a) { return _mm512_sqrt_pd(a); }
inline Vec Magnitude(Vec a) { return _mm512_abs_pd(a); }
inline Mask Less(Vec a, Vec b) { return _mm512_cmp_pd_mask(a, b, _CMP_LT_OQ); }
inline Mask Equal(Vec a, Vec b) { return _mm512_cmp_pd_mask(a, b, _CMP_EQ_OQ); }
inline Mask And(Mask a, Mask b) { return static_cast<Mask>(a & b); }
inline unsigned Bits(Mask m) { return m; }
inline Vec Choose(Mask m, Vec a, Vec b) { return _mm512_mask_blend_pd(m, b, a); }
inline double LeastLane(Vec a) { return _mm512_reduce_min_pd(a); }
inline void StoreWhole(std::int32_t* to, Vec a) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm512_cvttpd_epi32(a));
}

#include "velmora/locator/near_kernel_body.inc"

}  // namespace

NearRoutines NearRoutinesAvx512() { return {FindNear, MeasureChords}; }

}  // namespace velmora

#pragma clang attribute pop
#pragma GCC pop_options  // NOLINT: for GCC
