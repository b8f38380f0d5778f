// Doubles side by side in the processor's vectors. One namespace a vector type, all with the same names, so
// that one body of code serves each of them:
//
//   Vec, kLanes       doubles side by side and their number, with + - * /
//   Mask              the result of a comparison
//   Load, Store       memory of any alignment
//   Fill              the same value in every lane
//   Least, Greatest   the second operand where neither is smaller or greater, also where one is not a number
//   Choose(m, a, b)   a where the mask holds, else b
//   Bits              a mask's lanes as the lowest bits
//   LeastLane         the smallest lane
//   StoreWhole        the lanes cut to whole numbers, to 32-bit memory
//
// `baseline_lanes` runs on every processor of its kind (SSE2 on x86-64, NEON on 64-bit ARM). `wide_lanes`
// runs where HasWideLanes() says so (AVX2); code that uses it is between VELMORA_WIDE_BEGIN and
// VELMORA_WIDE_END and is not called elsewhere. Both give the same bits.
#ifndef VELMORA_PLATFORM_VECTOR_LANES_H_
#define VELMORA_PLATFORM_VECTOR_LANES_H_

#include <cstddef>
#include <cstdint>

#include "velmora/portability.h"

#if defined(__aarch64__) || defined(_M_ARM64)

#include <arm_neon.h>

#define VELMORA_HAS_X86_VECTORS 0

namespace velmora {

namespace baseline_lanes {

struct Vec {
  float64x2_t lanes;
};
struct Mask {
  uint64x2_t lanes;
};
inline constexpr size_t kLanes = 2;

inline Vec operator+(Vec a, Vec b) { return {vaddq_f64(a.lanes, b.lanes)}; }
inline Vec operator-(Vec a, Vec b) { return {vsubq_f64(a.lanes, b.lanes)}; }
inline Vec operator*(Vec a, Vec b) { return {vmulq_f64(a.lanes, b.lanes)}; }
inline Vec operator/(Vec a, Vec b) { return {vdivq_f64(a.lanes, b.lanes)}; }
inline Vec operator-(Vec a) { return {vnegq_f64(a.lanes)}; }
inline Vec Load(const double* from) { return {vld1q_f64(from)}; }
inline void Store(double* to, Vec a) { vst1q_f64(to, a.lanes); }
inline Vec Fill(double a) { return {vdupq_n_f64(a)}; }
inline Mask Less(Vec a, Vec b) { return {vcltq_f64(a.lanes, b.lanes)}; }
inline Mask Equal(Vec a, Vec b) { return {vceqq_f64(a.lanes, b.lanes)}; }
inline Mask And(Mask a, Mask b) { return {vandq_u64(a.lanes, b.lanes)}; }
inline Vec Choose(Mask m, Vec a, Vec b) { return {vbslq_f64(m.lanes, a.lanes, b.lanes)}; }
inline Vec Least(Vec a, Vec b) { return Choose(Less(a, b), a, b); }
inline Vec Greatest(Vec a, Vec b) { return Choose(Less(b, a), a, b); }
inline Vec Root(Vec a) { return {vsqrtq_f64(a.lanes)}; }
inline Vec Magnitude(Vec a) { return {vabsq_f64(a.lanes)}; }
inline unsigned Bits(Mask m) {
  return static_cast<unsigned>((vgetq_lane_u64(m.lanes, 0) & 1) | (vgetq_lane_u64(m.lanes, 1) & 2));
}
inline double LeastLane(Vec a) {
  const double first = vgetq_lane_f64(a.lanes, 0);
  const double second = vgetq_lane_f64(a.lanes, 1);
  return first < second ? first : second;
}
inline void StoreWhole(std::int32_t* to, Vec a) { vst1_s32(to, vmovn_s64(vcvtq_s64_f64(a.lanes))); }

}  // namespace baseline_lanes

// Nothing wider is used here.
#define VELMORA_WIDE_BEGIN
#define VELMORA_WIDE_END
namespace wide_lanes = baseline_lanes;
inline bool HasWideLanes() { return false; }

}  // namespace velmora

#else

#include <immintrin.h>
#ifndef VELMORA_PROCESSOR_HAS
#include <intrin.h>
#endif

#define VELMORA_HAS_X86_VECTORS 1

#define VELMORA_WIDE_BEGIN VELMORA_AVX2_BEGIN
#define VELMORA_WIDE_END VELMORA_AVX2_END

namespace velmora {

namespace baseline_lanes {

struct Vec {
  __m128d lanes;
};
struct Mask {
  __m128d lanes;
};
inline constexpr size_t kLanes = 2;

inline Vec operator+(Vec a, Vec b) { return {_mm_add_pd(a.lanes, b.lanes)}; }
inline Vec operator-(Vec a, Vec b) { return {_mm_sub_pd(a.lanes, b.lanes)}; }
inline Vec operator*(Vec a, Vec b) { return {_mm_mul_pd(a.lanes, b.lanes)}; }
inline Vec operator/(Vec a, Vec b) { return {_mm_div_pd(a.lanes, b.lanes)}; }
inline Vec Load(const double* from) { return {_mm_loadu_pd(from)}; }
inline void Store(double* to, Vec a) { _mm_storeu_pd(to, a.lanes); }
inline Vec Fill(double a) { return {_mm_set1_pd(a)}; }
inline Vec operator-(Vec a) { return {_mm_xor_pd(a.lanes, _mm_set1_pd(-0.0))}; }
inline Mask Less(Vec a, Vec b) { return {_mm_cmplt_pd(a.lanes, b.lanes)}; }
inline Mask Equal(Vec a, Vec b) { return {_mm_cmpeq_pd(a.lanes, b.lanes)}; }
inline Mask And(Mask a, Mask b) { return {_mm_and_pd(a.lanes, b.lanes)}; }
inline Vec Choose(Mask m, Vec a, Vec b) {
  return {_mm_or_pd(_mm_and_pd(m.lanes, a.lanes), _mm_andnot_pd(m.lanes, b.lanes))};
}
inline Vec Least(Vec a, Vec b) { return {_mm_min_pd(a.lanes, b.lanes)}; }
inline Vec Greatest(Vec a, Vec b) { return {_mm_max_pd(a.lanes, b.lanes)}; }
inline Vec Root(Vec a) { return {_mm_sqrt_pd(a.lanes)}; }
inline Vec Magnitude(Vec a) { return {_mm_andnot_pd(_mm_set1_pd(-0.0), a.lanes)}; }
inline unsigned Bits(Mask m) { return static_cast<unsigned>(_mm_movemask_pd(m.lanes)); }
inline double LeastLane(Vec a) {
  return _mm_cvtsd_f64(_mm_min_sd(a.lanes, _mm_unpackhi_pd(a.lanes, a.lanes)));
}
inline void StoreWhole(std::int32_t* to, Vec a) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_cvttpd_epi32(a.lanes));
}

}  // namespace baseline_lanes

VELMORA_WIDE_BEGIN

namespace wide_lanes {

struct Vec {
  __m256d lanes;
};
struct Mask {
  __m256d lanes;
};
inline constexpr size_t kLanes = 4;

inline Vec operator+(Vec a, Vec b) { return {_mm256_add_pd(a.lanes, b.lanes)}; }
inline Vec operator-(Vec a, Vec b) { return {_mm256_sub_pd(a.lanes, b.lanes)}; }
inline Vec operator*(Vec a, Vec b) { return {_mm256_mul_pd(a.lanes, b.lanes)}; }
inline Vec operator/(Vec a, Vec b) { return {_mm256_div_pd(a.lanes, b.lanes)}; }
inline Vec Load(const double* from) { return {_mm256_loadu_pd(from)}; }
inline void Store(double* to, Vec a) { _mm256_storeu_pd(to, a.lanes); }
inline Vec Fill(double a) { return {_mm256_set1_pd(a)}; }
inline Vec operator-(Vec a) { return {_mm256_xor_pd(a.lanes, _mm256_set1_pd(-0.0))}; }
inline Mask Less(Vec a, Vec b) { return {_mm256_cmp_pd(a.lanes, b.lanes, _CMP_LT_OQ)}; }
inline Mask Equal(Vec a, Vec b) { return {_mm256_cmp_pd(a.lanes, b.lanes, _CMP_EQ_OQ)}; }
inline Mask And(Mask a, Mask b) { return {_mm256_and_pd(a.lanes, b.lanes)}; }
inline Vec Choose(Mask m, Vec a, Vec b) { return {_mm256_blendv_pd(b.lanes, a.lanes, m.lanes)}; }
inline Vec Least(Vec a, Vec b) { return {_mm256_min_pd(a.lanes, b.lanes)}; }
inline Vec Greatest(Vec a, Vec b) { return {_mm256_max_pd(a.lanes, b.lanes)}; }
inline Vec Root(Vec a) { return {_mm256_sqrt_pd(a.lanes)}; }
inline Vec Magnitude(Vec a) { return {_mm256_andnot_pd(_mm256_set1_pd(-0.0), a.lanes)}; }
inline unsigned Bits(Mask m) { return static_cast<unsigned>(_mm256_movemask_pd(m.lanes)); }
inline double LeastLane(Vec a) {
  const __m128d half = _mm_min_pd(_mm256_castpd256_pd128(a.lanes), _mm256_extractf128_pd(a.lanes, 1));
  return _mm_cvtsd_f64(_mm_min_sd(half, _mm_unpackhi_pd(half, half)));
}
inline void StoreWhole(std::int32_t* to, Vec a) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_cvttpd_epi32(a.lanes));
}

}  // namespace wide_lanes

VELMORA_WIDE_END

inline bool HasWideLanes() {
#ifdef VELMORA_PROCESSOR_HAS
  return VELMORA_PROCESSOR_HAS("avx2");
#else
  int info[4];
  __cpuid(info, 1);
  const bool saves_wide = (info[2] >> 27 & 1) != 0 && (_xgetbv(0) & 6) == 6;
  __cpuidex(info, 7, 0);
  return saves_wide && (info[1] >> 5 & 1) != 0;
#endif
}

}  // namespace velmora

#endif

#endif  // VELMORA_PLATFORM_VECTOR_LANES_H_
