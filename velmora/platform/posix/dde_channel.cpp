// Over the session's D-Bus (docs/conversation.md).
#include "velmora/platform/dde_channel.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "velmora/platform/dde_text.h"
#include "velmora/platform/posix/session_bus.h"

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

  std::unique_ptr<sdbus::IConnection> bus;  // outlives the others
  std::unique_ptr<sdbus::IProxy> server;
  sdbus::Slot watch;
  std::set<std::string> advised;  // DdeItemKey
  std::deque<Data> arrived;
  bool open = true;
  bool refused = false;
  int unanswered = 0;  // pokes
};

namespace velmora {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kCallLimit{1000};
constexpr milliseconds kAnswerLimit{10000};  // of asynchronous calls
constexpr milliseconds kCloseLimit{1000};
constexpr size_t kLongestString = 255;  // as DDE has it
constexpr int kMostMessages = 100;      // in one call of Handle

DdeChannel::Received g_received = nullptr;
// Shared, so that it can be closed from inside Handle.
std::shared_ptr<HCONV__> g_open;

bool HasUnsent(const sdbus::IConnection& bus) { return (bus.getEventLoopPollData().events & POLLOUT) != 0; }

// The unique name of the connection that owns the name now, so that a later owner is not mistaken for it.
// Unlike a call to the name, GetNameOwner activates no service.
std::string OwnerOf(sdbus::IConnection& bus, const std::string& name) {
  const auto daemon = sdbus::createProxy(bus, kBusDaemon, "/org/freedesktop/DBus");
  sdbus::MethodCall call = daemon->createMethodCall(kBusDaemon, "GetNameOwner");
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
    // Other arguments than an item and a text: ignored.
  }
}

void Call(HCONV__& conversation, const char* method, const std::string& item, const std::string* text) {
  sdbus::MethodCall call = conversation.server->createMethodCall(kConversationInterface, method);
  call << item;
  if (text != nullptr) call << *text;
  const bool poke = text != nullptr;
  conversation.server->callMethod(
      call,
      [&conversation, poke](sdbus::MethodReply&, const sdbus::Error* error) {
        if (poke) --conversation.unanswered;
        if (poke && error != nullptr) conversation.refused = true;
      },
      kAnswerLimit);
  if (poke) ++conversation.unanswered;
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

// Handles pending messages. Data is passed on outside the callbacks of the D-Bus library, so that the
// receiver may call any function.
bool HandleArrived(HCONV__& conversation) {
  int handled = 0;
  while (g_open.get() == &conversation && handled < kMostMessages &&
         conversation.bus->processPendingRequest()) {
    ++handled;
    while (!conversation.arrived.empty()) {
      const HCONV__::Data data = std::move(conversation.arrived.front());
      conversation.arrived.pop_front();
      if (conversation.advised.contains(DdeItemKey(data.item)))
        g_received(&conversation, DdeTextFromUtf8(data.text));
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
      WaitForBus(*bus, TimeUntil(end));
      bus->processPendingRequest();
    }
    // The D-Bus library would wait without limit for a bus that does not read.
    if (HasUnsent(*bus)) shutdown(bus->getEventLoopPollData().fd, SHUT_RDWR);
  } catch (const sdbus::Error&) {
    // The bus has closed the connection.
  }
}

namespace velmora {

bool DdeChannel::Start(Received received) {
  g_received = received;
  return true;
}

DdeString DdeChannel::MakeString(std::string_view text) {
  if (text.empty() || text.size() > kLongestString) return nullptr;
  return new HSZ__{Utf8FromDdeText(text)};
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
    const std::string owner = OwnerOf(*conversation.bus, BusNameOf(service->utf8));
    conversation.server = sdbus::createProxy(*conversation.bus, owner, ObjectPathOf(topic->utf8));
    conversation.server->registerSignalHandler(
        kConversationInterface, kDataSignal,
        [&conversation](sdbus::Signal& signal) { TakeSignal(conversation, signal); });
    conversation.server->finishRegistration();
    conversation.watch =
        conversation.bus->addMatch(std::string("type='signal',sender='") + kBusDaemon +
                                       "',member='NameOwnerChanged',arg0='" + owner + "'",
                                   [&conversation](sdbus::Message&) { conversation.open = false; });
    // It may have ended before the match was added.
    if (OwnerOf(*conversation.bus, BusNameOf(service->utf8)) != owner) return nullptr;
    g_open = std::move(made);
    return g_open.get();
  } catch (const sdbus::Error&) {
    return nullptr;
  }
}

bool DdeChannel::StartAdvise(DdeConversation conversation, DdeString item, bool /*acknowledge*/) {
  if (!Send(conversation, item, kAdviseMethod)) return false;
  conversation->advised.insert(DdeItemKey(item->utf8));
  return true;
}

bool DdeChannel::StopAdvise(DdeConversation conversation, DdeString item) {
  if (!Send(conversation, item, kUnadviseMethod)) return false;
  conversation->advised.erase(DdeItemKey(item->utf8));
  return true;
}

bool DdeChannel::Poke(DdeConversation conversation, DdeString item, std::string_view text) {
  const std::string utf8 = Utf8FromDdeText(text);
  const bool sent = Send(conversation, item, kPokeMethod, &utf8);
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
  while (kept->unanswered > 0 && kept->open && kept == g_open && Clock::now() < end)
    Handle(static_cast<int>(TimeUntil(end).count()));
  const bool lost = kept != g_open || (kept->unanswered > 0 && !kept->open);
  if (std::exchange(kept->refused, false) || lost) return -1;
  return kept->unanswered > 0 ? 1 : 0;
}

void DdeChannel::Close(DdeConversation) { std::exchange(g_open, nullptr).reset(); }

bool DdeChannel::Handle(int wait_ms) {
  const std::shared_ptr<HCONV__> conversation = g_open;
  const Clock::time_point end = Clock::now() + milliseconds(wait_ms);
  try {
    while (conversation != nullptr && conversation == g_open) {
      if (HandleArrived(*conversation)) return true;
      if (!conversation->open || Clock::now() >= end) break;
      WaitForBus(*conversation->bus, TimeUntil(end));
    }
  } catch (const sdbus::Error&) {
    conversation->open = false;
  }
  // Nothing more can arrive; waiting keeps a client that calls this in a loop from spinning.
  if (conversation == g_open) poll(nullptr, 0, static_cast<int>(TimeUntil(end).count()));
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
