#include "velmora/platform/dde_channel.h"

#include <windows.h>
// After it.
#include <ddeml.h>

#include <array>
#include <deque>
#include <set>
#include <string>
#include <utility>

#include "velmora/platform/dde_text.h"
#include "velmora/platform/types.h"

namespace velmora {
namespace {

constexpr size_t kLongestString = 255;  // the system's own limit
constexpr int kMostMessages = 100;      // in one call of Handle

constexpr UINT kDeliver = WM_APP;

struct Data {
  std::string item;  // DdeItemKey
  std::string text;
};

DWORD g_instance = 0;
HWND g_window = nullptr;  // gets kDeliver
DdeChannel::Received g_received = nullptr;
DdeConversation g_open = nullptr;
std::set<std::string> g_advised;  // DdeItemKey
std::deque<Data> g_arrived;
std::set<DWORD> g_unanswered;  // pokes
bool g_refused = false;
unsigned g_closed = 0;  // conversations so far

std::string KeyOf(DdeString item) {
  char text[kLongestString + 1] = {};
  DdeQueryStringA(g_instance, item, text, sizeof text, CP_WINANSI);
  return DdeItemKey(Utf8FromDdeText(text));
}

// Data is passed on outside the callback of the DDE library, which fails when a conversation ends or begins
// in it.
LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != kDeliver) return DefWindowProcW(window, message, wParam, lParam);
  while (!g_arrived.empty()) {
    const Data data = std::move(g_arrived.front());
    g_arrived.pop_front();
    if (g_advised.contains(data.item)) g_received(g_open, data.text);
  }
  return 0;
}

// A window without a class of its own: nothing has to be unregistered when the library is unloaded.
HWND MakeMessageWindow() {
  const HWND window =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  if (window != nullptr) SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OnMessage));
  return window;
}

HDDEDATA CALLBACK OnTransaction(UINT type, UINT, HCONV conversation, HSZ, HSZ item, HDDEDATA data,
                                ULONG_PTR id, ULONG_PTR) {
  if (type == XTYP_XACT_COMPLETE && g_unanswered.erase(static_cast<DWORD>(id)) != 0 && data == nullptr)
    g_refused = true;
  if (type != XTYP_ADVDATA) return nullptr;
  std::array<char, 512> text = {};
  const DWORD size = DdeGetData(data, reinterpret_cast<BYTE*>(text.data()), text.size() - 1, 0);
  if (conversation == g_open) {
    g_arrived.push_back({KeyOf(item), std::string(text.data(), size)});
    PostMessageW(g_window, kDeliver, 0, 0);
  }
  return reinterpret_cast<HDDEDATA>(static_cast<ULONG_PTR>(DDE_FACK));
}

// Whether the server is still running. A killed program sends no disconnect, but its window is gone.
bool IsThere(DdeConversation conversation) {
  CONVINFO info = {};
  info.cb = sizeof info;
  return conversation != nullptr && DdeQueryConvInfo(conversation, QID_SYNC, &info) != 0 &&
         (info.wStatus & ST_CONNECTED) != 0 && IsWindow(info.hwndPartner) != FALSE;
}

// Asynchronous: a synchronous transaction would dispatch the thread's messages. Returns the transaction's
// number, 0 when it could not be sent.
DWORD Send(DdeConversation conversation, DdeString item, UINT type, std::string_view text = {}) {
  // After a transaction without a receiver Wine keeps the conversation and opens no other like it.
  if (item == nullptr || !IsThere(conversation)) return 0;
  std::string bytes(text);
  const bool poke = type == XTYP_POKE;
  DWORD id = 0;
  const HDDEDATA sent = DdeClientTransaction(poke ? reinterpret_cast<BYTE*>(bytes.data()) : nullptr,
                                             poke ? static_cast<DWORD>(bytes.size() + 1) : 0, conversation,
                                             item, CF_TEXT, type, TIMEOUT_ASYNC, &id);
  return sent == nullptr ? 0 : id;
}

bool HandleMessages() {
  MSG message;
  int handled = 0;
  while (handled < kMostMessages && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {  // for the client's own message loop
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    ++handled;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return handled > 0;
}

}  // namespace

bool DdeChannel::Start(Received received) {
  g_received = received;
  if (g_window == nullptr) g_window = MakeMessageWindow();
  if (g_window == nullptr) return false;
  if (g_instance != 0) return true;
  return DdeInitializeA(&g_instance, OnTransaction, APPCMD_CLIENTONLY, 0) == DMLERR_NO_ERROR;
}

DdeString DdeChannel::MakeString(std::string_view text) {
  if (text.empty() || text.size() > kLongestString) return nullptr;
  return DdeCreateStringHandleA(g_instance, std::string(text).c_str(), CP_WINANSI);
}

void DdeChannel::FreeString(DdeString text) {
  if (text != nullptr) DdeFreeStringHandle(g_instance, text);
}

DdeConversation DdeChannel::Open(DdeString service, DdeString topic) {
  g_unanswered.clear();
  g_refused = false;
  g_open = DdeConnect(g_instance, service, topic, nullptr);
  return g_open;
}

bool DdeChannel::StartAdvise(DdeConversation conversation, DdeString item, bool acknowledge) {
  if (Send(conversation, item, XTYP_ADVSTART | (acknowledge ? XTYPF_ACKREQ : 0)) == 0) return false;
  g_advised.insert(KeyOf(item));
  return true;
}

bool DdeChannel::StopAdvise(DdeConversation conversation, DdeString item) {
  if (Send(conversation, item, XTYP_ADVSTOP) == 0) return false;
  g_advised.erase(KeyOf(item));
  return true;
}

bool DdeChannel::Poke(DdeConversation conversation, DdeString item, std::string_view text) {
  const DWORD id = Send(conversation, item, XTYP_POKE, text);
  if (id == 0) g_refused = true;
  if (id != 0) g_unanswered.insert(id);
  return id != 0;
}

bool DdeChannel::IsOpen(DdeConversation conversation) { return IsThere(conversation); }

int DdeChannel::WaitForReplies(DdeConversation conversation, int wait_ms) {
  if (conversation == nullptr) return -1;
  const unsigned closed = g_closed;
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(wait_ms);
  while (g_closed == closed && !g_unanswered.empty() && IsOpen(conversation)) {
    const ULONGLONG now = GetTickCount64();
    if (now >= end) break;
    Handle(static_cast<int>(end - now));
  }
  if (g_closed != closed) return -1;
  const bool gone = !g_unanswered.empty() && !IsOpen(conversation);
  if (std::exchange(g_refused, false) || gone) return -1;
  return g_unanswered.empty() ? 0 : 1;
}

void DdeChannel::Close(DdeConversation conversation) {
  // First, because disconnecting dispatches messages.
  g_open = nullptr;
  ++g_closed;
  g_advised.clear();
  g_arrived.clear();
  g_unanswered.clear();
  if (conversation != nullptr) DdeDisconnect(conversation);
}

bool DdeChannel::Handle(int wait_ms) {
  if (HandleMessages()) return true;
  if (wait_ms <= 0) return false;
  MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(wait_ms), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  return HandleMessages();
}

int DdeChannel::Descriptor() { return -1; }

}  // namespace velmora
