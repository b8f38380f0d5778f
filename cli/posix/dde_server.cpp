// Over the session's D-Bus, as docs/conversation.md describes it.
#include "cli/link/dde_server.h"

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <map>
#include <utility>

#include "cli/terminal/error.h"
#include "cli/terminal/stop_watch.h"

namespace velmora::cli {
namespace {

constexpr char kName[] = "velmora.Tundril";
constexpr char kPath[] = "/velmora/WIN";
constexpr char kInterface[] = "velmora.Conversation";

}  // namespace

struct DdeServer::System {
  std::unique_ptr<sdbus::IConnection> bus;
  std::unique_ptr<sdbus::IObject> object;
  sdbus::Slot watch;
  std::map<std::string, int> clients;  // by their names on the bus
  int last_client = 0;
  std::vector<DdeEvent> events;  // not asked for yet

  void Register() {
    object = sdbus::createObject(*bus, kPath);
    Method("Advise", DdeEvent::Kind::kAdvise, {"item"});
    Method("Unadvise", DdeEvent::Kind::kUnadvise, {"item"});
    Method("Poke", DdeEvent::Kind::kPoke, {"item", "text"});
    object->registerSignal(kInterface, "Data", "ss", {"item", "text"});
    object->finishRegistration();
    watch = bus->addMatch(
        "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
        "member='NameOwnerChanged',arg2=''",
        [this](sdbus::Message& message) { Gone(message); });
  }

  void Method(const char* name, DdeEvent::Kind kind, const std::vector<std::string>& arguments) {
    object->registerMethod(
        kInterface, name, std::string(arguments.size(), 's'), arguments, "", {},
        [this, kind, count = arguments.size()](sdbus::MethodCall call) {  // NOLINT: by value as the type is
          DdeEvent event{kind, ClientOf(call.getSender()), "", ""};
          call >> event.item;
          if (count > 1) call >> event.text;
          events.push_back(std::move(event));
          call.createReply().send();
        });
  }

  int ClientOf(const std::string& name) {
    const auto [at, is_new] = clients.try_emplace(name, last_client + 1);
    if (is_new) events.push_back({DdeEvent::Kind::kConnect, ++last_client, "", ""});
    return at->second;
  }

  void Gone(sdbus::Message& message) {
    std::string name;
    message >> name;
    const auto at = clients.find(name);
    if (at == clients.end()) return;
    events.push_back({DdeEvent::Kind::kDisconnect, at->second, "", ""});
    clients.erase(at);
  }
};

DdeServer::DdeServer() : system_(std::make_unique<System>()) {
  try {
    system_->bus = sdbus::createSessionBusConnection();
    system_->Register();
  } catch (const sdbus::Error&) {
    throw Refusal("there is no session bus; start one, as with: dbus-run-session -- bash");
  }
  try {
    system_->bus->requestName(kName);
  } catch (const sdbus::Error&) {
    throw Refusal("the field-data program, or another stand-in for it, is running on this bus; end it first");
  }
}

DdeServer::~DdeServer() = default;

std::vector<DdeEvent> DdeServer::Handle(int wait_ms) {
  const StopWatch watch(wait_ms);
  try {
    for (;;) {
      while (system_->bus->processPendingRequest()) {
      }
      if (!system_->events.empty() || watch.Left() == 0) break;
      const sdbus::IConnection::PollData data = system_->bus->getEventLoopPollData();
      pollfd descriptor = {data.fd, data.events, 0};
      if (poll(&descriptor, 1, watch.Left()) < 0) break;  // interrupted
    }
  } catch (const sdbus::Error&) {
    throw Refusal("the session bus has gone");
  }
  return std::exchange(system_->events, {});
}

void DdeServer::Send(int client, const std::string& item, const std::string& text) {
  const auto at = std::find_if(system_->clients.begin(), system_->clients.end(),
                               [&](const auto& entry) { return entry.second == client; });
  if (at == system_->clients.end()) return;
  try {
    sdbus::Signal signal = system_->object->createSignal(kInterface, "Data");
    signal.setDestination(at->first);
    signal << item << text;
    signal.send();
  } catch (const sdbus::Error&) {
    throw Refusal("the session bus has gone");
  }
}

}  // namespace velmora::cli
