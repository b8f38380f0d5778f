#include "velmora/platform/dde_server.h"

#include <windows.h>
// After it.
#include <ddeml.h>

#include <deque>
#include <map>
#include <utility>

#include "velmora/platform/dde_channel.h"
#include "velmora/platform/dde_text.h"

namespace velmora {
namespace {

struct AdvisedData {
  std::string item;
  std::string text;
};

}  // namespace

struct DdeServer::System {
  DWORD instance = 0;
  HSZ service = nullptr;
  HSZ topic = nullptr;
  std::map<HCONV, int> clients;
  int last_client = 0;
  std::map<HCONV, std::deque<AdvisedData>> unsent;  // until the system requests it (XTYP_ADVREQ)
  std::vector<DdeEvent> events;

  std::string TextOf(HSZ handle) const {
    char text[256] = {};
    DdeQueryStringA(instance, handle, text, sizeof text, CP_WINANSI);
    return text;
  }

  void Add(DdeEvent::Kind kind, HCONV client, HSZ item = nullptr, const std::string& text = "") {
    events.push_back({kind, clients[client], item == nullptr ? "" : Utf8FromDdeText(TextOf(item)), text});
  }

  bool IsItem(const AdvisedData& data, HSZ item) const {
    return DdeItemKey(Utf8FromDdeText(data.item)) == DdeItemKey(Utf8FromDdeText(TextOf(item)));
  }

  HDDEDATA NextData(HCONV client, HSZ item) {
    std::deque<AdvisedData>& queue = unsent[client];
    if (queue.empty() || !IsItem(queue.front(), item)) return nullptr;
    std::string text = std::exchange(queue.front().text, {});
    queue.pop_front();
    return DdeCreateDataHandle(instance, reinterpret_cast<BYTE*>(text.data()),
                               static_cast<DWORD>(text.size() + 1), 0, item, CF_TEXT, 0);
  }

  static std::string Poked(HDDEDATA data) {
    std::string text(DdeGetData(data, nullptr, 0, 0), '\0');
    DdeGetData(data, reinterpret_cast<BYTE*>(text.data()), static_cast<DWORD>(text.size()), 0);
    return Utf8FromDdeText(text.substr(0, text.find('\0')));
  }

  void PostUnsent() {
    for (const auto& [client, queue] : unsent) {
      if (queue.empty()) continue;
      const HSZ item = DdeCreateStringHandleA(instance, queue.front().item.c_str(), CP_WINANSI);
      DdePostAdvise(instance, topic, item);
      DdeFreeStringHandle(instance, item);
    }
  }

  HDDEDATA Answer(UINT type, HCONV client, HSZ first, HSZ second, HDDEDATA data) {
    const auto yes = reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(TRUE));
    switch (type) {
      case XTYP_CONNECT:
        return DdeCmpStringHandles(first, topic) == 0 && DdeCmpStringHandles(second, service) == 0 ? yes
                                                                                                   : nullptr;
      case XTYP_CONNECT_CONFIRM:
        clients[client] = ++last_client;
        Add(DdeEvent::Kind::kConnect, client);
        return nullptr;
      case XTYP_ADVSTART:
        Add(DdeEvent::Kind::kAdvise, client, second);
        return yes;
      case XTYP_ADVSTOP:
        Add(DdeEvent::Kind::kUnadvise, client, second);
        // Data that is no longer requested must not block the data behind it.
        std::erase_if(unsent[client], [&](const AdvisedData& each) { return IsItem(each, second); });
        return nullptr;
      case XTYP_ADVREQ:
        return NextData(client, second);
      case XTYP_POKE:
        Add(DdeEvent::Kind::kPoke, client, second, Poked(data));
        return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(DDE_FACK));
      case XTYP_DISCONNECT:
        Add(DdeEvent::Kind::kDisconnect, client);
        clients.erase(client);
        unsent.erase(client);
        return nullptr;
      default:
        return nullptr;
    }
  }

  static System* running;  // for the callback
  static HDDEDATA CALLBACK OnTransaction(UINT type, UINT, HCONV client, HSZ first, HSZ second, HDDEDATA data,
                                         ULONG_PTR, ULONG_PTR) {
    return running->Answer(type, client, first, second, data);
  }
};

DdeServer::System* DdeServer::System::running = nullptr;

DdeServer::DdeServer() : system_(std::make_unique<System>()) { System::running = system_.get(); }

DdeServer::Status DdeServer::Start(std::string_view service, std::string_view topic) {
  if (DdeInitializeA(&system_->instance, System::OnTransaction, APPCLASS_STANDARD, 0) != DMLERR_NO_ERROR)
    return Status::kNoDde;
  system_->service = DdeCreateStringHandleA(system_->instance, std::string(service).c_str(), CP_WINANSI);
  system_->topic = DdeCreateStringHandleA(system_->instance, std::string(topic).c_str(), CP_WINANSI);
  DdeNameService(system_->instance, system_->service, nullptr, DNS_REGISTER);
  return Status::kDone;
}

DdeServer::~DdeServer() {
  if (system_->instance == 0) return;
  DdeNameService(system_->instance, system_->service, nullptr, DNS_UNREGISTER);
  DdeUninitialize(system_->instance);
}

DdeServer::Status DdeServer::Handle(int wait_ms, std::vector<DdeEvent>* events) {
  system_->PostUnsent();
  // Dispatches the thread's messages, which serve both ends.
  if (system_->events.empty()) DdeChannel::Handle(wait_ms);
  *events = std::exchange(system_->events, {});
  return Status::kDone;
}

DdeServer::Status DdeServer::Send(int client, const std::string& item, const std::string& text) {
  for (const auto& [conversation, number] : system_->clients)
    if (number == client)
      system_->unsent[conversation].push_back({DdeTextFromUtf8(item), DdeTextFromUtf8(text)});
  system_->PostUnsent();
  return Status::kDone;
}

}  // namespace velmora
