#include "cli/input/list_notes.h"

#include "cli/terminal/error.h"

namespace velmora::cli {

void WarnOf(const std::string& list, const Findings& notes) {
  for (const Finding& note : notes) Warn(At(list, note.line, note.text));
}

void WarnOf(const std::string& list, const std::optional<Finding>& note) {
  if (note) WarnOf(list, Findings{*note});
}

}  // namespace velmora::cli
