// The client end of a DDE conversation, as the system carries it: DDE itself, or the session's D-Bus
// (docs/conversation.md). dde_server.h is the server end; link/conversation.h knows the texts.
//
// Texts are Windows-1252 without a zero byte. No thread is started: data arrive inside Handle, on Windows
// wherever the thread dispatches its messages. Sending does not wait; Open, WaitForReplies, Handle and Close
// wait for the server, each within its stated limit.
#ifndef VELMORA_PLATFORM_DDE_CHANNEL_H_
#define VELMORA_PLATFORM_DDE_CHANNEL_H_

#include <string_view>

#include "velmora/export.h"

// The system's own types behind its handles, HSZ and HCONV.
struct HSZ__;
struct HCONV__;

namespace velmora {

using DdeString = ::HSZ__*;          // a text that the channel keeps: a service, a topic or an item
using DdeConversation = ::HCONV__*;  // an open conversation

// The process's channel; every operation is static.
class DdeChannel {
 public:
  // Receives the data of advised items, whose names compare without regard to letter case. May call any
  // function of this class; after Close no data of that conversation is received.
  using Received = void (*)(DdeConversation from, std::string_view data);

  // Further calls only replace `received`. False when the system has no DDE.
  static bool Start(Received received);

  // Null when the text is empty or longer than 255 characters.
  static DdeString MakeString(std::string_view text);
  // Frees what MakeString returned; null is allowed.
  static void FreeString(DdeString text);

  // One conversation at a time. Null when no server answers to the service and topic. On D-Bus it makes up to
  // five calls to the bus, each with a limit of a second, and fails with the first that has no reply. On
  // Windows it lasts until all windows of the desktop have answered the system's broadcast.
  static DdeConversation Open(DdeString service, DdeString topic);

  // Starts an advise loop: the server sends the item's data when they change. With `acknowledge` it sends
  // them only after the acknowledgement of the previous data; D-Bus has no acknowledgement. False when it
  // could not be asked.
  static bool StartAdvise(DdeConversation conversation, DdeString item, bool acknowledge);
  // Ends the loop; false when the server could not be asked.
  static bool StopAdvise(DdeConversation conversation, DdeString item);
  // Sends a text to an item. False when it could not be sent; WaitForReplies returns -1 then, too.
  static bool Poke(DdeConversation conversation, DdeString item, std::string_view text);

  // Whether the server is still connected, as of the last Handle.
  static bool IsOpen(DdeConversation conversation);
  // Waits at most `wait_ms` for the replies to all pokes. 0 when they were accepted, 1 when replies are
  // missing (under Wine none arrives), -1 when one was rejected since the last call, the server is gone,
  // there is no conversation or it was closed while this waited.
  static int WaitForReplies(DdeConversation conversation, int wait_ms);
  // Ends the conversation. Waits at most a second until everything is sent.
  static void Close(DdeConversation conversation);

  // Handles pending messages; when there are none, waits for one at most `wait_ms`. True when it handled
  // some: there may be more.
  static bool Handle(int wait_ms);
  // A file descriptor that is readable when Handle has work, for the client's event loop; it changes with
  // every Open. -1 without a conversation, after the server has ended, and on Windows.
  static int Descriptor();
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DDE_CHANNEL_H_
