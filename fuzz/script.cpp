// Scripts of the simulated field-data program.
#include "cli/link/script.h"

#include "cli/link/link_text.h"
#include "cli/terminal/error.h"
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/platform/dde_text.h"
#include "velmora/platform/files.h"

namespace velmora::fuzz {

void Run(const Input& input) {
  const CString path = Put(L"script.txt", input.File());
  std::vector<cli::ScriptStep> steps;
  try {
    steps = cli::ReadScript(PathForDisplay(path));
  } catch (const cli::Refusal& refusal) {
    const std::string what = refusal.what();
    Require(what == cli::Printable(what) && what.starts_with(PathForDisplay(path) + ":"),
            "a refusal is one line");
    return;
  }
  for (const cli::ScriptStep& step : steps) {
    Require(step.wait_ms >= 0 || step.kind != cli::ScriptStep::Kind::kWait, "waits are not negative");
    Require((step.kind == cli::ScriptStep::Kind::kEnd) == step.text.empty(), "only the end has no text");
    Require(Utf8FromDdeText(cli::EncodeLinkText(step.text, "", cli::kLongestScripted)) == step.text,
            "texts can be sent");
  }
  // Everything is played, however it waits.
  cli::ScriptPlayer player(steps);
  cli::ScriptPlayer::Time now;
  size_t played = 0;
  for (size_t asked = 0; asked < 2 * steps.size() + 1; ++asked) {
    player.Advise("-1");
    if (player.Next(now) != nullptr) ++played;
    now += std::chrono::hours(1);
  }
  const auto waits = std::count_if(steps.begin(), steps.end(), [](const cli::ScriptStep& step) {
    return step.kind == cli::ScriptStep::Kind::kWait;
  });
  Require(played + static_cast<size_t>(waits) == steps.size(), "every step is played once");
}

}  // namespace velmora::fuzz
