// The remaining time of a limit.
#ifndef VELMORA_CLI_TERMINAL_STOP_WATCH_H_
#define VELMORA_CLI_TERMINAL_STOP_WATCH_H_

#include <algorithm>
#include <chrono>

namespace velmora::cli {

class StopWatch {
 public:
  explicit StopWatch(int limit_ms) : end_(Clock::now() + std::chrono::milliseconds(limit_ms)) {}
  // Milliseconds; 0 when the limit has passed.
  int Left() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point end_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_STOP_WATCH_H_
