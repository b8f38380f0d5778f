// A client with an event loop of its own, and a bus that stands still.
#include <poll.h>

#include "tests/link/stand_in.h"
#include "velmora/platform/dde_server.h"

namespace velmora::testing {
namespace {

class EventLoop : public WithStandIn {};

struct CountingWindow : NotifyWindow {
  void Notify(unsigned, std::uintptr_t, std::intptr_t) override { ++count; }
  int count = 0;
};

TEST_F(EventLoop, TheDescriptorTellsWhatComesAndNoCallHangs) {
  Serve("greet 1 NAMN\nwait 100\nsend 195\nwait 400\nsend 195\n");
  CDdeCom com;
  ASSERT_EQ(CDdeCom::Connect(), 0);
  CountingWindow window;
  com.m_pNotifyWnd = &window;
  while (window.count < 2) {
    pollfd descriptor = {CDdeCom::Descriptor(), POLLIN, 0};
    ASSERT_EQ(poll(&descriptor, 1, 5000), 1);
    while (CDdeCom::HandlePending()) {
    }
  }

  EXPECT_NE(Seen().find("unadvise,-1,\nadvise,NAMN,\n"), std::string::npos) << Seen();

  bus_.Stop();
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 5000; ++i) CDdeCom::DdeMessage(CStringA('x', 511));
  EXPECT_NE(CDdeCom::WaitForReplies(100), 0);
  CDdeCom::Close();
  EXPECT_EQ(CDdeCom::Descriptor(), -1);
  EXPECT_EQ(CDdeCom::Connect(), -1);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8));
}

// As DDE has it on the other system.
TEST_F(EventLoop, ItemsCompareWithoutRegardToCase) {
  DdeServer server;
  std::vector<DdeEvent> events;
  const auto send = [&](const std::string& item, const std::string& text) {
    EXPECT_EQ(server.Handle(100, &events), DdeServer::Status::kDone);
    EXPECT_EQ(server.Send(1, item, text), DdeServer::Status::kDone);
  };
  ASSERT_EQ(server.Start("Tundril", "WIN"), DdeServer::Status::kDone);
  CDdeCom com;
  ASSERT_EQ(CDdeCom::Connect(), 0);
  send("-1", "1 V\u00E5g");
  EXPECT_TRUE(HandleUntil([] { return CDdeCom::m_Pid == 1; }));
  CountingWindow window;
  com.m_pNotifyWnd = &window;
  send("V\u00C5G", "195");
  EXPECT_TRUE(HandleUntil([&] { return window.count == 1; }));
}

}  // namespace
}  // namespace velmora::testing
