#include "cli/context/losses.h"

#include <algorithm>

#include "cli/terminal/error.h"

namespace velmora::cli {

void RefuseLosses(const std::string& file, const Findings& findings, bool force, std::int64_t more) {
  const auto is_lost = [](const Finding& finding) { return finding.lost; };
  const auto first = std::find_if(findings.begin(), findings.end(), is_lost);
  if (first == findings.end()) return;
  more += std::count_if(first + 1, findings.end(), is_lost);
  const std::string all = "this" + (more == 0 ? "" : " and " + std::to_string(more) + " more");
  const auto at = [&](const std::string& what) { return At(file, first->line, what); };
  if (!force)
    throw Refusal(at(first->text + "; rewriting the file would lose " + all +
                     ", so nothing was written; fix it, or write anyway with --force"));
  Warn(at(first->text + "; the rewrite loses " + all));
}

}  // namespace velmora::cli
