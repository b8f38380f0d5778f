#include "cli/terminal/questions.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "cli/terminal/error.h"
#include "velmora/platform/console.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

bool Ask(const std::string& question) {
  std::fputs(("velmora: " + question + " [y/N] ").c_str(), stderr);
  std::array<char, 64> answer{};
  if (std::fgets(answer.data(), static_cast<int>(answer.size()), stdin) == nullptr) return false;
  return std::string_view("jJyY").find(answer[0]) != std::string_view::npos;
}

int Show(const MessageBoxCall& call, const std::vector<CString>& paths) {
  if ((call.style & 0xFU) == MB_YESNO) return IDYES;
  std::string text = ToUtf8(call.text);
  for (const CString& path : paths) {
    const std::string spelled = ToUtf8(path);
    const size_t at = spelled.empty() ? std::string::npos : text.find(spelled);
    if (at != std::string::npos) text.replace(at, spelled.size(), PathForDisplay(path));
  }
  PrintError(text);
  return IDOK;
}

}  // namespace

TerminalMessages::TerminalMessages(std::vector<CString> paths)
    : before_(SetMessageBoxHandler(
          [paths = std::move(paths)](const MessageBoxCall& call) { return Show(call, paths); })) {}
TerminalMessages::~TerminalMessages() { SetMessageBoxHandler(before_); }

void Confirm(const std::string& question, bool yes, const std::string& option) {
  if (yes) return;
  if (!StandardInputIsTerminal())
    throw Refusal(question + " No terminal to ask on; add " + option + " to answer yes. Nothing was changed");
  if (!Ask(Printable(question))) throw Refusal("nothing was changed");
}

}  // namespace velmora::cli
