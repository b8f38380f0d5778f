// Where the bytes of an export go.
#ifndef VELMORA_EXCHANGE_SINK_H_
#define VELMORA_EXCHANGE_SINK_H_

#include <array>
#include <charconv>
#include <functional>
#include <string_view>

namespace velmora::exchange {

// Receives bytes in order; may throw.
using Sink = std::function<void(std::string_view)>;

// Collects small pieces of text for a sink.
class TextSink {
 public:
  explicit TextSink(const Sink& sink) : sink_(sink) {}

  TextSink& operator<<(std::string_view text) {
    if (text.size() > block_.size() - used_) Flush();
    if (text.size() > block_.size())
      sink_(text);
    else
      used_ += text.copy(block_.data() + used_, text.size());
    return *this;
  }
  // The shortest text that reads back as the same double.
  TextSink& operator<<(double value) {
    constexpr size_t kLongestShortest = 32;
    if (kLongestShortest > block_.size() - used_) Flush();
    // Without the sign of a zero.
    const auto end = std::to_chars(block_.data() + used_, block_.data() + block_.size(), value + 0.0);
    used_ = static_cast<size_t>(end.ptr - block_.data());
    return *this;
  }
  // To be called last.
  void Flush() {
    if (used_ > 0) sink_({block_.data(), used_});
    used_ = 0;
  }

 private:
  const Sink& sink_;
  std::array<char, size_t{64} << 10> block_;
  size_t used_ = 0;
};

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_SINK_H_
