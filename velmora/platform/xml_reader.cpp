#include "velmora/platform/xml_reader.h"

#include <algorithm>

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

}  // namespace

std::optional<std::string_view> FindAttribute(XmlAttributes attributes, std::string_view name) {
  for (const XmlAttribute& attribute : attributes)
    if (attribute.name == name) return attribute.value;
  return std::nullopt;
}

std::string_view XmlLocalName(std::string_view name) { return name.substr(name.find(':') + 1); }

// False at the end and on an error.
bool XmlBytes::Fill() {
  constexpr size_t kBlock = size_t{64} << 10;
  block_.resize(kBlock);
  given_ = 0;
  const std::int64_t count = source_(block_);
  failed_ = count < 0;
  block_.resize(static_cast<size_t>(std::max<std::int64_t>(count, 0)));
  if (block_.empty()) return false;
  if (!started_) {
    const std::string_view name = DeclaredEncoding(block_);
    converts_ = IsOneByte(name);
    // In its place and as long: UTF-8" and blanks.
    constexpr std::string_view kUtf8 = "UTF-8";
    const size_t at = static_cast<size_t>(name.data() - block_.data());
    const size_t length = name.size();
    if (converts_) {
      const char quote = block_[at + length];
      block_.replace(at, length + 1, std::string(kUtf8) + quote + std::string(length - kUtf8.size(), ' '));
    }
  }
  started_ = true;
  if (!converts_) return true;
  std::string utf8;
  utf8.reserve(block_.size() + block_.size() / 8);
  for (const char byte : block_) {
    if (static_cast<signed char>(byte) >= 0)
      utf8 += byte;
    else
      AppendUtf8(static_cast<char32_t>(DecodeWindows1252(static_cast<unsigned char>(byte))), &utf8);
  }
  block_ = std::move(utf8);
  return true;
}

std::int64_t XmlBytes::Read(std::span<char> buffer) {
  if (given_ == block_.size()) {
    if (started_ && !converts_) return source_(buffer);
    if (!Fill()) return failed_ ? -1 : 0;
  }
  const size_t count = std::min(buffer.size(), block_.size() - given_);
  std::copy_n(block_.data() + given_, count, buffer.data());
  given_ += count;
  return static_cast<std::int64_t>(count);
}

}  // namespace velmora
