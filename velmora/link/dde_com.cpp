#include "velmora/link/dde_com.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <thread>
#include <utility>
#include <vector>

#include "velmora/link/conversation.h"

namespace velmora {
namespace {

using Milliseconds = std::chrono::milliseconds;

// After each failed attempt.
constexpr Milliseconds kWaits[] = {Milliseconds(30), Milliseconds(130), Milliseconds(230)};

std::vector<CDdeCom*>& Living() {
  static std::vector<CDdeCom*> living;  // in order of construction
  return living;
}

template <size_t kSize>
void CopyCut(char (&field)[kSize], std::string_view text) {
  static_assert(kSize > conversation::kLongestText);
  const std::string_view kept = conversation::TextOf(text);
  *std::copy(kept.begin(), kept.end(), field) = '\0';
}

void SendText(std::string_view text) {
  CopyCut(CDdeCom::m_Ddemess, text);
  DdeChannel::Poke(CDdeCom::m_Hconv, CDdeCom::m_Item, CDdeCom::m_Ddemess);
}

void TakeGreeting(std::string_view line) {
  const std::optional<conversation::Greeting> greeting = conversation::ParseGreeting(line);
  if (!greeting) return;
  CDdeCom::m_Pid = greeting->pid;
  // Without a valid item the conversation stays on the current one.
  if (const DdeString item = DdeChannel::MakeString(greeting->item); item != nullptr) {
    DdeChannel::StopAdvise(CDdeCom::m_Hconv, CDdeCom::m_Item);
    DdeChannel::FreeString(CDdeCom::m_Item);
    CDdeCom::m_Item = item;
    DdeChannel::StartAdvise(CDdeCom::m_Hconv, item, /*acknowledge=*/true);
  }
  if (CDdeCom::m_ProjPath[0] != '\0') SendText(conversation::Announcement(CDdeCom::m_ProjPath));
}

void TakeNotification(std::string_view line) {
  const std::optional<conversation::Notification> notification = conversation::ParseNotification(line);
  if (!notification || Living().empty() || Living().back()->m_pNotifyWnd == nullptr) return;
  Living().back()->m_pNotifyWnd->Notify(notification->message, notification->wParam, notification->lParam);
}

void TakeData(DdeConversation from, std::string_view data) {
  if (from != CDdeCom::m_Hconv) return;
  const std::string_view line = conversation::TextOf(data);
  CDdeCom::m_Pid < 0 ? TakeGreeting(line) : TakeNotification(line);
}

void FreeStrings() {
  for (DdeString* text : {&CDdeCom::m_Service, &CDdeCom::m_Topic, &CDdeCom::m_Item}) {
    DdeChannel::FreeString(*text);
    *text = nullptr;
  }
}

}  // namespace

DdeString CDdeCom::m_Service = nullptr;
DdeString CDdeCom::m_Topic = nullptr;
DdeString CDdeCom::m_Item = nullptr;
DdeConversation CDdeCom::m_Hconv = nullptr;
int CDdeCom::m_Pid = -1;
char CDdeCom::m_Ddemess[512] = {};
char CDdeCom::m_ProjPath[512] = {};
int CDdeCom::m_Winsession = 0;

CDdeCom::CDdeCom() {
  Close();
  m_Pid = -1;
  m_ProjPath[0] = '\0';
  Living().push_back(this);
}

CDdeCom::~CDdeCom() { std::erase(Living(), this); }

int CDdeCom::Connect() {
  if (m_Hconv != nullptr) return 0;
  if (!DdeChannel::Start(TakeData)) return -1;
  m_Service = DdeChannel::MakeString(conversation::kService);
  m_Topic = DdeChannel::MakeString(conversation::kTopic);
  m_Item = DdeChannel::MakeString(conversation::kFirstItem);
  for (const Milliseconds wait : kWaits) {
    m_Hconv = DdeChannel::Open(m_Service, m_Topic);
    if (m_Hconv != nullptr) {
      DdeChannel::StartAdvise(m_Hconv, m_Item, /*acknowledge=*/false);
      return 0;
    }
    std::this_thread::sleep_for(wait);
  }
  FreeStrings();
  return -1;
}

int CDdeCom::DdeMessage(const CStringA& text) {
  SendText(text.GetView());
  return 0;
}

void CDdeCom::Close() {
  // From here on no data is taken.
  const DdeConversation closed = std::exchange(m_Hconv, nullptr);
  if (closed == nullptr) return;
  DdeChannel::StopAdvise(closed, m_Item);
  FreeStrings();
  DdeChannel::Close(closed);
}

int CDdeCom::SetProjPath(const char* path) {
  CopyCut(m_ProjPath, path == nullptr ? "" : path);
  return 0;
}

bool CDdeCom::HandlePending(int wait_ms) { return DdeChannel::Handle(wait_ms); }
int CDdeCom::Descriptor() { return DdeChannel::Descriptor(); }
bool CDdeCom::IsServerThere() { return DdeChannel::IsOpen(m_Hconv); }
int CDdeCom::WaitForReplies(int wait_ms) { return DdeChannel::WaitForReplies(m_Hconv, wait_ms); }

}  // namespace velmora
