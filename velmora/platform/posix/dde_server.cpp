// Over the session's D-Bus (docs/conversation.md).
#include "velmora/platform/dde_server.h"

#include <algorithm>
#include <map>
#include <utility>

#include "velmora/platform/posix/session_bus.h"

namespace velmora {

struct DdeServer::System {
  std::unique_ptr<sdbus::IConnection> bus;
  std::unique_ptr<sdbus::IObject> object;
  sdbus::Slot watch;
  std::map<std::string, int> clients;  // by their unique names on the bus
  int last_client = 0;
  std::vector<DdeEvent> events;  // since the last call of Handle

  void Register(const std::string& topic) {
    object = sdbus::createObject(*bus, ObjectPathOf(topic));
    AddMethod(kAdviseMethod, DdeEvent::Kind::kAdvise, {"item"});
    AddMethod(kUnadviseMethod, DdeEvent::Kind::kUnadvise, {"item"});
    AddMethod(kPokeMethod, DdeEvent::Kind::kPoke, {"item", "text"});
    object->registerSignal(kConversationInterface, kDataSignal, "ss", {"item", "text"});
    object->finishRegistration();
    watch = bus->addMatch(
        std::string("type='signal',sender='") + kBusDaemon + "',member='NameOwnerChanged',arg2=''",
        [this](sdbus::Message& message) {
          std::string name;
          message >> name;
          RemoveClient(name);
        });
  }

  void AddMethod(const char* name, DdeEvent::Kind kind, const std::vector<std::string>& arguments) {
    object->registerMethod(
        kConversationInterface, name, std::string(arguments.size(), 's'), arguments, "", {},
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

  void RemoveClient(const std::string& name) {
    const auto at = clients.find(name);
    if (at == clients.end()) return;
    events.push_back({DdeEvent::Kind::kDisconnect, at->second, "", ""});
    clients.erase(at);
  }
};

DdeServer::DdeServer() : system_(std::make_unique<System>()) {}
DdeServer::~DdeServer() = default;

DdeServer::Status DdeServer::Start(std::string_view service, std::string_view topic) {
  try {
    system_->bus = sdbus::createSessionBusConnection();
    system_->Register(std::string(topic));
  } catch (const sdbus::Error&) {
    return Status::kNoSessionBus;
  }
  try {
    system_->bus->requestName(BusNameOf(std::string(service)));
  } catch (const sdbus::Error&) {
    return Status::kNameTaken;
  }
  return Status::kDone;
}

DdeServer::Status DdeServer::Handle(int wait_ms, std::vector<DdeEvent>* events) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(wait_ms);
  try {
    for (bool waited = false;; waited = true) {
      while (system_->bus->processPendingRequest()) {
      }
      if (!system_->events.empty() || waited) break;
      WaitForBus(*system_->bus, TimeUntil(end));
    }
  } catch (const sdbus::Error&) {
    return Status::kDisconnected;
  }
  *events = std::exchange(system_->events, {});
  return Status::kDone;
}

DdeServer::Status DdeServer::Send(int client, const std::string& item, const std::string& text) {
  const auto at = std::find_if(system_->clients.begin(), system_->clients.end(),
                               [&](const auto& entry) { return entry.second == client; });
  if (at == system_->clients.end()) return Status::kDone;
  try {
    sdbus::Signal signal = system_->object->createSignal(kConversationInterface, kDataSignal);
    signal.setDestination(at->first);
    signal << item << text;
    signal.send();
  } catch (const sdbus::Error&) {
    return Status::kDisconnected;
  }
  return Status::kDone;
}

}  // namespace velmora
