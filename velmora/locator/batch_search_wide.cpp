#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <iterator>

#include "velmora/locator/batch_search.h"
#include "velmora/platform/vector_lanes.h"
#include "velmora/portability.h"

VELMORA_WIDE_BEGIN

namespace velmora {
namespace {

using namespace wide_lanes;

#include "velmora/locator/batch_search_body.inc"

}  // namespace

BatchRoutines WideRoutines() { return {{MeasureChords, SearchNear}, SearchBatch, kMostWithoutCells}; }

}  // namespace velmora

VELMORA_WIDE_END
