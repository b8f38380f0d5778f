#include "cli/context/project_folder.h"
#include "cli/link/commands.h"
#include "cli/link/link_text.h"
#include "cli/terminal/error.h"
#include "cli/terminal/stop_watch.h"
#include "velmora/link/dde_com.h"

namespace velmora::cli {
namespace {

constexpr int kGreetingLimit = 5000;  // ms
constexpr int kAnswerLimit = 1000;

void WaitForGreeting() {
  const StopWatch watch(kGreetingLimit);
  while (CDdeCom::m_Pid < 0 && CDdeCom::IsServerThere() && watch.Left() > 0)
    CDdeCom::HandlePending(watch.Left());
  if (CDdeCom::m_Pid >= 0) return;
  throw Refusal(CDdeCom::IsServerThere()
                    ? "the field-data program has not sent its greeting; nothing was sent, try again"
                    : "the field-data program ended before its greeting; nothing was sent");
}

}  // namespace

void LinkSend(const LinkOptions& options) {
  std::vector<std::string> texts;
  for (const std::string& text : options.texts) texts.push_back(EncodeLinkText(text, "the text"));
  CDdeCom com;
  if (!options.project.empty()) {
    const std::string folder = ToUtf8(ExistingProjectFolder(options.project));
    com.SetProjPath(EncodeLinkText(folder, "the project's folder", kLongestFolder).c_str());
  }
  ConnectToProgram();
  WaitForGreeting();
  for (const std::string& text : texts) CDdeCom::DdeMessage(CStringA(text));
  const int answer = CDdeCom::WaitForReplies(kAnswerLimit);
  CDdeCom::Close();
  if (answer < 0) throw Refusal("the field-data program rejected a text or has ended");
  if (answer > 0) Warn("sent, but not acknowledged within a second");
}

}  // namespace velmora::cli
