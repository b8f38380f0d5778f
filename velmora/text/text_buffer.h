// Text put together through a pointer, in memory that is used again.
#ifndef VELMORA_TEXT_TEXT_BUFFER_H_
#define VELMORA_TEXT_TEXT_BUFFER_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace velmora {

class TextBuffer {
 public:
  // Where the next characters go, with room for `count` of them; `end` is the end of those put before.
  char* Room(size_t count, const char* end) {
    size_ = static_cast<size_t>(end - text_.get());
    if (capacity_ - size_ < count) Grow(count);
    return text_.get() + size_;
  }
  // To put from the start.
  char* Begin() { return text_.get(); }
  void Finish(const char* end) { size_ = static_cast<size_t>(end - text_.get()); }
  std::string_view Text() const { return {text_.get(), size_}; }

 private:
  void Grow(size_t count) {
    capacity_ = std::max(2 * capacity_, size_ + count);
    auto text = std::make_unique_for_overwrite<char[]>(capacity_);
    std::copy_n(text_.get(), size_, text.get());
    text_ = std::move(text);
  }

  std::unique_ptr<char[]> text_;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

}  // namespace velmora

#endif  // VELMORA_TEXT_TEXT_BUFFER_H_
