// Rewrites of files that hold more than the rewritten file will.
#ifndef VELMORA_CLI_CONTEXT_LOSSES_H_
#define VELMORA_CLI_CONTEXT_LOSSES_H_

#include <string>

#include "velmora/common/finding.h"

namespace velmora::cli {

// Throws a Refusal when a rewrite would lose something that was found; forced, it only warns. `more` is the
// number of losses beyond those in the list.
void RefuseLosses(const std::string& file, const Findings& findings, bool force, std::int64_t more = 0);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_LOSSES_H_
