// Why a map point has no station: where it lies from the alignment's ends. Pure functions on points.
#ifndef VELMORA_CLI_ALIGN_OFF_END_H_
#define VELMORA_CLI_ALIGN_OFF_END_H_

#include <vector>

#include "velmora/alignment/geometry.h"

namespace velmora::cli {

enum class OffEnd { kBeforeStart, kBeyondEnd, kNothing };

// For a point that no segment and no vertex matched: the nearest vertex is an end, and the point lies
// behind it as the alignment runs there.
OffEnd WhyMissed(const std::vector<kovltype>& plan, PlanePoint p);
// The same, at once, for a point whose nearest vertex is known to be an end.
OffEnd WhyMissedAtEnd(const std::vector<kovltype>& plan, PlanePoint p);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_OFF_END_H_
