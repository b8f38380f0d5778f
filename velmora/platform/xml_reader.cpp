#include "velmora/platform/xml_reader.h"

#include <algorithm>
#include <utility>

#include "velmora/text/codepage.h"

namespace velmora {
namespace {

// The encoding's name in the XML declaration at the start of `bytes`; empty without one.
std::string_view DeclaredEncoding(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return {};
  bytes = bytes.substr(0, bytes.find("?>"));
  size_t at = bytes.find("encoding");
  if (at == std::string_view::npos) return {};
  at = bytes.find_first_of("\"'", at);
  if (at == std::string_view::npos) return {};
  const size_t end = bytes.find(bytes[at], at + 1);
  return end == std::string_view::npos ? std::string_view() : bytes.substr(at + 1, end - at - 1);
}

bool IsOneByte(std::string_view name) {
  std::string encoding(name);
  for (char& c : encoding)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  for (const char* known :
       {"windows-1252", "cp1252", "iso-8859-1", "iso8859-1", "latin1", "latin-1", "us-ascii", "ascii"})
    if (encoding == known) return true;
  return false;
}

// Of a file that starts so; kUtf8 also where a reader is to judge a declared encoding.
TextEncoding EncodingOf(std::string_view start) {
  using namespace std::string_view_literals;
  if (start.starts_with("\xFF\xFE") || start.starts_with("<\0"sv)) return TextEncoding::kUtf16Le;
  if (start.starts_with("\xFE\xFF") || start.starts_with("\0<"sv)) return TextEncoding::kUtf16Be;
  return IsOneByte(DeclaredEncoding(start)) ? TextEncoding::kWindows1252 : TextEncoding::kUtf8;
}

}  // namespace

std::optional<std::string_view> FindAttribute(XmlAttributes attributes, std::string_view name) {
  for (const XmlAttribute& attribute : attributes)
    if (attribute.name == name) return attribute.value;
  return std::nullopt;
}

std::string_view XmlLocalName(std::string_view name) { return name.substr(name.find(':') + 1); }

void XmlBytes::Decode(std::string_view bytes, std::string* utf8) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (encoding_ == TextEncoding::kWindows1252) {
      AppendUtf8(static_cast<char32_t>(DecodeWindows1252(byte)), utf8);
    } else if (!std::exchange(half_, !half_)) {
      first_byte_ = byte;
    } else {
      const bool little = encoding_ == TextEncoding::kUtf16Le;
      const char32_t unit = static_cast<char32_t>(little ? first_byte_ | byte << 8 : first_byte_ << 8 | byte);
      const bool pairs = surrogate_ != 0 && unit >= 0xDC00 && unit < 0xE000;
      // One that is alone makes UTF-8 that no reader accepts.
      if (surrogate_ != 0 && !pairs) AppendUtf8(surrogate_, utf8);
      const char32_t character = pairs ? 0x10000 + ((surrogate_ - 0xD800) << 10) + (unit - 0xDC00) : unit;
      surrogate_ = unit >= 0xD800 && unit < 0xDC00 ? unit : 0;
      if (surrogate_ == 0) AppendUtf8(character, utf8);
    }
  }
}

// False at the end and on an error.
bool XmlBytes::Fill() {
  constexpr size_t kBlock = size_t{64} << 10;
  block_.resize(kBlock);
  given_ = 0;
  const std::int64_t count = source_(block_);
  failed_ = count < 0;
  block_.resize(static_cast<size_t>(std::max<std::int64_t>(count, 0)));
  if (block_.empty()) return false;
  const bool first = !std::exchange(started_, true);
  if (first) encoding_ = EncodingOf(block_);
  if (encoding_ == TextEncoding::kUtf8) return true;
  const std::string bytes = std::move(block_);
  block_.clear();
  Decode(bytes, &block_);
  if (first && block_.starts_with("\xEF\xBB\xBF")) block_.erase(0, 3);
  const std::string_view name = first ? DeclaredEncoding(block_) : std::string_view();
  if (!name.empty()) block_.replace(static_cast<size_t>(name.data() - block_.data()), name.size(), "UTF-8");
  return true;
}

std::int64_t XmlBytes::Read(std::span<char> buffer) {
  while (given_ == block_.size()) {
    if (started_ && encoding_ == TextEncoding::kUtf8) return source_(buffer);
    if (!Fill()) return failed_ ? -1 : 0;
  }
  const size_t count = std::min(buffer.size(), block_.size() - given_);
  std::copy_n(block_.data() + given_, count, buffer.data());
  given_ += count;
  return static_cast<std::int64_t>(count);
}

}  // namespace velmora
