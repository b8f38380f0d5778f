// Why a map point has no station: where it lies from the alignment's ends. Pure functions on points.
#ifndef VELMORA_CLI_ALIGN_MISS_H_
#define VELMORA_CLI_ALIGN_MISS_H_

#include <vector>

#include "velmora/alignment/geometry.h"

namespace velmora::cli {

enum class Miss { kBeforeStart, kBeyondEnd, kNothing };

// For a point that no segment and no vertex matched: the nearest vertex is an end, and the point lies
// behind it as the alignment runs there.
Miss WhyMissed(const std::vector<kovltype>& plan, PlanePoint p);
// The same, at once, for a point whose nearest vertex is known to be an end.
Miss WhyMissedAtEnd(const std::vector<kovltype>& plan, PlanePoint p);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_MISS_H_
