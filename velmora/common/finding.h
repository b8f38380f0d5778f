// What a check of a file reports about one of its lines.
#ifndef VELMORA_COMMON_FINDING_H_
#define VELMORA_COMMON_FINDING_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "velmora/text/quoted.h"

namespace velmora {

// What corrects a finding, where its check knows it.
enum class Repair {
  kLine,      // the line changed or removed
  kStations,  // an alignment's stations corrected
  kOnePoint,  // one of two coincident points removed
  kFile,      // the file restored or made anew
  kEndMark,   // an end-of-file character removed
};

struct Finding {
  std::int64_t line = 0;  // from 1; 0: the file as a whole
  std::string text;       // UTF-8, for a user: "is skipped: ..."
  bool misread = true;    // reading or rewriting skips or cuts the line, or takes it for something else
  bool lost = true;       // a rewrite of the file omits the line or a part of it
  Repair repair = Repair::kLine;
};
using Findings = std::vector<Finding>;

// What a rewrite loses: the first finding, null when nothing is lost, and the number of further ones.
struct Losses {
  const Finding* first = nullptr;
  std::int64_t more = 0;
};
inline Losses LossesIn(const Findings& findings) {
  Losses losses;
  for (const Finding& finding : findings) {
    if (!finding.lost) continue;
    if (losses.first == nullptr)
      losses.first = &finding;
    else
      ++losses.more;
  }
  return losses;
}

// For the last line that is read of a file with text after an end-of-file character. A rewrite keeps it.
inline Finding UnreadTail(std::int64_t line) {
  return {line, "is the last line read: the text after an end-of-file character (0x1A) is not read", true,
          false, Repair::kEndMark};
}

// Collects what is found in one line; without a list nothing.
struct LineFindings {
  std::int64_t line = 0;
  Findings* all = nullptr;

  void Add(std::string what, bool misread = true, bool lost = true) const {
    if (all != nullptr) all->push_back({line, std::move(what), misread, lost});
  }
  // The finding's text is `what`, with `part` quoted after it.
  void Add(const std::string& what, std::wstring_view part, bool misread = true, bool lost = true) const {
    if (all != nullptr) Add(what + ": " + Quoted(part), misread, lost);
  }
};

}  // namespace velmora

#endif  // VELMORA_COMMON_FINDING_H_
