// The type numbers of WKB.
#ifndef VELMORA_EXCHANGE_WKB_TYPES_H_
#define VELMORA_EXCHANGE_WKB_TYPES_H_

#include <cstdint>

namespace velmora::exchange {

inline constexpr std::uint32_t kPoint = 1;
inline constexpr std::uint32_t kLineString = 2;
inline constexpr std::uint32_t kMultiPoint = 4;
inline constexpr std::uint32_t kMultiLineString = 5;
inline constexpr std::uint32_t kCircularString = 8;
inline constexpr std::uint32_t kCompoundCurve = 9;
inline constexpr std::uint32_t kMultiCurve = 11;
inline constexpr std::uint32_t kWithLevels = 1000;    // added to a type
inline constexpr std::uint32_t kWithMeasures = 2000;  // likewise; 3000 for both

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_WKB_TYPES_H_
