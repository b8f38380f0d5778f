// The conversation with the field-data program, which is the server of the DDE service "Tundril": text
// goes there with DdeMessage, and its numbered notifications come to a window of the using program.
//
//   CDdeCom com;
//   com.m_pNotifyWnd = &window;             // gets WM_USER with 1117, 1119, 1120, 1121 or 1122
//   com.SetProjPath("C:\\Projekt\\Bro 7");  // before the greeting, which answers Connect
//   if (CDdeCom::Connect() == 0) CDdeCom::DdeMessage("4711");
//   ...
//   CDdeCom::Close();
//
//   not connected --Connect--> connected, item "-1" --greeting--> connected, the server's item
//         ^                                                              |
//         +----------------------------- Close --------------------------+
//
// There is one conversation in a process, however many objects there are: all its state is static.
// Notifications go to the m_pNotifyWnd of the object constructed last of those that still live. A second
// Connect after Close takes no new greeting: m_Pid stays, and the item is "-1" until a new CDdeCom starts
// over; held by the test ASecondConversation.
//
// One thread does all of it. On Windows data arrive wherever that thread dispatches its messages; elsewhere
// the client calls HandlePending when Descriptor is readable, or now and then. The library starts no
// thread, and no call waits longer than stands at it.
//
// Where there is no DDE the conversation runs over the session's D-Bus; docs/conversation.md tells how
// to be its server.
#ifndef VELMORA_LINK_DDE_COM_H_
#define VELMORA_LINK_DDE_COM_H_

#include "velmora/export.h"
#include "velmora/platform/dde_channel.h"
#include "velmora/platform/notify_window.h"
#include "velmora/text/string.h"

namespace velmora {

class VELMORA_API CDdeCom {
 public:
  // A conversation that is still open is closed, as by Close; m_Pid is -1 and the project folder empty.
  CDdeCom();
  virtual ~CDdeCom();
  CDdeCom(const CDdeCom&) = delete;
  CDdeCom& operator=(const CDdeCom&) = delete;

  // Finds the server and listens to its item "-1". Returns 0, at once when connected already; -1 when
  // nobody answered in three trials. Shows nothing. After the trials it sleeps 30, 130 and 230 ms. A trial
  // takes no time on D-Bus, with a bus that is out of order a second for each question that is still
  // answered and for one that is not, five at most (a bus that stops right after it has answered is waited
  // for a minute and a half by the D-Bus library); on Windows as long as the windows of the desktop take to
  // answer the system's broadcast.
  static int Connect();
  // Sends the text, cut to 511 characters, on the current item. Does not wait and always returns 0:
  // whether it was taken, WaitForReplies tells.
  static int DdeMessage(const CStringA& text);
  // Stops listening and ends the conversation; harmless when there is none. Waits a second at most.
  static void Close();

  // The folder to announce when the greeting comes, in Windows-1252; cut to 511 characters, with the
  // announcement's own "10000 " before it to 505. Returns 0.
  virtual int SetProjPath(const char* path);

  // Handles what has come; with nothing there, waits for it at most `wait_ms`. True when something was
  // handled: there may be more. On Windows it dispatches the thread's messages, a window's own too.
  static bool HandlePending(int wait_ms = 0);
  // A file descriptor that is readable when there is something to handle; another after each Connect.
  // -1 when not connected, once the server has gone, and on Windows.
  static int Descriptor();
  // Whether the server has not gone since Connect. The conversation is open until Close all the same.
  static bool IsServerThere();
  // Waits until the server has answered to the texts sent, at most `wait_ms`. 0 when it has taken them, 1
  // when it has not answered yet (they are on their way), -1 when it has refused one since the last call,
  // or was not there.
  static int WaitForReplies(int wait_ms);

  static DdeString m_Service;      // "Tundril"
  static DdeString m_Topic;        // "WIN"
  static DdeString m_Item;         // "-1", later the one that the server named; these three while connected
  static DdeConversation m_Hconv;  // null when not connected
  static int m_Pid;                // the number that the server greeted with; -1 until then
  static char m_Ddemess[512];      // the text sent last
  static char m_ProjPath[512];
  static int m_Winsession;  // the using program's own

  NotifyWindow* m_pNotifyWnd = nullptr;  // not owned; null drops the notifications
};

}  // namespace velmora

#endif  // VELMORA_LINK_DDE_COM_H_
