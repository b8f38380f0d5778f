// printf-style formatting of wide text, the same on every system.
//
//   %[-+ 0#][width][.precision][h l ll I64 z]conversion    width and precision may be "*"
//   d i u x X o c s f F e E g G %      "#" changes o, x and X only
//
// "%s" takes a const wchar_t* or a CString everywhere (not narrow text on one system and wide text
// on the other), a length letter changes nothing because the argument's own type is known, and a
// number is written with "." whatever the locale. An argument that does not fit its conversion is
// converted, a missing one is empty: nothing reads past what was passed.
#ifndef VELMORA_TEXT_FORMAT_H_
#define VELMORA_TEXT_FORMAT_H_

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "velmora/export.h"

namespace velmora {

// One argument of a format. Text is not copied: it must live as long as the argument.
class FormatArgument {
 public:
  // A whole number, a real number or text; a null pointer is the text "(null)". @{
  template <std::integral Integer>
  FormatArgument(Integer value)  // NOLINT(google-explicit-constructor): arguments convert silently
      : value_(static_cast<std::int64_t>(value)), size_(sizeof(Integer)) {
    if constexpr (std::is_unsigned_v<Integer>) value_ = static_cast<std::uint64_t>(value);
  }
  FormatArgument(double value) : value_(value) {}  // NOLINT(google-explicit-constructor)
  FormatArgument(const wchar_t* text)              // NOLINT(google-explicit-constructor)
      : value_(text == nullptr ? std::wstring_view(L"(null)") : std::wstring_view(text)) {}
  FormatArgument(std::wstring_view text) : value_(text) {}  // NOLINT(google-explicit-constructor)
  // @}

  std::wstring_view Text() const;  // empty for a number
  double Real() const;             // 0 for text
  // A real number is cut towards 0; 0 for one that does not fit, and for text.
  std::int64_t Integer() const;
  // The value's bits at its own width, as "%x" shows a negative number.
  std::uint64_t Bits() const;
  bool IsUnsigned() const { return std::holds_alternative<std::uint64_t>(value_); }  // by its type
  bool IsText() const { return std::holds_alternative<std::wstring_view>(value_); }  // also "(null)"

 private:
  std::variant<std::int64_t, std::uint64_t, double, std::wstring_view> value_;
  size_t size_ = sizeof(std::int64_t);
};

// The text of the format with its arguments.
VELMORA_API std::wstring FormatText(std::wstring_view format, std::span<const FormatArgument> arguments);

}  // namespace velmora

#endif  // VELMORA_TEXT_FORMAT_H_
