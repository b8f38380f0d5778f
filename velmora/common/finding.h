// What is wrong with a line of a file, or with the file.
#ifndef VELMORA_COMMON_FINDING_H_
#define VELMORA_COMMON_FINDING_H_

#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

struct Finding {
  std::int64_t line = 0;  // 0: the file as a whole
  std::string text;       // UTF-8, one line, without the file's name
  bool misread = true;    // reading skips or cuts the line, or takes it for something else
  bool lost = true;       // a rewrite of the file leaves it, or a part of it, out
};
using Findings = std::vector<Finding>;

}  // namespace velmora

#endif  // VELMORA_COMMON_FINDING_H_
