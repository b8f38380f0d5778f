// The client of the field-data program, the server of the DDE service "Tundril": DdeMessage sends texts, and
// the server's numbered notifications become messages to a window of the client.
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
// A process has one conversation, independent of the number of objects: its state is static. Notifications go
// to the m_pNotifyWnd of the most recently constructed living object, which may close the conversation and
// open another. Required: a second Connect after Close accepts no new greeting; m_Pid is unchanged and the
// item is "-1" until a new CDdeCom is constructed (test ASecondConversation).
//
// Use it on one thread. On Windows data arrive wherever the thread dispatches its messages; on other systems
// the client calls HandlePending when Descriptor is readable, or regularly. The library starts no thread, and
// no call waits longer than stated.
//
// On systems without DDE the conversation uses the session's D-Bus (docs/conversation.md).
#ifndef VELMORA_LINK_DDE_COM_H_
#define VELMORA_LINK_DDE_COM_H_

#include "velmora/export.h"
#include "velmora/platform/dde_channel.h"
#include "velmora/platform/notify_window.h"
#include "velmora/text/string.h"

namespace velmora {

class VELMORA_API CDdeCom {
 public:
  // Closes an open conversation; m_Pid is then -1 and the project folder empty.
  CDdeCom();
  virtual ~CDdeCom();  // leaves the conversation open
  CDdeCom(const CDdeCom&) = delete;
  CDdeCom& operator=(const CDdeCom&) = delete;

  // Connects and starts an advise loop on the item "-1". Returns 0, also when connected already; -1 when no
  // server answers in three attempts, which are followed by pauses of 30, 130 and 230 ms. Shows nothing. With
  // a bus that does not answer an attempt takes up to five seconds (a minute and a half when the bus stops
  // between two steps of connecting); on Windows it lasts until all windows of the desktop have answered the
  // system's broadcast.
  static int Connect();
  // Sends the text, cut to 511 characters, on the current item. Does not wait and always returns 0;
  // WaitForReplies returns the outcome.
  static int DdeMessage(const CStringA& text);
  // Ends the conversation, if there is one. Waits at most a second.
  static void Close();

  // The folder to announce after the greeting, in Windows-1252; cut to 511 characters, in the announcement
  // after "10000 " to 505. Returns 0.
  virtual int SetProjPath(const char* path);

  // Handles pending messages; when there are none, waits for one at most `wait_ms`. True when it handled
  // some: there may be more. On Windows it dispatches all messages of the thread.
  static bool HandlePending(int wait_ms = 0);
  // A file descriptor that is readable when messages are pending; it changes with every Connect. -1 when not
  // connected, after the server has ended, and on Windows.
  static int Descriptor();
  // Whether the server is still connected. The conversation stays open until Close.
  static bool IsServerThere();
  // Waits at most `wait_ms` for the server's replies to the texts sent. 0 when it has accepted them, 1 when
  // replies are missing, -1 when it has rejected one since the last call, is gone or was never connected, or
  // a notification closed the conversation meanwhile.
  static int WaitForReplies(int wait_ms);

  static DdeString m_Service;      // "Tundril"
  static DdeString m_Topic;        // "WIN"
  static DdeString m_Item;         // "-1", then the greeting's; these three only while connected
  static DdeConversation m_Hconv;  // null when not connected
  static int m_Pid;                // the greeting's number, -1 before it
  static char m_Ddemess[512];      // the last text sent
  static char m_ProjPath[512];     // the folder of SetProjPath
  static int m_Winsession;         // for clients

  NotifyWindow* m_pNotifyWnd = nullptr;  // not owned; with null notifications are dropped
};

}  // namespace velmora

#endif  // VELMORA_LINK_DDE_COM_H_
