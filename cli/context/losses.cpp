#include "cli/context/losses.h"

#include "cli/terminal/error.h"

namespace velmora::cli {

void RefuseLosses(const std::string& file, const Findings& findings, bool force, std::int64_t more) {
  const auto [first, further] = LossesIn(findings);
  if (first == nullptr) return;
  more += further;
  const std::string all = "this" + (more == 0 ? "" : " and " + std::to_string(more) + " more");
  const auto at = [&file, line = first->line](const std::string& what) { return At(file, line, what); };
  if (!force)
    throw Refusal(at(first->text + "; rewriting the file would lose " + all +
                     ", so nothing was written; fix it, or write anyway with --force"));
  Warn(at(first->text + "; the rewrite loses " + all));
}

}  // namespace velmora::cli
