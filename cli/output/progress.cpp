#include "cli/output/progress.h"

#include <algorithm>
#include <cstdio>

#include "velmora/platform/console.h"

namespace velmora::cli {
namespace {

constexpr auto kDelay = std::chrono::seconds(1);
constexpr auto kRefresh = std::chrono::milliseconds(200);
constexpr std::uint64_t kRowsBetweenReadings = 256;
constexpr size_t kBarWidth = 30;

}  // namespace

Progress::Progress(std::string what, std::uint64_t total, std::string unit)
    : what_(std::move(what)),
      total_(total),
      unit_(std::move(unit)),
      wanted_(StandardErrorIsTerminal()),
      next_(Clock::now() + kDelay) {}

void Progress::Clear() {
  if (shown_) std::fputs("\r\033[K", stderr);
  shown_ = false;
}

void Progress::Update(std::uint64_t done, std::uint64_t rows) {
  if (!wanted_ || rows < next_rows_) return;
  next_rows_ = rows + kRowsBetweenReadings;
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + kRefresh;
  Draw(done, rows);
}

void Progress::Draw(std::uint64_t done, std::uint64_t rows) {
  std::string line = "\r" + what_ + " ";
  if (total_ > 0) {
    const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(total_));
    const auto filled = static_cast<size_t>(part * kBarWidth);
    line += "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] " +
            std::to_string(static_cast<int>(part * 100)) + " %  ";
  }
  line += std::to_string(rows) + " " + unit_ + (rows == 1 ? "" : "s") + "\033[K";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  shown_ = true;
}

}  // namespace velmora::cli
