#include "cli/output/progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "cli/terminal/error.h"
#include "cli/terminal/wrap.h"
#include "velmora/platform/console.h"
#include "velmora/text/counted.h"

namespace velmora::cli {
namespace {

constexpr auto kDelay = std::chrono::seconds(1);
constexpr auto kRefresh = std::chrono::milliseconds(200);
constexpr size_t kWidestBar = 30;
constexpr size_t kNarrowestBar = 5;  // a narrower one says nothing

}  // namespace

Progress::Progress(std::string what, std::uint64_t total, std::string unit, std::uint64_t often)
    : what_(std::move(what)),
      total_(total),
      unit_(std::move(unit)),
      often_(often),
      wanted_(StandardErrorIsTerminal() && !IsQuiet()),
      start_(Clock::now()),
      next_(start_ + kDelay) {}

void Progress::Clear() {
  if (shown_ == 0) return;
  Show("");
  std::fputc('\r', stderr);
}

void Progress::Update(std::uint64_t done, std::uint64_t rows) {
  if (!wanted_ || rows < next_rows_) return;
  next_rows_ = rows + often_;
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + kRefresh;
  Draw(now - start_, done, rows);
}

void Progress::Draw(Clock::duration elapsed, std::uint64_t done, std::uint64_t rows) {
  const double seconds = std::max(std::chrono::duration<double>(elapsed).count(), 0.001);
  std::string figures =
      Counted(rows, unit_) + ", " + std::to_string(std::llround(static_cast<double>(rows) / seconds)) + "/s";
  // A full last column would move the cursor to the next line.
  const size_t width = TerminalWidth(StandardStream::kError);
  const size_t most = width > 1 ? width - 1 : std::string::npos;
  std::string bar;
  if (total_ > 0) {
    const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(total_));
    figures = std::to_string(static_cast<int>(part * 100)) + " %  " + figures;
    if (part > 0)
      figures += ", " + DurationText(std::chrono::seconds(std::llround(seconds / part - seconds))) + " left";
    // The bar takes the columns that the figures leave.
    const size_t taken = DisplayWidth(what_ + " [] " + figures);
    const size_t room = std::min(kWidestBar, most - std::min(most, taken));
    const auto filled = static_cast<size_t>(part * static_cast<double>(room));
    if (room >= kNarrowestBar) bar = "[" + std::string(filled, '#') + std::string(room - filled, '.') + "] ";
  }
  Show(Cut(what_ + " " + bar + figures, most));
}

// Blanks erase the rest of the line before: that takes no escape sequence, which not every terminal has.
void Progress::Show(const std::string& text) {
  const size_t width = DisplayWidth(text);
  const std::string line = "\r" + text + std::string(shown_ - std::min(shown_, width), ' ');
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  shown_ = width;
}

std::string DurationText(std::chrono::seconds duration) {
  const auto seconds = std::min<std::int64_t>(duration.count(), 360'000'000);
  if (seconds < 60) return std::to_string(seconds) + " s";
  if (seconds < 3600) return std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
  return std::to_string(seconds / 3600) + " h " + std::to_string(seconds / 60 % 60) + " min";
}

}  // namespace velmora::cli
