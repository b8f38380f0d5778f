#include "cli/link/dde_server.h"

#include <windows.h>
// After it.
#include <ddeml.h>

#include <deque>
#include <map>
#include <utility>

#include "cli/link/link_text.h"
#include "cli/terminal/error.h"
#include "velmora/link/conversation.h"
#include "velmora/link/dde_com.h"
#include "velmora/text/codepage.h"

namespace velmora::cli {
namespace {

std::string Windows1252(const std::string& utf8) {
  std::string bytes;
  for (const wchar_t c : WideFromUtf8(utf8)) bytes += static_cast<char>(EncodeWindows1252(c).value_or('?'));
  return bytes;
}

struct Advised {
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
  std::map<HCONV, std::deque<Advised>> unsent;  // until the system asks for it
  std::vector<DdeEvent> events;

  std::string TextOf(HSZ handle) const {
    char text[256] = {};
    DdeQueryStringA(instance, handle, text, sizeof text, CP_WINANSI);
    return text;
  }

  void Add(DdeEvent::Kind kind, HCONV client, HSZ item = nullptr, const std::string& text = "") {
    events.push_back({kind, clients[client], item == nullptr ? "" : DecodeLinkText(TextOf(item)), text});
  }

  HDDEDATA NextData(HCONV client, HSZ item) {
    std::deque<Advised>& queue = unsent[client];
    if (queue.empty() || queue.front().item != TextOf(item)) return nullptr;
    std::string text = std::exchange(queue.front().text, {});
    queue.pop_front();
    return DdeCreateDataHandle(instance, reinterpret_cast<BYTE*>(text.data()),
                               static_cast<DWORD>(text.size() + 1), 0, item, CF_TEXT, 0);
  }

  static std::string Poked(HDDEDATA data) {
    std::string text(DdeGetData(data, nullptr, 0, 0), '\0');
    DdeGetData(data, reinterpret_cast<BYTE*>(text.data()), static_cast<DWORD>(text.size()), 0);
    return DecodeLinkText(text.substr(0, text.find('\0')));
  }

  void AskAgain() {
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
        // What nobody asks for any more must not hold up what stands behind it.
        std::erase_if(unsent[client], [&](const Advised& each) { return each.item == TextOf(second); });
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

  // The callback knows no server but the process's.
  static System* running;
  static HDDEDATA CALLBACK OnTransaction(UINT type, UINT, HCONV client, HSZ first, HSZ second, HDDEDATA data,
                                         ULONG_PTR, ULONG_PTR) {
    return running->Answer(type, client, first, second, data);
  }
};

DdeServer::System* DdeServer::System::running = nullptr;

DdeServer::DdeServer() : system_(std::make_unique<System>()) {
  System::running = system_.get();
  if (DdeInitializeA(&system_->instance, System::OnTransaction, APPCLASS_STANDARD, 0) != DMLERR_NO_ERROR)
    throw Refusal("the system's DDE cannot be started");
  system_->service = DdeCreateStringHandleA(system_->instance, conversation::kService, CP_WINANSI);
  system_->topic = DdeCreateStringHandleA(system_->instance, conversation::kTopic, CP_WINANSI);
  DdeNameService(system_->instance, system_->service, nullptr, DNS_REGISTER);
}

DdeServer::~DdeServer() {
  DdeNameService(system_->instance, system_->service, nullptr, DNS_UNREGISTER);
  DdeUninitialize(system_->instance);
}

std::vector<DdeEvent> DdeServer::Handle(int wait_ms) {
  system_->AskAgain();
  // The thread's messages are all that this end waits for, too.
  if (system_->events.empty()) CDdeCom::HandlePending(wait_ms);
  return std::exchange(system_->events, {});
}

void DdeServer::Send(int client, const std::string& item, const std::string& text) {
  for (const auto& [conversation, number] : system_->clients)
    if (number == client) system_->unsent[conversation].push_back({Windows1252(item), Windows1252(text)});
  system_->AskAgain();
}

}  // namespace velmora::cli
