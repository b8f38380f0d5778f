// The text of every interface: wide by value, narrow only where another program wants bytes.
#ifndef VELMORA_TEXT_STRING_H_
#define VELMORA_TEXT_STRING_H_

#include <array>
#include <string>
#include <string_view>

#include "velmora/export.h"
#include "velmora/text/format.h"
#include "velmora/text/text_base.h"

namespace velmora {

// Wide text. A null pointer counts as empty text wherever a const wchar_t* is taken.
//
//   CString path;
//   path.Format(L"%s%s%s", folder, L"\\", L"ROAD.VL");
class CString : public TextBase<CString, wchar_t> {
 public:
  CString() = default;  // empty text
  // A copy of a text that ends with a zero.
  CString(const wchar_t* text) : TextBase(ViewOf(text)) {}  // NOLINT(google-explicit-constructor)
  // A copy of all characters, zeros included.
  CString(std::wstring_view text) : TextBase(text) {}  // NOLINT(google-explicit-constructor)
  // A copy of `length` characters; empty for null or a negative length.
  CString(const wchar_t* text, int length)
      : TextBase(text == nullptr || length < 0 ? View() : View(text, static_cast<size_t>(length))) {}
  // `count` times the character; empty for a negative count.
  explicit CString(wchar_t c, int count = 1) { text_.assign(count < 0 ? 0 : static_cast<size_t>(count), c); }

  // Replaces the text; null makes it empty. @{
  CString& operator=(wchar_t c) { return *this = CString(c); }
  CString& operator=(const wchar_t* text) { return *this = CString(text); }
  // @}

  // As Compare, letters without regard to case, å, ä and ö too (text/letters.h).
  VELMORA_API int CompareNoCase(const wchar_t* other) const;
  // Change the letters of this text, å, ä and ö too, and return it. @{
  VELMORA_API CString& MakeUpper();
  VELMORA_API CString& MakeLower();
  // @}

  // Replaces the text by a printf-style one; see text/format.h. The old text may be among the arguments.
  template <class... Arguments>
  void Format(const wchar_t* format, const Arguments&... arguments) {
    const std::array<FormatArgument, sizeof...(Arguments)> list = {FormatArgument(Argument(arguments))...};
    text_ = FormatText(ViewOf(format), list);
  }

 private:
  static std::wstring_view Argument(const CString& text) { return text.GetView(); }
  static std::wstring_view Argument(std::wstring_view text) { return text; }
  static const wchar_t* Argument(const wchar_t* text) { return text; }
  template <class Number>
  requires std::is_arithmetic_v<Number>
  static Number Argument(Number number) { return number; }
  template <class Enumeration>
  requires std::is_enum_v<Enumeration>
  static auto Argument(Enumeration value) { return static_cast<std::underlying_type_t<Enumeration>>(value); }
};

// Narrow text in Windows-1252: the conversation with the field-data program.
class CStringA : public TextBase<CStringA, char> {
 public:
  // As the constructors of CString. @{
  CStringA() = default;
  CStringA(const char* text) : TextBase(ViewOf(text)) {}  // NOLINT(google-explicit-constructor)
  CStringA(std::string_view text) : TextBase(text) {}     // NOLINT(google-explicit-constructor)
  CStringA(const char* text, int length)
      : TextBase(text == nullptr || length < 0 ? View() : View(text, static_cast<size_t>(length))) {}
  explicit CStringA(char c, int count = 1) { text_.assign(count < 0 ? 0 : static_cast<size_t>(count), c); }
  // @}

  // As in CString, for the letters of Windows-1252. @{
  VELMORA_API int CompareNoCase(const char* other) const;
  VELMORA_API CStringA& MakeUpper();
  VELMORA_API CStringA& MakeLower();
  // @}
};

// Wide text from UTF-8 and back. What is not valid becomes U+FFFD, both ways. @{
VELMORA_API CString FromUtf8(std::string_view utf8);
VELMORA_API std::string ToUtf8(const CString& text);
// @}

// The text of a record's fixed field, also of one that a client filled to its last character.
template <size_t kSize>
std::wstring_view FieldText(const wchar_t (&field)[kSize]) {
  return {field, static_cast<size_t>(std::find(field, field + kSize, L'\0') - field)};
}

// Copies text into a record's fixed field, cut to fit and always terminated.
template <size_t kSize>
void CopyToField(wchar_t (&field)[kSize], std::wstring_view text) {
  const size_t length = std::min(text.substr(0, text.find(L'\0')).size(), kSize - 1);
  std::copy_n(text.data(), length, field);
  field[length] = L'\0';
}

}  // namespace velmora

#endif  // VELMORA_TEXT_STRING_H_
