// One measurement in a process of its own, so that its memory is its own and a reader that goes astray ends
// alone.
#ifndef VELMORA_BENCH_HOSTILE_TRIAL_H_
#define VELMORA_BENCH_HOSTILE_TRIAL_H_

#include <functional>
#include <string>

namespace velmora::bench {

struct Trial {
  double seconds = 0;    // of the processor
  double megabytes = 0;  // the most it ever held, libraries and all
  std::string failure;   // empty; else how the process ended
};

// Runs `action` in a child with its output thrown away. After kMostSeconds of work, or at kMostMegabytes, the
// child is stopped.
inline constexpr unsigned kMostSeconds = 60;
inline constexpr unsigned kMostMegabytes = 8000;
Trial RunAlone(const std::function<void()>& action);

}  // namespace velmora::bench

#endif  // VELMORA_BENCH_HOSTILE_TRIAL_H_
