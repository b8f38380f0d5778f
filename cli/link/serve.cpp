#include <cstdlib>
#include <map>

#include "cli/link/commands.h"
#include "cli/link/script.h"
#include "cli/terminal/error.h"
#include "velmora/link/conversation.h"
#include "velmora/platform/console.h"
#include "velmora/platform/dde_server.h"

namespace velmora::cli {
namespace {

constexpr int kScriptInterval = 10;  // ms, while a client may have a step due

const char* NameOf(DdeEvent::Kind kind) {
  switch (kind) {
    case DdeEvent::Kind::kConnect:
      return "connect";
    case DdeEvent::Kind::kAdvise:
      return "advise";
    case DdeEvent::Kind::kUnadvise:
      return "unadvise";
    case DdeEvent::Kind::kPoke:
      return "poke";
    case DdeEvent::Kind::kDisconnect:
      break;
  }
  return "disconnect";
}

void Check(DdeServer::Status status) {
  switch (status) {
    case DdeServer::Status::kDone:
      return;
    case DdeServer::Status::kNoDde:
      throw Refusal("the system's DDE cannot be started");
    case DdeServer::Status::kNoSessionBus:
      throw Refusal("there is no session bus; start one, for example with: dbus-run-session -- bash");
    case DdeServer::Status::kNameTaken:
      throw Refusal("the field-data program or another link serve is running on this bus; stop it first");
    case DdeServer::Status::kDisconnected:
      throw Refusal("the session bus has closed the connection");
  }
}

class SimulatedServer {
 public:
  SimulatedServer(const std::vector<ScriptStep>& steps, OutputFormat format)
      : steps_(steps),
        records_(output_, format,
                 {{"client", "client", true},
                  {"event", "event     "},
                  {"item", "item        "},
                  {"text", "text"}}) {
    Check(server_.Start(conversation::kService, conversation::kTopic));
    records_.Begin();
    output_.Finish();
  }

  // Runs the steps that are due and handles pending events. False when a script ends the server.
  bool Step() {
    for (auto& [client, player] : players_) {
      while (const ScriptStep* step = player.Next(std::chrono::steady_clock::now())) {
        if (step->kind == ScriptStep::Kind::kEnd) return false;
        Check(server_.Send(client, player.Item(), step->text));
        Record(client, "send", player.Item(), step->text);
      }
    }
    std::vector<DdeEvent> events;
    Check(server_.Handle(players_.empty() ? kPollInterval : kScriptInterval, &events));
    for (const DdeEvent& event : events) Take(event);
    return true;
  }

  bool AClientHasDisconnected() const { return disconnected_; }
  void Finish() {
    records_.Finish();
    output_.Finish();
  }

 private:
  void Take(const DdeEvent& event) {
    Record(event.client, NameOf(event.kind), event.item, event.text);
    ScriptPlayer& player = players_.try_emplace(event.client, steps_).first->second;
    if (event.kind == DdeEvent::Kind::kAdvise) player.Advise(event.item);
    if (event.kind == DdeEvent::Kind::kUnadvise) player.Unadvise(event.item);
    if (event.kind != DdeEvent::Kind::kDisconnect) return;
    players_.erase(event.client);
    disconnected_ = true;
  }

  void Record(int client, const char* event, const std::string& item, const std::string& text) {
    const auto cell = [](const std::string& value) { return value.empty() ? Cell() : Cell(value); };
    records_.Row({static_cast<std::int64_t>(client), std::string(event), cell(item), cell(text)});
    output_.Finish();  // at once
  }

  const std::vector<ScriptStep>& steps_;
  DdeServer server_;
  OutputFile output_;
  RecordWriter records_;
  std::map<int, ScriptPlayer> players_;  // by client
  bool disconnected_ = false;
};

}  // namespace

void LinkServe(const LinkOptions& options) {
  const std::vector<ScriptStep> steps = ReadScript(options.script);
  SimulatedServer server(steps, options.output.Format());
  const Interrupt interrupt;
  bool goes_on = true;
  while (goes_on && !Interrupt::Requested() && !(options.once && server.AClientHasDisconnected()))
    goes_on = server.Step();
  server.Finish();
  // Without closing the conversations.
  if (!goes_on) std::_Exit(0);
}

}  // namespace velmora::cli
