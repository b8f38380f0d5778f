// The client of the conversation: a server that sends each line of the input, over a channel within the
// program. Arguments: the project's folder and a text to send.
#include "velmora/link/conversation.h"

#include <array>
#include <cstring>

#include "fuzz/support/input.h"
#include "velmora/link/dde_com.h"

struct HSZ__ {
  std::string text;
};
struct HCONV__ {};

namespace velmora {
namespace {

struct Channel {
  DdeChannel::Received received = nullptr;
  HCONV__ conversation;
  std::vector<std::string> advised;
  std::vector<std::string> sent;
  int strings = 0;
} g_channel;

}  // namespace

bool DdeChannel::Start(Received received) {
  g_channel.received = received;
  return true;
}
DdeString DdeChannel::MakeString(std::string_view text) {
  if (text.empty() || text.size() > 255) return nullptr;
  ++g_channel.strings;
  return new HSZ__{std::string(text)};
}
void DdeChannel::FreeString(DdeString text) {
  if (text != nullptr) --g_channel.strings;
  delete text;
}
DdeConversation DdeChannel::Open(DdeString, DdeString) { return &g_channel.conversation; }
bool DdeChannel::StartAdvise(DdeConversation, DdeString item, bool) {
  g_channel.advised.push_back(item->text);
  return true;
}
bool DdeChannel::StopAdvise(DdeConversation, DdeString item) {
  return std::erase(g_channel.advised, item->text) > 0;
}
bool DdeChannel::Poke(DdeConversation conversation, DdeString, std::string_view text) {
  if (conversation != nullptr) g_channel.sent.emplace_back(text);
  return conversation != nullptr;
}
bool DdeChannel::IsOpen(DdeConversation) { return true; }
int DdeChannel::WaitForReplies(DdeConversation, int) { return 0; }
void DdeChannel::Close(DdeConversation) { g_channel.advised.clear(); }
bool DdeChannel::Handle(int) { return false; }
int DdeChannel::Descriptor() { return -1; }

namespace fuzz {
namespace {

struct Window : NotifyWindow {
  void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
    Require(message == WM_USER && wParam >= 1117 && wParam <= 1122 && wParam != 1118,
            "a notification that is known");
    Require(wParam != 1119 && wParam != 1120 ? true : lParam == 0, "with its value");
    ++notified;
  }
  int notified = 0;
};

// Up to the first zero, and to the longest text.
std::string Carried(const std::string& text) { return std::string(text.c_str()).substr(0, 511); }

void RequireGreeted(const std::string& line, const std::string& folder) {
  std::array<char, 600> item{};
  int pid = 0;
  const int fields = std::sscanf(line.c_str(), "%d %599s", &pid, item.data());
  if (CDdeCom::m_Pid < 0) return;
  Require(fields >= 1 && CDdeCom::m_Pid == pid && pid > 0, "the number of the greeting");
  const bool moves = fields == 2 && std::strlen(item.data()) <= 255;
  Require(g_channel.advised == std::vector<std::string>{moves ? item.data() : "-1"},
          "advises the named item");
  if (folder.empty())
    Require(g_channel.sent.empty(), "nothing to announce");
  else
    Require(g_channel.sent.size() == 1 && g_channel.sent[0] == ("10000 " + folder).substr(0, 511),
            "announces the folder");
}

}  // namespace

void Run(const Input& input) {
  g_channel.sent.clear();
  {
    CDdeCom client;
    Window window;
    client.m_pNotifyWnd = &window;
    client.SetProjPath(input.Bytes(0).c_str());
    const std::string folder = Carried(input.Bytes(0));
    Require(CDdeCom::m_ProjPath == folder, "the folder is kept, cut");
    Require(CDdeCom::Connect() == 0 && CDdeCom::m_Pid == -1, "connected");
    std::string_view rest = input.File();
    for (int lines = 0; !rest.empty() && lines < 100; ++lines) {
      const size_t end = std::min(rest.find('\n'), rest.size());
      const bool greets = CDdeCom::m_Pid < 0;
      g_channel.received(CDdeCom::m_Hconv, rest.substr(0, end));
      if (greets) RequireGreeted(Carried(std::string(rest.substr(0, end))), folder);
      Require(!greets || window.notified == 0, "no notification before the greeting");
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    CDdeCom::DdeMessage(CStringA(input.Bytes(1).c_str()));
    Require(g_channel.sent.back() == Carried(input.Bytes(1)) && CDdeCom::m_Ddemess == g_channel.sent.back(),
            "the text is sent, cut");
    Require(g_channel.strings == 3, "three names while connected");
    CDdeCom::Close();
  }
  Require(g_channel.strings == 0 && CDdeCom::m_Hconv == nullptr, "none afterwards");
}

}  // namespace fuzz
}  // namespace velmora
