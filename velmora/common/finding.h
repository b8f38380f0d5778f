// What a check of a file reports about one of its lines.
#ifndef VELMORA_COMMON_FINDING_H_
#define VELMORA_COMMON_FINDING_H_

#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

struct Finding {
  std::int64_t line = 0;  // from 1; 0: the file as a whole
  std::string text;       // UTF-8, for a user: "is skipped: ..."
  bool misread = true;    // reading skips or cuts the line, or takes it for something else
  bool lost = true;       // a rewrite of the file omits the line or a part of it
};
using Findings = std::vector<Finding>;

}  // namespace velmora

#endif  // VELMORA_COMMON_FINDING_H_
