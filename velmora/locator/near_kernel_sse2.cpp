// The search near the line with what every machine has.
#include <immintrin.h>

#include <bit>
#include <cmath>
#include <cstring>

#include "velmora/locator/near_kernel.h"

namespace velmora {
namespace {

using Vec = __m128d;
using Mask = __m128d;
constexpr size_t kLanes = 2;

inline Vec Load(const double* from) { return _mm_loadu_pd(from); }
inline void Store(double* to, Vec a) { _mm_storeu_pd(to, a); }
inline Vec Fill(double a) { return _mm_set1_pd(a); }
inline Vec Least(Vec a, Vec b) { return _mm_min_pd(a, b); }
inline Vec Greatest(Vec a, Vec b) { return _mm_max_pd(a, b); }
inline Vec Root(Vec a) { return _mm_sqrt_pd(a); }
inline Vec Magnitude(Vec a) { return _mm_andnot_pd(Fill(-0.0), a); }
inline Mask Less(Vec a, Vec b) { return _mm_cmplt_pd(a, b); }
inline Mask Equal(Vec a, Vec b) { return _mm_cmpeq_pd(a, b); }
inline Mask And(Mask a, Mask b) { return _mm_and_pd(a, b); }
inline unsigned Bits(Mask m) { return static_cast<unsigned>(_mm_movemask_pd(m)); }
inline Vec Choose(Mask m, Vec a, Vec b) { return _mm_or_pd(_mm_and_pd(m, a), _mm_andnot_pd(m, b)); }
inline double LeastLane(Vec a) { return _mm_cvtsd_f64(_mm_min_sd(a, _mm_unpackhi_pd(a, a))); }
inline void StoreWhole(std::int32_t* to, Vec a) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_cvttpd_epi32(a));
}

#include "velmora/locator/near_kernel_body.inc"

}  // namespace

NearRoutines NearRoutinesSse2() { return {FindNear, MeasureChords}; }

}  // namespace velmora
