// Work on many parts by several threads.
#ifndef VELMORA_PLATFORM_IN_THREADS_H_
#define VELMORA_PLATFORM_IN_THREADS_H_

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace velmora {

// How many threads that is: 0 is one a processor.
inline size_t ThreadsFor(int threads) {
  return threads > 0 ? static_cast<size_t>(threads) : std::max(1U, std::thread::hardware_concurrency());
}

// Calls work(part, state) for each of 0 to `parts` - 1, in any order, in up to `threads` threads of which one
// is the caller's; 0: one a processor. Each thread has what make() returned to it as `state`. After the parts
// that had begun, throws what one of them threw.
template <class Make, class Work>
void InThreads(size_t parts, int threads, const Make& make, const Work& work) {
  std::atomic<size_t> next = 0;
  std::mutex mutex;
  std::exception_ptr failed;
  const auto run = [&] {
    try {
      auto state = make();
      for (size_t part = next++; part < parts; part = next++) work(part, state);
    } catch (...) {
      const std::lock_guard lock(mutex);
      failed = std::current_exception();
      next = parts;
    }
  };
  const size_t wanted = std::min(ThreadsFor(threads), parts);
  std::vector<std::thread> running;
  try {
    running.reserve(wanted);
    while (running.size() + 1 < wanted) running.emplace_back(run);
  } catch (const std::system_error&) {  // fewer threads will do
  }
  run();
  for (std::thread& thread : running) thread.join();
  if (failed) std::rethrow_exception(failed);
}

template <class Work>
void InThreads(size_t parts, int threads, const Work& work) {
  InThreads(
      parts, threads, [] { return 0; }, [&](size_t part, int) { work(part); });
}

// The same for `count` items in runs of `length`: calls work(begin, end).
template <class Work>
void InRuns(size_t count, size_t length, int threads, const Work& work) {
  InThreads((count + length - 1) / length, threads,
            [&](size_t i) { work(i * length, std::min(count, (i + 1) * length)); });
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_IN_THREADS_H_
