// The server's end of the conversation, for the stand-in of the field-data program. Texts are UTF-8; where
// the conversation carries Windows-1252 (DDE) other letters become "?".
#ifndef VELMORA_CLI_LINK_DDE_SERVER_H_
#define VELMORA_CLI_LINK_DDE_SERVER_H_

#include <memory>
#include <string>
#include <vector>

namespace velmora::cli {

// What a client does. Clients are numbered from 1 as they come.
struct DdeEvent {
  enum class Kind { kConnect, kAdvise, kUnadvise, kPoke, kDisconnect };
  Kind kind;
  int client;
  std::string item;  // empty where there is none
  std::string text;  // of a poke
};

class DdeServer {
 public:
  // Throws a Refusal when the server cannot be set up: on D-Bus when there is no bus, or another server on
  // it.
  DdeServer();
  ~DdeServer();
  DdeServer(const DdeServer&) = delete;
  DdeServer& operator=(const DdeServer&) = delete;

  // What clients have done; with nothing there, waits for it at most `wait_ms`. Throws a Refusal when the
  // bus has gone.
  std::vector<DdeEvent> Handle(int wait_ms);
  // To a client that listens on the item; others get nothing.
  void Send(int client, const std::string& item, const std::string& text);

 private:
  struct System;
  std::unique_ptr<System> system_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_LINK_DDE_SERVER_H_
