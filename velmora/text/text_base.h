// What wide and narrow text share: a value with the suite's string operations.
//
// Positions and lengths count characters from 0. A position outside the text is taken as the nearest
// end, a negative count as 0: no call can read outside.
#ifndef VELMORA_TEXT_TEXT_BASE_H_
#define VELMORA_TEXT_TEXT_BASE_H_

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace velmora {

template <class Text, class Char>
class TextBase {
 public:
  using View = std::basic_string_view<Char>;

  int GetLength() const { return static_cast<int>(text_.size()); }
  bool IsEmpty() const { return text_.empty(); }
  void Empty() { text_.clear(); }

  operator const Char*() const { return text_.c_str(); }  // NOLINT(google-explicit-constructor)
  const Char* GetString() const { return text_.c_str(); }
  View GetView() const { return text_; }
  // 0 at the end and outside.
  Char GetAt(int index) const { return index >= 0 && index < GetLength() ? text_[At(index)] : Char{}; }
  Char operator[](int index) const { return GetAt(index); }

  // Below, equal to or above 0, by character number.
  int Compare(const Char* other) const { return text_.compare(ViewOf(other)); }

  Text Mid(int first) const { return Mid(first, GetLength()); }
  Text Mid(int first, int count) const { return Text(View(text_).substr(At(first), Count(count))); }
  Text Left(int count) const { return Mid(0, count); }
  Text Right(int count) const {
    return Text(View(text_).substr(text_.size() - std::min(Count(count), text_.size())));
  }

  // The first place at or after `start`, -1 when there is none.
  int Find(Char c, int start = 0) const { return Index(text_.find(c, At(start))); }
  int Find(const Char* part, int start = 0) const { return Index(text_.find(ViewOf(part), At(start))); }
  int ReverseFind(Char c) const { return Index(text_.rfind(c)); }

  // Without an argument blanks go: space, \t, \n, \v, \f, \r.
  Text& Trim() { return TrimRight().TrimLeft(); }
  Text& TrimLeft() {
    return DropLeft([](Char c) { return IsBlankChar(c); });
  }
  Text& TrimRight() {
    return DropRight([](Char c) { return IsBlankChar(c); });
  }
  Text& Trim(Char target) { return TrimRight(target).TrimLeft(target); }
  Text& TrimLeft(Char target) {
    return DropLeft([target](Char c) { return c == target; });
  }
  Text& TrimRight(Char target) {
    return DropRight([target](Char c) { return c == target; });
  }

  Text& operator+=(const Text& other) { return Append(other.GetView()); }
  Text& operator+=(const Char* other) { return Append(ViewOf(other)); }
  Text& operator+=(Char c) { return Append(View(&c, 1)); }

  friend Text operator+(const Text& a, const Text& b) { return Text(a) += b; }
  friend Text operator+(const Text& a, const Char* b) { return Text(a) += b; }
  friend Text operator+(const Char* a, const Text& b) { return Text(a) += b; }
  friend Text operator+(const Text& a, Char b) { return Text(a) += b; }
  friend Text operator+(Char a, const Text& b) { return Text(View(&a, 1)) += b; }

  friend bool operator==(const Text& a, const Text& b) { return a.GetView() == b.GetView(); }
  friend bool operator==(const Text& a, const Char* b) { return a.GetView() == ViewOf(b); }
  friend bool operator==(const Char* a, const Text& b) { return ViewOf(a) == b.GetView(); }
  friend bool operator!=(const Text& a, const Text& b) { return a.GetView() != b.GetView(); }
  friend bool operator!=(const Text& a, const Char* b) { return a.GetView() != ViewOf(b); }
  friend bool operator!=(const Char* a, const Text& b) { return ViewOf(a) != b.GetView(); }
  friend bool operator<(const Text& a, const Text& b) { return a.GetView() < b.GetView(); }
  friend bool operator<(const Text& a, const Char* b) { return a.GetView() < ViewOf(b); }
  friend bool operator<(const Char* a, const Text& b) { return ViewOf(a) < b.GetView(); }

 protected:
  TextBase() = default;
  explicit TextBase(View text) : text_(text) {}

  static View ViewOf(const Char* text) { return text == nullptr ? View() : View(text); }

  std::basic_string<Char> text_;

 private:
  static bool IsBlankChar(Char c) { return c == Char(' ') || (c >= Char('\t') && c <= Char('\r')); }
  static int Index(size_t at) { return at == View::npos ? -1 : static_cast<int>(at); }
  static size_t Count(int count) { return count < 0 ? 0 : static_cast<size_t>(count); }
  size_t At(int index) const { return std::min(Count(index), text_.size()); }

  Text& Self() { return static_cast<Text&>(*this); }
  Text& Append(View other) {
    text_.append(other);
    return Self();
  }
  template <class Drop>
  Text& DropLeft(Drop drop) {
    text_.erase(text_.begin(), std::find_if_not(text_.begin(), text_.end(), drop));
    return Self();
  }
  template <class Drop>
  Text& DropRight(Drop drop) {
    text_.erase(std::find_if_not(text_.rbegin(), text_.rend(), drop).base(), text_.end());
    return Self();
  }
};

}  // namespace velmora

#endif  // VELMORA_TEXT_TEXT_BASE_H_
