// A client with an event loop of its own, and a bus that stands still.
#include <poll.h>

#include "tests/link/stand_in.h"

namespace velmora::testing {
namespace {

class EventLoop : public WithStandIn {};

TEST_F(EventLoop, TheDescriptorTellsWhatComesAndNoCallHangs) {
  Serve("greet 1 NAMN\nwait 100\nsend 195\nwait 400\nsend 195\n");
  CDdeCom com;
  ASSERT_EQ(CDdeCom::Connect(), 0);
  struct : NotifyWindow {
    void Notify(unsigned, std::uintptr_t, std::intptr_t) override { ++count; }
    int count = 0;
  } window;
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

}  // namespace
}  // namespace velmora::testing
