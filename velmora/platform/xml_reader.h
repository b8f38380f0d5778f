// XML read once from front to back, for files of any size.
//
// No document type definition is accepted, and with it no entities but the five of XML: nothing outside the
// file is read, and nothing in it grows. Elements are at most kDeepestXml deep. UTF-8 and UTF-16; a declared
// ISO-8859-1, Windows-1252 or US-ASCII is read as Windows-1252.
#ifndef VELMORA_PLATFORM_XML_READER_H_
#define VELMORA_PLATFORM_XML_READER_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "velmora/text/codepage.h"

namespace velmora {

// Fills the buffer from the file and returns the number of bytes: 0 at the end, -1 on an error, as
// InputFile::Read.
using ByteSource = std::function<std::int64_t(std::span<char>)>;

inline constexpr int kDeepestXml = 200;

// UTF-8, names without their prefix.
struct XmlAttribute {
  std::string_view name;
  std::string_view value;
};
using XmlAttributes = std::span<const XmlAttribute>;
std::optional<std::string_view> FindAttribute(XmlAttributes attributes, std::string_view name);

// May throw.
class XmlHandler {
 public:
  virtual ~XmlHandler() = default;
  // An element begins in line `line`. Returns whether what is in it is wanted; without that nothing is
  // passed up to its end, and its end neither.
  virtual bool Start(std::string_view name, XmlAttributes attributes, std::int64_t line) = 0;
  // A piece of the text in an element.
  virtual void Text(std::string_view text) = 0;
  virtual void End(std::string_view name) = 0;
};

struct XmlProblem {
  std::int64_t line = 0;
  std::string text;
};
// Nothing when the whole file was read.
std::optional<XmlProblem> ReadXml(const ByteSource& source, XmlHandler* handler);

// A source that gives the bytes of another as UTF-8 where they are UTF-16 or an XML declaration says an
// encoding of one byte a character; the declaration then says UTF-8. For the implementations.
class XmlBytes {
 public:
  explicit XmlBytes(const ByteSource& source) : source_(source) {}
  // As ByteSource.
  std::int64_t Read(std::span<char> buffer);

 private:
  bool Fill();
  void Decode(std::string_view bytes, std::string* utf8);

  const ByteSource& source_;
  std::string block_;  // read, not given out
  size_t given_ = 0;
  bool started_ = false;
  bool failed_ = false;
  TextEncoding encoding_ = TextEncoding::kUtf8;
  bool half_ = false;  // of a character of UTF-16, which is first_byte_
  int first_byte_ = 0;
  char32_t surrogate_ = 0;  // the first of a pair
};
// The name without its prefix.
std::string_view XmlLocalName(std::string_view name);

// What both say of a file with a document type definition, of one with deeper elements, and of a cut one.
inline constexpr char kXmlHasDtd[] = "has a document type definition (<!DOCTYPE), which is not read";
inline constexpr char kXmlTooDeep[] = "has more than 200 elements inside one another";
inline constexpr char kXmlCut[] = "is not well-formed XML: it ends too early (cut or empty)";

}  // namespace velmora

#endif  // VELMORA_PLATFORM_XML_READER_H_
