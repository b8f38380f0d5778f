#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <iterator>

#include "velmora/locator/batch_search.h"
#include "velmora/platform/vector_lanes.h"
#include "velmora/portability.h"

namespace velmora {
namespace {

using namespace baseline_lanes;

#include "velmora/locator/batch_search_body.inc"

}  // namespace

BatchRoutines BaselineRoutines() { return {{MeasureChords, SearchNear}, SearchBatch, kMostWithoutCells}; }

BatchRoutines FastestRoutines() { return HasWideLanes() ? WideRoutines() : BaselineRoutines(); }

}  // namespace velmora
