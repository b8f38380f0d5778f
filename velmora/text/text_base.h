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

// The base of CString (`Text`, of wchar_t) and CStringA (of char). Lengths are limited by int.
template <class Text, class Char>
class TextBase {
 public:
  // Text that somebody else holds.
  using View = std::basic_string_view<Char>;

  // In characters: units of wchar_t or bytes, without the terminating zero.
  int GetLength() const { return static_cast<int>(text_.size()); }
  bool IsEmpty() const { return text_.empty(); }  // whether its length is 0
  void Empty() { text_.clear(); }                 // makes the text empty

  // The characters with a terminating zero, valid until the text changes. @{
  operator const Char*() const { return text_.c_str(); }  // NOLINT(google-explicit-constructor)
  const Char* GetString() const { return text_.c_str(); }
  // @}
  // The characters without the zero, valid as long.
  View GetView() const { return text_; }
  // The character at a position; 0 at the end and outside. @{
  Char GetAt(int index) const { return index >= 0 && index < GetLength() ? text_[At(index)] : Char{}; }
  Char operator[](int index) const { return GetAt(index); }
  // @}

  // Below, equal to or above 0 as this text sorts before, with or after the other, by character number.
  int Compare(const Char* other) const { return text_.compare(ViewOf(other)); }

  // From a position on: everything, or at most `count` characters. @{
  Text Mid(int first) const { return Mid(first, GetLength()); }
  Text Mid(int first, int count) const { return Text(View(text_).substr(At(first), Count(count))); }
  // @}
  Text Left(int count) const { return Mid(0, count); }  // the first `count` characters, or fewer
  // The last `count` characters, or fewer.
  Text Right(int count) const {
    return Text(View(text_).substr(text_.size() - std::min(Count(count), text_.size())));
  }

  // The first position at or after `start` of a character or a text, -1 when there is none. @{
  int Find(Char c, int start = 0) const { return Index(text_.find(c, At(start))); }
  int Find(const Char* part, int start = 0) const { return Index(text_.find(ViewOf(part), At(start))); }
  // @}
  // The last position of the character, -1 when there is none.
  int ReverseFind(Char c) const { return Index(text_.rfind(c)); }

  // Remove blanks (space, \t, \n, \v, \f, \r), or another character, at both ends, at the start or at the
  // end, from this text, and return it. @{
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

  // @}

  // Append to this text; a null pointer appends nothing. @{
  Text& operator+=(const Text& other) { return Append(other.GetView()); }
  Text& operator+=(const Char* other) { return Append(ViewOf(other)); }
  Text& operator+=(Char c) { return Append(View(&c, 1)); }
  // @}

  // Two texts, or a text and a character, one behind the other. @{
  friend Text operator+(const Text& a, const Text& b) { return Text(a) += b; }
  friend Text operator+(const Text& a, const Char* b) { return Text(a) += b; }
  friend Text operator+(const Char* a, const Text& b) { return Text(a) += b; }
  friend Text operator+(const Text& a, Char b) { return Text(a) += b; }
  friend Text operator+(Char a, const Text& b) { return Text(View(&a, 1)) += b; }
  // @}

  // By character number, letter case counting; a null pointer is empty text. @{
  friend bool operator==(const Text& a, const Text& b) { return a.GetView() == b.GetView(); }
  friend bool operator==(const Text& a, const Char* b) { return a.GetView() == ViewOf(b); }
  friend bool operator==(const Char* a, const Text& b) { return ViewOf(a) == b.GetView(); }
  friend bool operator!=(const Text& a, const Text& b) { return a.GetView() != b.GetView(); }
  friend bool operator!=(const Text& a, const Char* b) { return a.GetView() != ViewOf(b); }
  friend bool operator!=(const Char* a, const Text& b) { return ViewOf(a) != b.GetView(); }
  friend bool operator<(const Text& a, const Text& b) { return a.GetView() < b.GetView(); }
  friend bool operator<(const Text& a, const Char* b) { return a.GetView() < ViewOf(b); }
  friend bool operator<(const Char* a, const Text& b) { return ViewOf(a) < b.GetView(); }
  // @}

 protected:
  TextBase() = default;                          // empty
  explicit TextBase(View text) : text_(text) {}  // a copy

  // The text before the terminating zero; empty for null.
  static View ViewOf(const Char* text) { return text == nullptr ? View() : View(text); }

  std::basic_string<Char> text_;  // the text itself, for the derived classes

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
