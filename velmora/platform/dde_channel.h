// The client end of a DDE conversation, as the system carries it: DDE itself, or the session's D-Bus
// (docs/conversation.md gives the names there). What is said is the caller's affair.
//
// Text is bytes in Windows-1252 without a zero among them. Everything happens on the thread that calls:
// none is started, and nothing arrives but inside Handle, or on Windows wherever the thread dispatches
// its messages. What is sent is on its way when a call returns; only Open, WaitForReplies, Handle and Close
// wait for the other side, each with the limit that stands at it.
#ifndef VELMORA_PLATFORM_DDE_CHANNEL_H_
#define VELMORA_PLATFORM_DDE_CHANNEL_H_

#include <string_view>

#include "velmora/export.h"

// The system's own types behind its handles, HSZ and HCONV.
struct HSZ__;
struct HCONV__;

namespace velmora {

using DdeString = ::HSZ__*;
using DdeConversation = ::HCONV__*;

class DdeChannel {
 public:
  // Gets each piece of data that comes on an item that is listened to. May call anything here.
  using Received = void (*)(DdeConversation from, std::string_view data);

  // Once for the process; again does no harm. False when the system has no such service.
  static bool Start(Received received);

  // Null when the text is empty or longer than 255 characters.
  static DdeString MakeString(std::string_view text);
  static void FreeString(DdeString text);

  // One conversation at a time. Null when nobody answers to the service and topic. On D-Bus it asks the bus
  // five questions and waits for each a second at most; one without an answer ends it. On Windows it takes
  // as long as the windows of the desktop take to answer the system's broadcast.
  static DdeConversation Open(DdeString service, DdeString topic);

  // With `acknowledge` each piece of data waits for our acknowledgement of the one before; D-Bus has none.
  static bool StartAdvise(DdeConversation conversation, DdeString item, bool acknowledge);
  static bool StopAdvise(DdeConversation conversation, DdeString item);
  static bool Poke(DdeConversation conversation, DdeString item, std::string_view text);

  // Whether the other side is still there, as far as Handle has seen.
  static bool IsOpen(DdeConversation conversation);
  // Waits until the other side has answered to what was poked, at most `wait_ms`. 0 when it has taken it,
  // 1 when there is no answer yet (under Wine none is told), -1 when it has refused some of it since the
  // last call, or there was no other side.
  static int WaitForReplies(DdeConversation conversation, int wait_ms);
  // Ends the conversation. Waits a second at most for a full connection to take what was sent.
  static void Close(DdeConversation conversation);

  // Handles what has come; with nothing there, waits for it at most `wait_ms`. True when it handled
  // something: there may be more.
  static bool Handle(int wait_ms);
  // Readable when Handle has something to do, for the client's own event loop; another after each Open.
  // -1 without a conversation, once the other side has gone, and on Windows, where the message loop does it.
  static int Descriptor();
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DDE_CHANNEL_H_
