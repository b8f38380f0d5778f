#include "cli/link/commands.h"
#include "cli/link/link_text.h"
#include "cli/terminal/error.h"
#include "velmora/link/dde_com.h"
#include "velmora/platform/console.h"

namespace velmora::cli {
namespace {

// Queues notifications; they are printed outside the callback, because printing may throw.
struct NotificationQueue : NotifyWindow {
  struct Notification {
    std::int64_t message, wParam, lParam;
  };

  void Notify(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
    notifications.push_back({message, static_cast<std::int64_t>(wParam), lParam});
  }

  std::vector<Notification> notifications;
};

}  // namespace

void LinkListen(const LinkOptions& options) {
  const Interrupt interrupt;
  CDdeCom com;
  NotificationQueue queue;
  com.m_pNotifyWnd = &queue;
  ConnectToProgram();
  OutputFile output;
  RecordWriter records(
      output, options.output.Format(),
      {{"message", "message", true}, {"wparam", "wParam", true}, {"lparam", "lParam", true}});
  records.Begin();
  output.Finish();
  std::int64_t count = 0;
  const auto done = [&] { return (options.count > 0 && count >= options.count) || Interrupt::Requested(); };
  for (bool there = true; there && !done();) {
    there = CDdeCom::HandlePending(kPollInterval) || CDdeCom::IsServerThere();
    for (const NotificationQueue::Notification& each : queue.notifications) {
      if (done()) break;
      ++count;
      records.Row({each.message, each.wParam, each.lParam});
      output.Finish();  // at once
    }
    queue.notifications.clear();
  }
  CDdeCom::Close();
  records.Finish();
  output.Finish();
  if (!done()) throw Refusal("the field-data program has ended");
}

}  // namespace velmora::cli
