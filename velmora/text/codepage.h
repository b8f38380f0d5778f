// The encodings that text files come in, and wide text to bytes and back.
//
// Windows-1252 is what the suite's programs read and write. Its five undefined bytes (81 8D 8F 90
// 9D) are the C1 controls of the same number, so every byte survives a read and a write.
#ifndef VELMORA_TEXT_CODEPAGE_H_
#define VELMORA_TEXT_CODEPAGE_H_

#include <optional>
#include <string>
#include <string_view>

#include "velmora/export.h"

namespace velmora {

// An encoding of a text file.
enum class TextEncoding {
  kWindows1252,  // one byte a character
  kUtf8,         // one to four bytes
  kUtf16Le,      // little-endian
  kUtf16Be,      // big-endian
};

// Whether a character takes two bytes or four, and ASCII is not one byte.
constexpr bool IsUtf16(TextEncoding encoding) {
  return encoding == TextEncoding::kUtf16Le || encoding == TextEncoding::kUtf16Be;
}

// The byte-order mark of an encoding; Windows-1252 has none.
std::string_view ByteOrderMark(TextEncoding encoding);
inline constexpr size_t kLongestMark = 3;  // of the marks, in bytes
// The encoding whose mark `start` begins with; Windows-1252 without one.
TextEncoding EncodingFromMark(std::string_view start);

// The character of a byte; every byte has one.
wchar_t DecodeWindows1252(unsigned char byte);
// Its inverse. Nothing for a character that Windows-1252 does not have.
std::optional<unsigned char> EncodeWindows1252(wchar_t c);

// Appends the text of `bytes`. Nothing is dropped: in UTF-8 a byte that starts no valid sequence is
// taken as Windows-1252 (files edited by two programs mix them), in UTF-16 a lone surrogate stays.
void AppendDecoded(std::string_view bytes, TextEncoding encoding, std::wstring* text);

// Appends the bytes of `text`. False when the encoding lacks a character; *bytes is then as before.
[[nodiscard]] bool AppendEncoded(std::wstring_view text, TextEncoding encoding, std::string* bytes);

// Whether all bytes are UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsValidUtf8(std::string_view bytes);

// Strict UTF-8 for names and terminals: what does not decode or encode becomes U+FFFD. @{
std::wstring WideFromUtf8(std::string_view utf8);
std::string Utf8FromWide(std::wstring_view text);
// @}

// One character at a time, for code that walks bytes: the length of the valid UTF-8 sequence at the
// start of `bytes` (0 when there is none) and its code point.
size_t DecodeUtf8Sequence(std::string_view bytes, char32_t* code_point);
// Appends a code point up to U+10FFFF: one to four bytes.
void AppendUtf8(char32_t code_point, std::string* bytes);
// The same in wide characters: one, or two where wchar_t has 16 bits.
void AppendWide(char32_t code_point, std::wstring* text);

}  // namespace velmora

#endif  // VELMORA_TEXT_CODEPAGE_H_
