#include "velmora/text/string.h"

#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

std::wstring WidenAnsi(std::string_view text) {
  std::wstring wide;
  AppendDecoded(text, TextEncoding::kWindows1252, &wide);
  return wide;
}

// A letter whose other case Windows-1252 lacks stays as it is.
template <class Change>
void ChangeCase(std::string* text, Change change) {
  for (char& c : *text) {
    const auto changed = EncodeWindows1252(change(DecodeWindows1252(static_cast<unsigned char>(c))));
    if (changed) c = static_cast<char>(*changed);
  }
}

}  // namespace

int CString::CompareNoCase(const wchar_t* other) const {
  return velmora::CompareNoCase(GetView(), ViewOf(other));
}

CString& CString::MakeUpper() {
  for (wchar_t& c : text_) c = UpperLetter(c);
  return *this;
}

CString& CString::MakeLower() {
  for (wchar_t& c : text_) c = LowerLetter(c);
  return *this;
}

int CStringA::CompareNoCase(const char* other) const {
  return velmora::CompareNoCase(WidenAnsi(GetView()), WidenAnsi(ViewOf(other)));
}

CStringA& CStringA::MakeUpper() {
  ChangeCase(&text_, UpperLetter);
  return *this;
}

CStringA& CStringA::MakeLower() {
  ChangeCase(&text_, LowerLetter);
  return *this;
}

CString FromUtf8(std::string_view utf8) { return CString(WideFromUtf8(utf8)); }
std::string ToUtf8(const CString& text) { return Utf8FromWide(text.GetView()); }

}  // namespace velmora
