// Over the session's D-Bus; the names there are described in docs/conversation.md.
#include "velmora/platform/dde_channel.h"

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "velmora/platform/posix/session_bus.h"
#include "velmora/text/codepage.h"

// What the handles of this system point at.
struct HSZ__ {
  std::string utf8;
};

struct HCONV__ {
  struct Data {
    std::string item;
    std::string text;
  };

  HCONV__() = default;
  ~HCONV__();
  HCONV__(const HCONV__&) = delete;
  HCONV__& operator=(const HCONV__&) = delete;

  std::unique_ptr<sdbus::IConnection> bus;  // first, since the others need it to their end
  std::unique_ptr<sdbus::IProxy> server;
  sdbus::Slot watch;
  std::set<std::string> advised;
  std::deque<Data> arrived;
  bool open = true;
  bool refused = false;
  int untaken = 0;  // pokes without an answer yet
};

namespace velmora {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr char kBus[] = "org.freedesktop.DBus";
constexpr char kInterface[] = "velmora.Conversation";
constexpr milliseconds kCallLimit{1000};
constexpr milliseconds kAnswerLimit{10000};  // of calls that nobody waits for
constexpr milliseconds kCloseLimit{1000};
constexpr size_t kLongestString = 255;  // as DDE has it
constexpr int kMostMessages = 100;      // in one call of Handle

DdeChannel::Received g_received = nullptr;
// Shared, so that it can be closed from inside Handle.
std::shared_ptr<HCONV__> g_open;

std::string ToBus(std::string_view bytes) {
  std::wstring text;
  AppendDecoded(bytes, TextEncoding::kWindows1252, &text);
  return Utf8FromWide(text);
}

std::string FromBus(const std::string& utf8) {
  std::string bytes;
  for (const wchar_t c : WideFromUtf8(utf8))
    bytes += static_cast<char>(EncodeWindows1252(c).value_or(static_cast<unsigned char>('?')));
  return bytes;
}

milliseconds Until(Clock::time_point end) {
  return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(end - Clock::now()));
}

// Waits until the bus has something for us, or takes what we have for it.
void WaitFor(const sdbus::IConnection& bus, milliseconds wait) {
  const sdbus::IConnection::PollData data = bus.getEventLoopPollData();
  if (const int own = data.getPollTimeout(); own >= 0) wait = std::min(wait, milliseconds(own));
  pollfd descriptor = {data.fd, data.events, 0};
  poll(&descriptor, 1, static_cast<int>(wait.count()));
}

bool HasUnsent(const sdbus::IConnection& bus) { return (bus.getEventLoopPollData().events & POLLOUT) != 0; }

// The one connection that owns the name now, so that a later owner is not taken for it. Asking starts no
// program, as calling by name might.
std::string OwnerOf(sdbus::IConnection& bus, const std::string& name) {
  const auto daemon = sdbus::createProxy(bus, kBus, "/org/freedesktop/DBus");
  sdbus::MethodCall call = daemon->createMethodCall(kBus, "GetNameOwner");
  call << name;
  std::string owner;
  daemon->callMethod(call, kCallLimit) >> owner;
  return owner;
}

void TakeSignal(HCONV__& conversation, sdbus::Signal& signal) {
  try {
    HCONV__::Data data;
    signal >> data.item >> data.text;
    conversation.arrived.push_back(std::move(data));
  } catch (const sdbus::Error&) {
    // Other arguments than an item and a text: no data of ours.
  }
}

void Call(HCONV__& conversation, const char* method, const std::string& item, const std::string* text) {
  sdbus::MethodCall call = conversation.server->createMethodCall(kInterface, method);
  call << item;
  if (text != nullptr) call << *text;
  const bool poke = text != nullptr;
  conversation.server->callMethod(
      call,
      [&conversation, poke](sdbus::MethodReply&, const sdbus::Error* error) {
        if (poke) --conversation.untaken;
        if (poke && error != nullptr) conversation.refused = true;
      },
      kAnswerLimit);
  if (poke) ++conversation.untaken;
}

bool Send(DdeConversation conversation, DdeString item, const char* method,
          const std::string* text = nullptr) {
  if (conversation == nullptr || item == nullptr || !conversation->open) return false;
  try {
    Call(*conversation, method, item->utf8, text);
    return true;
  } catch (const sdbus::Error&) {
    return false;
  }
}

// Handles what has come, and gives data on outside the bus's own callbacks, where anything may be called.
bool HandleArrived(HCONV__& conversation) {
  int handled = 0;
  while (g_open.get() == &conversation && handled < kMostMessages &&
         conversation.bus->processPendingRequest()) {
    ++handled;
    while (!conversation.arrived.empty()) {
      const HCONV__::Data data = std::move(conversation.arrived.front());
      conversation.arrived.pop_front();
      if (conversation.advised.contains(data.item)) g_received(&conversation, FromBus(data.text));
    }
  }
  return handled > 0;
}

}  // namespace
}  // namespace velmora

HCONV__::~HCONV__() {
  using namespace velmora;
  if (bus == nullptr) return;
  try {
    const Clock::time_point end = Clock::now() + kCloseLimit;
    while (HasUnsent(*bus) && Clock::now() < end) {
      WaitFor(*bus, Until(end));
      bus->processPendingRequest();
    }
    // What a stopped bus does not take would be waited for without end.
    if (HasUnsent(*bus)) shutdown(bus->getEventLoopPollData().fd, SHUT_RDWR);
  } catch (const sdbus::Error&) {
    // The bus has gone.
  }
}

namespace velmora {

bool DdeChannel::Start(Received received) {
  g_received = received;
  return true;
}

DdeString DdeChannel::MakeString(std::string_view text) {
  if (text.empty() || text.size() > kLongestString) return nullptr;
  return new HSZ__{ToBus(text)};
}

void DdeChannel::FreeString(DdeString text) { delete text; }

DdeConversation DdeChannel::Open(DdeString service, DdeString topic) {
  if (service == nullptr || topic == nullptr) return nullptr;
  const std::string bus = AnsweringSessionBus(kCallLimit);
  if (bus.empty()) return nullptr;
  try {
    auto made = std::make_shared<HCONV__>();
    HCONV__& conversation = *made;
    conversation.bus = sdbus::createSessionBusConnectionWithAddress(bus);
    conversation.bus->setMethodCallTimeout(kCallLimit);
    const std::string owner = OwnerOf(*conversation.bus, "velmora." + service->utf8);
    conversation.server = sdbus::createProxy(*conversation.bus, owner, "/velmora/" + topic->utf8);
    conversation.server->registerSignalHandler(
        kInterface, "Data", [&conversation](sdbus::Signal& signal) { TakeSignal(conversation, signal); });
    conversation.server->finishRegistration();
    conversation.watch = conversation.bus->addMatch(
        std::string("type='signal',sender='") + kBus + "',member='NameOwnerChanged',arg0='" + owner + "'",
        [&conversation](sdbus::Message&) { conversation.open = false; });
    // Gone before it was watched?
    if (OwnerOf(*conversation.bus, "velmora." + service->utf8) != owner) return nullptr;
    g_open = std::move(made);
    return g_open.get();
  } catch (const sdbus::Error&) {
    return nullptr;
  }
}

bool DdeChannel::StartAdvise(DdeConversation conversation, DdeString item, bool /*acknowledge*/) {
  if (!Send(conversation, item, "Advise")) return false;
  conversation->advised.insert(item->utf8);
  return true;
}

bool DdeChannel::StopAdvise(DdeConversation conversation, DdeString item) {
  if (!Send(conversation, item, "Unadvise")) return false;
  conversation->advised.erase(item->utf8);
  return true;
}

bool DdeChannel::Poke(DdeConversation conversation, DdeString item, std::string_view text) {
  const std::string utf8 = ToBus(text);
  const bool sent = Send(conversation, item, "Poke", &utf8);
  if (!sent && conversation != nullptr) conversation->refused = true;
  return sent;
}

bool DdeChannel::IsOpen(DdeConversation conversation) {
  return conversation != nullptr && conversation->open;
}

int DdeChannel::WaitForReplies(DdeConversation conversation, int wait_ms) {
  const std::shared_ptr<HCONV__> kept = g_open;
  if (conversation == nullptr || kept.get() != conversation) return -1;
  const Clock::time_point end = Clock::now() + milliseconds(wait_ms);
  while (kept->untaken > 0 && kept->open && kept == g_open && Clock::now() < end)
    Handle(static_cast<int>(Until(end).count()));
  const bool gone = kept->untaken > 0 && !kept->open;
  if (std::exchange(kept->refused, false) || gone) return -1;
  return kept->untaken > 0 ? 1 : 0;
}

void DdeChannel::Close(DdeConversation) { std::exchange(g_open, nullptr).reset(); }

bool DdeChannel::Handle(int wait_ms) {
  const std::shared_ptr<HCONV__> conversation = g_open;
  const Clock::time_point end = Clock::now() + milliseconds(wait_ms);
  try {
    while (conversation != nullptr && conversation == g_open) {
      if (HandleArrived(*conversation)) return true;
      if (!conversation->open || Clock::now() >= end) break;
      WaitFor(*conversation->bus, Until(end));
    }
  } catch (const sdbus::Error&) {
    conversation->open = false;
  }
  // Nothing will come any more, and a client that waits in a loop must not spin.
  if (conversation == g_open) poll(nullptr, 0, static_cast<int>(Until(end).count()));
  return false;
}

int DdeChannel::Descriptor() {
  try {
    return g_open == nullptr || !g_open->open ? -1 : g_open->bus->getEventLoopPollData().fd;
  } catch (const sdbus::Error&) {
    return -1;
  }
}

}  // namespace velmora
