// Checks a project's area file (vag2.h).
#ifndef VELMORA_ALIGNMENT_AREA_CHECK_H_
#define VELMORA_ALIGNMENT_AREA_CHECK_H_

#include "velmora/common/finding.h"
#include "velmora/project/proj_path.h"

namespace velmora {

// Why CVag2::ReadOmr would not read the working area or its alignment, or would read the alignment outside
// the project, and limits that no point is between. Empty for a project without an area file.
Findings CheckArea(const CProjPath& project);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_AREA_CHECK_H_
