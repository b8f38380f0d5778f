#include "velmora/platform/xml_reader.h"

#include <expat.h>

#include <exception>
#include <memory>
#include <new>
#include <vector>

namespace velmora {
namespace {

class Reader {
 public:
  Reader(XmlBytes* bytes, XmlHandler* handler) : bytes_(bytes), handler_(handler) {}

  std::optional<XmlProblem> Run() {
    std::vector<char> first(kBlock);
    std::int64_t count = bytes_->Read(first);
    parser_.reset(XML_ParserCreate(nullptr));
    if (parser_ == nullptr) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetStartDoctypeDeclHandler(parser_.get(), OnDoctype);
    SetHandlers(false);
    std::int64_t total = 0;
    for (;; count = bytes_->Read(first)) {
      if (count < 0) return XmlProblem{Line(), "cannot be read on"};
      total += count;
      const XML_Status status = XML_Parse(parser_.get(), first.data(), static_cast<int>(count), count == 0);
      if (thrown_) std::rethrow_exception(thrown_);
      if (status != XML_STATUS_OK) return Problem();
      if (count == 0) return std::nullopt;
      // A tag or a comment without an end is kept whole by the parser.
      constexpr std::int64_t kLongestTag = std::int64_t{4} << 20;
      if (total - XML_GetCurrentByteIndex(parser_.get()) > kLongestTag)
        return XmlProblem{Line(), "has a tag or a comment of more than 4 MB"};
    }
  }

 private:
  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };
  static constexpr size_t kBlock = size_t{64} << 10;

  std::int64_t Line() const { return static_cast<std::int64_t>(XML_GetCurrentLineNumber(parser_.get())); }

  XmlProblem Problem() const {
    if (problem_ != nullptr) return {Line(), problem_};
    const XML_Error error = XML_GetErrorCode(parser_.get());
    for (const XML_Error cut : {XML_ERROR_NO_ELEMENTS, XML_ERROR_UNCLOSED_TOKEN,
                                XML_ERROR_UNCLOSED_CDATA_SECTION, XML_ERROR_PARTIAL_CHAR})
      if (error == cut) return {Line(), kXmlCut};
    return {Line(), std::string("is not well-formed XML: ") + XML_ErrorString(error)};
  }

  void Stop(const char* problem) {
    problem_ = problem;
    XML_StopParser(parser_.get(), XML_FALSE);
  }

  void SetHandlers(bool skipping) {
    XML_SetElementHandler(parser_.get(), skipping ? OnSkippedStart : OnStart,
                          skipping ? OnSkippedEnd : OnEnd);
    XML_SetCharacterDataHandler(parser_.get(), skipping ? nullptr : OnText);
  }

  // Calls a handler; what it throws is thrown again outside the parser, which is not made for it.
  template <class Call>
  void Guard(Call call) {
    if (thrown_) return;
    try {
      call();
    } catch (...) {
      thrown_ = std::current_exception();
      XML_StopParser(parser_.get(), XML_FALSE);
    }
  }

  static void XMLCALL OnDoctype(void* data, const char*, const char*, const char*, int) {
    static_cast<Reader*>(data)->Stop(kXmlHasDtd);
  }
  static void XMLCALL OnStart(void* data, const char* name, const char** attributes) {
    auto* const self = static_cast<Reader*>(data);
    self->Guard([&] {
      if (++self->depth_ > kDeepestXml) self->Stop(kXmlTooDeep);
      self->attributes_.clear();
      for (; *attributes != nullptr; attributes += 2)
        self->attributes_.push_back({XmlLocalName(attributes[0]), attributes[1]});
      if (self->handler_->Start(XmlLocalName(name), self->attributes_, self->Line())) return;
      self->skipped_ = 1;
      self->SetHandlers(true);
    });
  }
  static void XMLCALL OnEnd(void* data, const char* name) {
    auto* const self = static_cast<Reader*>(data);
    --self->depth_;
    self->Guard([&] { self->handler_->End(XmlLocalName(name)); });
  }
  static void XMLCALL OnText(void* data, const char* text, int length) {
    auto* const self = static_cast<Reader*>(data);
    self->Guard([&] { self->handler_->Text({text, static_cast<size_t>(length)}); });
  }
  static void XMLCALL OnSkippedStart(void* data, const char*, const char**) {
    auto* const self = static_cast<Reader*>(data);
    if (self->depth_ + ++self->skipped_ > kDeepestXml + 1) self->Stop(kXmlTooDeep);
  }
  static void XMLCALL OnSkippedEnd(void* data, const char*) {
    auto* const self = static_cast<Reader*>(data);
    if (--self->skipped_ > 0) return;
    --self->depth_;
    self->SetHandlers(false);
  }

  XmlBytes* bytes_;
  XmlHandler* handler_;
  std::unique_ptr<XML_ParserStruct, Free> parser_;
  std::vector<XmlAttribute> attributes_;
  int depth_ = 0;
  int skipped_ = 0;  // elements open since one that is not wanted, that one included
  const char* problem_ = nullptr;
  std::exception_ptr thrown_;
};

}  // namespace

std::optional<XmlProblem> ReadXml(const ByteSource& source, XmlHandler* handler) {
  XmlBytes bytes(source);
  return Reader(&bytes, handler).Run();
}

}  // namespace velmora
