// A progress bar on standard error, for work over a second on a terminal. On a narrow one the figures come
// first.
#ifndef VELMORA_CLI_OUTPUT_PROGRESS_H_
#define VELMORA_CLI_OUTPUT_PROGRESS_H_

#include <chrono>
#include <cstdint>
#include <string>

namespace velmora::cli {

class Progress {
 public:
  // With a `total` of 0, unknown, only the count and its rate are shown. What is counted are rows, or each a
  // `unit`; the clock is read every so many of them.
  Progress(std::string what, std::uint64_t total, std::string unit = "row", std::uint64_t often = 256);
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Update(std::uint64_t done, std::uint64_t rows);
  // Before other lines on standard error.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  void Draw(Clock::duration elapsed, std::uint64_t done, std::uint64_t rows);
  void Show(const std::string& text);

  std::string what_;
  std::uint64_t total_;
  std::string unit_;
  std::uint64_t often_;
  size_t shown_ = 0;  // the width of the line
  bool wanted_;
  std::uint64_t next_rows_ = 0;
  Clock::time_point start_;
  Clock::time_point next_;
};

// "12 s", "3 min 20 s", "1 h 5 min"
std::string DurationText(std::chrono::seconds duration);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_PROGRESS_H_
