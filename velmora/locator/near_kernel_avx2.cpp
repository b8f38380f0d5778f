// The search near the line with AVX2.
#include <immintrin.h>

#include <bit>
#include <cmath>
#include <cstring>

#include "velmora/locator/near_kernel.h"

// For GCC, then for clang; each passes over the other's.
#pragma GCC push_options    // NOLINT: for GCC
#pragma GCC target("avx2")  // NOLINT: for GCC
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)

namespace velmora {
namespace {

using Vec = __m256d;
using Mask = __m256d;
constexpr size_t kLanes = 4;

inline Vec Load(const double* from) { return _mm256_loadu_pd(from); }
inline void Store(double* to, Vec a) { _mm256_storeu_pd(to, a); }
inline Vec Fill(double a) { return _mm256_set1_pd(a); }
inline Vec Least(Vec a, Vec b) { return _mm256_min_pd(a, b); }
inline Vec Greatest(Vec a, Vec b) { return _mm256_max_pd(a, b); }
inline Vec Root(Vec a) { return _mm256_sqrt_pd(a); }
inline Vec Magnitude(Vec a) { return _mm256_andnot_pd(Fill(-0.0), a); }
inline Mask Less(Vec a, Vec b) { return _mm256_cmp_pd(a, b, _CMP_LT_OQ); }
inline Mask Equal(Vec a, Vec b) { return _mm256_cmp_pd(a, b, _CMP_EQ_OQ); }
inline Mask And(Mask a, Mask b) { return _mm256_and_pd(a, b); }
inline unsigned Bits(Mask m) { return static_cast<unsigned>(_mm256_movemask_pd(m)); }
inline Vec Choose(Mask m, Vec a, Vec b) { return _mm256_blendv_pd(b, a, m); }
inline double LeastLane(Vec a) {
  const __m128d half = _mm_min_pd(_mm256_castpd256_pd128(a), _mm256_extractf128_pd(a, 1));
  return _mm_cvtsd_f64(_mm_min_sd(half, _mm_unpackhi_pd(half, half)));
}
inline void StoreWhole(std::int32_t* to, Vec a) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_cvttpd_epi32(a));
}

#include "velmora/locator/near_kernel_body.inc"

}  // namespace

NearRoutines NearRoutinesAvx2() { return {FindNear, MeasureChords}; }

}  // namespace velmora

#pragma clang attribute pop
#pragma GCC pop_options  // NOLINT: for GCC
