// The server end of a DDE conversation, as the system carries it: DDE itself, or the session's D-Bus.
// dde_channel.h is the client end. Texts are UTF-8; over DDE characters outside Windows-1252 become "?".
#ifndef VELMORA_PLATFORM_DDE_SERVER_H_
#define VELMORA_PLATFORM_DDE_SERVER_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

// An action of a client. Clients are numbered from 1 in the order in which they connect.
struct DdeEvent {
  enum class Kind { kConnect, kAdvise, kUnadvise, kPoke, kDisconnect };
  Kind kind;
  int client;
  std::string item;  // empty for kConnect and kDisconnect
  std::string text;  // of kPoke
};

// One at a time in a process.
class DdeServer {
 public:
  enum class Status {
    kDone,
    kNoDde,         // the system's DDE does not start
    kNoSessionBus,  // there is no bus
    kNameTaken,     // another server has the service's name on the bus
    kDisconnected,  // the bus has closed the connection
  };

  DdeServer();
  ~DdeServer();
  DdeServer(const DdeServer&) = delete;
  DdeServer& operator=(const DdeServer&) = delete;

  // Once, before the other calls.
  [[nodiscard]] Status Start(std::string_view service, std::string_view topic);
  // Replaces *events by the clients' actions since the last call; when there are none, waits for one at most
  // `wait_ms`.
  [[nodiscard]] Status Handle(int wait_ms, std::vector<DdeEvent>* events);
  // To one client, which receives it when it has advised the item.
  [[nodiscard]] Status Send(int client, const std::string& item, const std::string& text);

 private:
  struct System;
  std::unique_ptr<System> system_;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DDE_SERVER_H_
