// Checks what CStodPunkt accepts silently: whether a file is one of support points, and which levels are not
// numbers.
#ifndef VELMORA_ALIGNMENT_SUPPORT_CHECK_H_
#define VELMORA_ALIGNMENT_SUPPORT_CHECK_H_

#include <vector>

#include "velmora/alignment/checks.h"
#include "velmora/platform/text_file.h"

namespace velmora {

struct SupportCheck {
  bool has_header = true;       // false: the only finding says why it is not a file of support points
  bool failed = false;          // reading stopped at the only finding's line
  BoundedFindings findings;     // levels that are not numbers, and an end before the last "*"
  std::vector<bool> has_level;  // by point, in the order of CStodPunkt
};
SupportCheck CheckSupportPoints(TextReader* reader);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_SUPPORT_CHECK_H_
