#include "velmora/text/codepage.h"

#include <array>
#include <cstdint>

#include "velmora/text/words.h"

namespace velmora {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Bytes 80 to 9F; the undefined five stand for themselves.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }
constexpr bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }
constexpr char32_t JoinSurrogates(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// The code point at text[*at], which moves past it. A lone surrogate is returned as it is.
char32_t NextCodePoint(std::wstring_view text, size_t* at) {
  const auto c = static_cast<char32_t>(text[(*at)++]);
  if (IsHighSurrogate(c) && *at < text.size() && IsLowSurrogate(static_cast<char32_t>(text[*at])))
    return JoinSurrogates(c, static_cast<char32_t>(text[(*at)++]));
  return c;
}

void AppendUtf16Unit(char32_t unit, bool little, std::string* bytes) {
  const char low = static_cast<char>(unit & 0xFF);
  const char high = static_cast<char>((unit >> 8) & 0xFF);
  bytes->push_back(little ? low : high);
  bytes->push_back(little ? high : low);
}

void DecodeUtf16(std::string_view bytes, bool little, std::wstring* text) {
  size_t i = 0;
  const auto unit_at = [&](size_t at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char32_t>(little ? first | (second << 8) : second | (first << 8));
  };
  while (i + 1 < bytes.size()) {
    const char32_t unit = unit_at(i);
    i += 2;
    if (IsHighSurrogate(unit) && i + 1 < bytes.size() && IsLowSurrogate(unit_at(i))) {
      AppendWide(JoinSurrogates(unit, unit_at(i)), text);
      i += 2;
    } else {
      text->push_back(static_cast<wchar_t>(unit));
    }
  }
  if (i < bytes.size()) text->push_back(DecodeWindows1252(static_cast<unsigned char>(bytes[i])));
}

}  // namespace

std::string_view ByteOrderMark(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::kUtf8:
      return "\xEF\xBB\xBF";
    case TextEncoding::kUtf16Le:
      return "\xFF\xFE";
    case TextEncoding::kUtf16Be:
      return "\xFE\xFF";
    case TextEncoding::kWindows1252:
      break;
  }
  return {};
}

TextEncoding EncodingFromMark(std::string_view start) {
  for (const TextEncoding encoding : {TextEncoding::kUtf8, TextEncoding::kUtf16Le, TextEncoding::kUtf16Be})
    if (start.substr(0, ByteOrderMark(encoding).size()) == ByteOrderMark(encoding)) return encoding;
  return TextEncoding::kWindows1252;
}

wchar_t DecodeWindows1252(unsigned char byte) {
  if (byte >= 0x80 && byte <= 0x9F) return static_cast<wchar_t>(kHighControls[byte - 0x80U]);
  return static_cast<wchar_t>(byte);
}

std::optional<unsigned char> EncodeWindows1252(wchar_t c) {
  const auto code = static_cast<char32_t>(c);
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<unsigned char>(code);
  for (size_t i = 0; i < kHighControls.size(); ++i)
    if (kHighControls[i] == code) return static_cast<unsigned char>(0x80 + i);
  return std::nullopt;
}

void AppendDecoded(std::string_view bytes, TextEncoding encoding, std::wstring* text) {
  switch (encoding) {
    case TextEncoding::kUtf16Le:
    case TextEncoding::kUtf16Be:
      DecodeUtf16(bytes, encoding == TextEncoding::kUtf16Le, text);
      return;
    case TextEncoding::kUtf8:
      while (!bytes.empty()) {
        char32_t code_point = 0;
        const size_t length = DecodeUtf8Sequence(bytes, &code_point);
        if (length == 0) {
          text->push_back(DecodeWindows1252(static_cast<unsigned char>(bytes.front())));
          bytes.remove_prefix(1);
        } else {
          AppendWide(code_point, text);
          bytes.remove_prefix(length);
        }
      }
      return;
    case TextEncoding::kWindows1252:
      text->reserve(text->size() + bytes.size());
      for (const char byte : bytes) text->push_back(DecodeWindows1252(static_cast<unsigned char>(byte)));
      return;
  }
}

bool AppendEncoded(std::wstring_view text, TextEncoding encoding, std::string* bytes) {
  const size_t before = bytes->size();
  for (size_t i = 0; i < text.size();) {
    if (encoding == TextEncoding::kWindows1252) {
      const std::optional<unsigned char> byte = EncodeWindows1252(text[i++]);
      if (!byte) {
        bytes->resize(before);
        return false;
      }
      bytes->push_back(static_cast<char>(*byte));
      continue;
    }
    const char32_t c = NextCodePoint(text, &i);
    if (encoding == TextEncoding::kUtf8) {
      if (IsSurrogate(c) || c > 0x10FFFF) {
        bytes->resize(before);
        return false;
      }
      AppendUtf8(c, bytes);
      continue;
    }
    const bool little = encoding == TextEncoding::kUtf16Le;
    if (c > 0x10FFFF) {
      bytes->resize(before);
      return false;
    }
    if (c >= 0x10000) {
      AppendUtf16Unit(0xD800 + ((c - 0x10000) >> 10), little, bytes);
      AppendUtf16Unit(0xDC00 + ((c - 0x10000) & 0x3FF), little, bytes);
    } else {
      AppendUtf16Unit(c, little, bytes);
    }
  }
  return true;
}

size_t DecodeUtf8Sequence(std::string_view bytes, char32_t* code_point) {
  if (bytes.empty()) return 0;
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (lead < 0x80) {
    *code_point = lead;
    return 1;
  }
  size_t length = 0;
  char32_t smallest = 0;
  char32_t value = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2, smallest = 0x80, value = lead & 0x1FU;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3, smallest = 0x800, value = lead & 0x0FU;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4, smallest = 0x10000, value = lead & 0x07U;
  }
  if (length == 0 || bytes.size() < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(bytes[i]);
    if ((next & 0xC0) != 0x80) return 0;
    value = (value << 6) | (next & 0x3FU);
  }
  if (value < smallest || value > 0x10FFFF || IsSurrogate(value)) return 0;
  *code_point = value;
  return length;
}

void AppendUtf8(char32_t c, std::string* bytes) {
  const auto put = [&](char32_t byte) { bytes->push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | (c >> 18));
    put(0x80 | ((c >> 12) & 0x3F));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

void AppendWide(char32_t c, std::wstring* text) {
  if (sizeof(wchar_t) == 2 && c >= 0x10000) {
    text->push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
    text->push_back(static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
  } else {
    text->push_back(static_cast<wchar_t>(c));
  }
}

bool IsValidUtf8(std::string_view bytes) {
  constexpr std::uint64_t kTopBits = 0x8080808080808080U;
  char32_t ignored = 0;
  while (!bytes.empty()) {
    if (bytes.size() >= words::kSize && (words::Load(bytes.data()) & kTopBits) == 0) {
      bytes.remove_prefix(words::kSize);
      continue;
    }
    const size_t length = DecodeUtf8Sequence(bytes, &ignored);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::wstring WideFromUtf8(std::string_view utf8) {
  std::wstring text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    char32_t c = kReplacement;
    const size_t length = DecodeUtf8Sequence(utf8, &c);
    AppendWide(length == 0 ? kReplacement : c, &text);
    utf8.remove_prefix(length == 0 ? 1 : length);
  }
  return text;
}

std::string Utf8FromWide(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const char32_t c = NextCodePoint(text, &i);
    AppendUtf8(IsSurrogate(c) || c > 0x10FFFF ? kReplacement : c, &bytes);
  }
  return bytes;
}

}  // namespace velmora
