// The conversation with a real server in a process of its own: real DDE on Windows, a real bus elsewhere.
#include <chrono>
#include <string>

#include "tests/link/stand_in.h"

namespace velmora::testing {
namespace {

using std::string;
using Clock = std::chrono::steady_clock;

// Writes down what it is told.
struct Window : NotifyWindow {
  void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
    told += std::to_string(message) + " " + std::to_string(wParam) + " " + std::to_string(lParam) + "\n";
  }
  string told;
};

class Conversation : public WithStandIn {
 protected:
  static bool Greeted() {
    return HandleUntil([] { return CDdeCom::m_Pid >= 0; });
  }
  static void HandleFor(std::chrono::milliseconds time) {
    for (const auto end = Clock::now() + time; Clock::now() < end;) CDdeCom::HandlePending(20);
  }
};

TEST_F(Conversation, FromGreetingToClose) {
  Serve(
      "send 0 NOLL\nsend -7 MINUS\nsend Hello there\nsend 99999999999 STORT\ngreet 4711 -1\n"
      "send 198\nwait 1500\n"
      "send 193 7\nsend 193\nsend 193 x\nsend 194\nsend 195 5\nsend 196\nsend 197 -2\nsend 198 3\n"
      "send 193" +
      string(590, ' ') +
      "9\n"  // a second number that is not read any more
      "send 197 9\n");
  CDdeCom earlier;
  CDdeCom com;
  EXPECT_EQ(com.SetProjPath("C:\\Projekt\\\xC5"
                            "bro"),
            0);
  ASSERT_EQ(CDdeCom::Connect(), 0);
  EXPECT_TRUE(CDdeCom::m_Hconv);
  EXPECT_EQ(CDdeCom::m_Pid, -1);
  EXPECT_EQ(CDdeCom::Connect(), 0);
  ASSERT_TRUE(Greeted());
  EXPECT_EQ(CDdeCom::m_Pid, 4711);
  EXPECT_EQ(string(CDdeCom::m_Ddemess),
            "10000 C:\\Projekt\\\xC5"
            "bro");

  // The first notification finds no window. The later ones go to the object constructed last.
  ASSERT_TRUE(Sees("send,-1,198"));
  HandleFor(std::chrono::milliseconds(300));
  Window window;
  Window other;
  com.m_pNotifyWnd = &window;
  earlier.m_pNotifyWnd = &other;
  EXPECT_TRUE(HandleUntil([&] { return window.told.ends_with("1121 9\n"); }));
  EXPECT_EQ(window.told,
            "1024 1117 7\n1024 1117 1\n1024 1117 1\n1024 1119 0\n1024 1120 0\n1024 1121 -2\n1024 1122 84\n"
            "1024 1117 1\n1024 1121 9\n");
  EXPECT_EQ(other.told, "");

  EXPECT_EQ(CDdeCom::DdeMessage("Hej p\xE5 dig"), 0);
  EXPECT_EQ(CDdeCom::DdeMessage(CStringA('\xE5', 600)), 0);
  EXPECT_EQ(string(CDdeCom::m_Ddemess), string(511, '\xE5'));
  string longest = "poke,-1,";
  for (int i = 0; i < 511; ++i) longest += "å";
  EXPECT_TRUE(Sees(longest));
  EXPECT_EQ(CDdeCom::WaitForReplies(2000), TestBus::TellsAnswers() ? 0 : 1);
  CDdeCom::Close();
  CDdeCom::Close();
  EXPECT_FALSE(CDdeCom::m_Hconv);
  EXPECT_TRUE(Sees("disconnect,,"));
  EXPECT_TRUE(
      Seen().starts_with("connect,,\nadvise,-1,\nsend,-1,0 NOLL\nsend,-1,-7 MINUS\nsend,-1,Hello there\n"
                         "send,-1,99999999999 STORT\nsend,-1,4711 -1\nunadvise,-1,\nadvise,-1,\n"))
      << Seen();
  EXPECT_NE(Seen().find("poke,-1,10000 C:\\Projekt\\Åbro\n"), string::npos);
  EXPECT_TRUE(Seen().ends_with("poke,-1,Hej på dig\n" + longest + "\nunadvise,-1,\ndisconnect,,\n"))
      << Seen();
}

// After Close the number stays, and so the next greeting is a line like any other. A new object starts over,
// and closes what is open.
TEST_F(Conversation, ASecondConversation) {
  Serve("greet 193 -1\n");
  CDdeCom com;
  Window window;
  com.m_pNotifyWnd = &window;
  ASSERT_EQ(CDdeCom::Connect(), 0);
  ASSERT_TRUE(Greeted());
  CDdeCom::Close();
  EXPECT_EQ(CDdeCom::m_Pid, 193);
  ASSERT_EQ(CDdeCom::Connect(), 0);
  EXPECT_TRUE(HandleUntil([&] { return window.told == "1024 1117 -1\n"; })) << window.told;
  {
    CDdeCom third;
    EXPECT_EQ(CDdeCom::m_Pid, -1);
    EXPECT_FALSE(CDdeCom::m_Hconv);
    EXPECT_TRUE(Sees("2,disconnect,,"));
    ASSERT_EQ(CDdeCom::Connect(), 0);
    ASSERT_TRUE(Greeted());
    EXPECT_EQ(string(CDdeCom::m_ProjPath), "");
    EXPECT_EQ(Seen().find("poke"), string::npos) << Seen();  // without a project nothing is announced
  }
  EXPECT_TRUE(CDdeCom::IsServerThere());  // an object that goes changes nothing
}

// The notifications that are on their way are not for the next conversation.
TEST_F(Conversation, ANotificationMayCloseAndConnect) {
  struct Closing : Window {
    void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
      Window::Notify(message, wParam, lParam);
      if (closes) CDdeCom::Close();
      if (connects) connected = CDdeCom::Connect();
      connects = false;
    }
    bool closes = true, connects = false;
    int connected = -1;
  };
  for (const bool connects : {false, true}) {
    Serve("greet 195 -1\nsend 196\nsend 197 9\nsend 193 1\n");
    CDdeCom com;
    Closing window;
    window.connects = connects;
    com.m_pNotifyWnd = &window;
    com.SetProjPath("C:\\P");  // as a rule the server's reply to it comes after the notification
    ASSERT_EQ(CDdeCom::Connect(), 0);
    ASSERT_TRUE(Greeted());
    if (!connects) {
      const int replies = CDdeCom::WaitForReplies(5000);
      EXPECT_EQ(replies, window.told.empty() ? 0 : -1);  // on a slow machine the reply may come first
    }
    EXPECT_TRUE(HandleUntil([&] { return !window.told.empty(); }));
    HandleFor(std::chrono::milliseconds(500));
    EXPECT_EQ(window.told, connects ? "1024 1120 0\n1024 1119 0\n" : "1024 1120 0\n");
    EXPECT_EQ(window.connected, connects ? 0 : -1);
    EXPECT_FALSE(CDdeCom::m_Hconv);
    EXPECT_EQ(CDdeCom::WaitForReplies(0), -1);
  }
}

TEST_F(Conversation, NobodyThere) {
  CDdeCom com;
  const auto start = Clock::now();
  EXPECT_EQ(CDdeCom::Connect(), -1);
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(390));
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
  EXPECT_FALSE(CDdeCom::m_Hconv);
  EXPECT_EQ(CDdeCom::DdeMessage("x"), 0);
  EXPECT_FALSE(CDdeCom::IsServerThere());
  EXPECT_EQ(CDdeCom::WaitForReplies(0), -1);
  CDdeCom::Close();
}

TEST_F(Conversation, AServerThatDies) {
  for (const char* const script : {"greet 1 -1\nend\n", "greet 1 -1\nsend 195\n"}) {
    Serve(script);
    CDdeCom com;
    ASSERT_EQ(CDdeCom::Connect(), 0);
    ASSERT_TRUE(Greeted());
    KillServer();
    EXPECT_TRUE(HandleUntil([] { return !CDdeCom::IsServerThere(); }));
    const auto start = Clock::now();
    EXPECT_TRUE(CDdeCom::m_Hconv);
    EXPECT_EQ(CDdeCom::Connect(), 0);
    EXPECT_EQ(CDdeCom::DdeMessage("x"), 0);
    EXPECT_NE(CDdeCom::WaitForReplies(1000), 0);
    CDdeCom::HandlePending(100);
    CDdeCom::Close();
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(CDdeCom::Connect(), -1);
  }
}

}  // namespace
}  // namespace velmora::testing
