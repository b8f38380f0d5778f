#include "cli/terminal/questions.h"

#include <array>
#include <cstdio>
#include <string>
#include <utility>

#include "cli/terminal/error.h"
#include "velmora/platform/console.h"
#include "velmora/platform/dialog.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

int Ask(const std::string& text, unsigned style) {
  const int usual = DefaultButton(style);
  const std::string choice = usual == IDYES ? " [Y/n] " : " [y/N] ";
  if (!StandardInputIsTerminal()) {
    Warn(text + (usual == IDYES ? " Yes" : " No") + " (no terminal: default answer)");
    return usual;
  }
  std::fputs(("velmora: " + text + choice).c_str(), stderr);
  std::array<char, 64> answer{};
  if (std::fgets(answer.data(), static_cast<int>(answer.size()), stdin) == nullptr) return usual;
  switch (answer[0]) {
    case 'j':
    case 'J':
    case 'y':
    case 'Y':
      return IDYES;
    case 'n':
    case 'N':
      return IDNO;
    default:
      return usual;
  }
}

int Show(const MessageBoxCall& call, const std::vector<CString>& paths, bool yes) {
  std::string text = ToUtf8(call.text);
  for (const CString& path : paths) {
    const std::string spelled = ToUtf8(path);
    const size_t at = spelled.empty() ? std::string::npos : text.find(spelled);
    if (at != std::string::npos) text.replace(at, spelled.size(), PathForDisplay(path));
  }
  text = Printable(text);
  if ((call.style & 0xFU) == MB_YESNO) return yes ? IDYES : Ask(text, call.style);
  Warn(text);
  return IDOK;
}

}  // namespace

TerminalMessages::TerminalMessages(std::vector<CString> paths, bool yes)
    : before_(SetMessageBoxHandler(
          [paths = std::move(paths), yes](const MessageBoxCall& call) { return Show(call, paths, yes); })) {}
TerminalMessages::~TerminalMessages() { SetMessageBoxHandler(before_); }

void Confirm(const std::string& question, bool yes, const std::string& option) {
  if (yes) return;
  if (!StandardInputIsTerminal())
    throw Refusal(question + " No terminal to ask on; add " + option + " to answer yes. Nothing was changed");
  if (Ask(Printable(question), MB_YESNO | MB_DEFBUTTON2) != IDYES) throw Refusal("nothing was changed");
}

}  // namespace velmora::cli
