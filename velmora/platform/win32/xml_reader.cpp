#include "velmora/platform/xml_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "velmora/platform/types.h"
#include "velmora/text/codepage.h"

#include <objidl.h>
#include <xmllite.h>

namespace velmora {
namespace {

constexpr GUID kIXmlReader = {0x7279fc81, 0x709d, 0x4095, {0xb6, 0x3d, 0x69, 0xfe, 0x4b, 0x0d, 0x90, 0x30}};
constexpr GUID kIUnknown = {0, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID kISequentialStream = {
    0x0c733a30, 0x2a1c, 0x11ce, {0xad, 0xe5, 0x00, 0xaa, 0x00, 0x44, 0x77, 0x3d}};

// Loaded on first use, from the system's folder: not every compiler has a library to link it by.
struct XmlLite {
  HRESULT(WINAPI* create_reader)(const GUID&, void**, IMalloc*) = nullptr;

  XmlLite() {
    wchar_t path[MAX_PATH + 16];
    const UINT length = GetSystemDirectoryW(path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return;
    std::copy_n(L"\\xmllite.dll", 13, path + length);
    const HMODULE module = LoadLibraryW(path);
    if (module == nullptr) return;
    const FARPROC found = GetProcAddress(module, "CreateXmlReader");
    static_assert(sizeof found == sizeof create_reader);
    std::memcpy(&create_reader, &found, sizeof found);
  }
};

// UTF-8 of the characters that XML has, byte by byte.
class Utf8Check {
 public:
  // False for a byte that cannot follow those before it.
  bool Take(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (more_ > 0) {
      const bool good = byte >= low_ && byte <= high_;
      low_ = 0x80;
      high_ = 0xBF;
      --more_;
      return good;
    }
    if (byte < 0x80) return byte >= ' ' || byte == '\t' || byte == '\n' || byte == '\r';
    more_ = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
    low_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
    high_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
    return byte >= 0xC2 && byte <= 0xF4;
  }

 private:
  int more_ = 0;              // bytes to come of the character
  unsigned char low_ = 0x80;  // the range of the next one
  unsigned char high_ = 0xBF;
};

// The bytes as a stream; lives as long as its owner. They are given out a line at a time, so that Line() is
// the line that the reader has come to, and end before one that XML in UTF-8 cannot have. A blank is added:
// Wine's reader ends the program where nothing follows an XML declaration.
class ByteStream final : public ISequentialStream {
 public:
  explicit ByteStream(XmlBytes* bytes) : bytes_(bytes) {}
  virtual ~ByteStream() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = IsEqualGUID(id, kIUnknown) || IsEqualGUID(id, kISequentialStream);
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* count) override {
    if (given_ == block_.size() && !ended_) Fill();
    const std::string_view rest = std::string_view(block_).substr(given_);
    if (!rest.empty()) line_ += std::exchange(line_ended_, false) ? 1 : 0;
    const size_t line_end = rest.find('\n');
    const size_t length =
        std::min({rest.size(), size_t{size}, line_end == rest.npos ? line_end : line_end + 1});
    std::copy_n(rest.data(), length, static_cast<char*>(buffer));
    given_ += length;
    line_ended_ = line_end < length;
    if (count != nullptr) *count = static_cast<ULONG>(length);
    return failed_ ? E_FAIL : length == 0 && size > 0 ? S_FALSE : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
  bool Failed() const { return failed_; }
  std::int64_t Line() const { return line_; }
  // Everything was given out, and it ends before a byte that is not valid.
  bool IsInvalid() const { return is_invalid_ && given_ == block_.size(); }

 private:
  void Fill() {
    block_.resize(kBlock);
    given_ = 0;
    size_t size = 0;
    while (size < kBlock && !ended_) {
      const std::int64_t count = bytes_->Read(std::span(block_).subspan(size));
      failed_ = count < 0;
      ended_ = count <= 0;
      size += static_cast<size_t>(std::max<std::int64_t>(count, 0));
    }
    block_.resize(size);
    if (failed_) return block_.clear();
    const auto invalid = std::find_if(block_.begin(), block_.end(), [&](char c) { return !check_.Take(c); });
    is_invalid_ = invalid != block_.end();
    block_.erase(invalid, block_.end());
    ended_ = ended_ || is_invalid_;
    if (ended_) block_ += ' ';
  }
  static constexpr size_t kBlock = size_t{64} << 10;

  XmlBytes* bytes_;
  Utf8Check check_;
  std::string block_;  // read, not given out
  size_t given_ = 0;
  std::int64_t line_ = 1;
  bool line_ended_ = false;
  bool ended_ = false;
  bool is_invalid_ = false;
  bool failed_ = false;
};

template <class Interface>
class Owned {
 public:
  ~Owned() {
    if (object_ != nullptr) object_->Release();
  }
  Owned() = default;
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  Interface** Out() { return &object_; }
  Interface* operator->() const { return object_; }
  Interface* Get() const { return object_; }

 private:
  Interface* object_ = nullptr;
};

std::string Utf8(const wchar_t* text, UINT length) { return Utf8FromWide({text, length}); }

class Reader {
 public:
  Reader(IXmlReader* reader, ByteStream* stream, XmlHandler* handler)
      : reader_(reader), stream_(stream), handler_(handler) {}

  std::optional<XmlProblem> Run() {
    XmlNodeType type = XmlNodeType_None;
    HRESULT result;
    while ((result = reader_->Read(&type)) == S_OK) {
      if (!Advanced(type)) break;
      if (type == XmlNodeType_DocumentType) return XmlProblem{Line(), kXmlHasDtd};
      if (type == XmlNodeType_Element) {
        has_root_ = true;
        const bool empty = reader_->IsEmptyElement() != 0;
        if (++depth_ > kDeepestXml) return XmlProblem{Line(), kXmlTooDeep};
        const std::int64_t line = Line();
        if (!ReadAttributes()) return XmlProblem{line, "is not well-formed XML: duplicate attribute"};
        if (unwanted_ == 0 && !Start(line)) unwanted_ = depth_;
        if (empty) End();
      } else if (type == XmlNodeType_EndElement) {
        End();
      } else if (depth_ > 0 && unwanted_ == 0 &&
                 (type == XmlNodeType_Text || type == XmlNodeType_CDATA || type == XmlNodeType_Whitespace)) {
        PassText();
      }
    }
    const bool whole = !stream_->Failed() && !stream_->IsInvalid();
    if (result == S_FALSE && has_root_ && depth_ == 0 && whole) return std::nullopt;
    return XmlProblem{ProblemLine(), Problem(result)};
  }

 private:
  std::int64_t Line() const {
    UINT line = 0;
    reader_->GetLineNumber(&line);
    return line;
  }

  using Position = std::pair<UINT, UINT>;  // line and column
  Position At() const {
    Position at;
    reader_->GetLineNumber(&at.first);
    reader_->GetLinePosition(&at.second);
    return at;
  }

  // False when the reader gives the same node again, as Wine's does without end where a file is cut.
  bool Advanced(XmlNodeType type) {
    const Position at = At();
    furthest_ = std::max(furthest_, at);
    return std::exchange(node_, {type, at}) != node_;
  }

  // Where the reader failed; Wine's then still stands at the element before or around.
  std::int64_t ProblemLine() const {
    const Position at = At();
    return at > furthest_ ? at.first : stream_->Line();
  }

  const char* Problem(HRESULT result) const {
    if (stream_->Failed()) return "cannot be read on";
    if (stream_->IsInvalid()) return "is not well-formed XML: a byte that UTF-8 or XML does not have";
    if (result == S_OK || result == S_FALSE || result == static_cast<HRESULT>(MX_E_INPUTEND)) return kXmlCut;
    if (result == static_cast<HRESULT>(WC_E_DTDPROHIBITED)) return kXmlHasDtd;
    if (result == static_cast<HRESULT>(SC_E_MAXELEMENTDEPTH)) return kXmlTooDeep;
    return "is not well-formed XML";
  }

  // False when an attribute is given twice, which not every version of the reader refuses.
  bool ReadAttributes() {
    texts_.clear();
    attributes_.clear();
    UINT count = 0;
    reader_->GetAttributeCount(&count);
    if (unwanted_ != 0 && count < 2) return true;
    const wchar_t* text = nullptr;
    UINT length = 0;
    for (HRESULT at = reader_->MoveToFirstAttribute(); at == S_OK; at = reader_->MoveToNextAttribute()) {
      if (FAILED(reader_->GetQualifiedName(&text, &length))) break;
      texts_.push_back(Utf8(text, length));
      if (FAILED(reader_->GetValue(&text, &length))) length = 0;
      texts_.push_back(Utf8(text, length));
    }
    reader_->MoveToElement();
    std::vector<std::string_view> names;
    for (size_t i = 0; i + 1 < texts_.size(); i += 2) {
      names.push_back(texts_[i]);
      attributes_.push_back({XmlLocalName(texts_[i]), texts_[i + 1]});
    }
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) == names.end();
  }

  bool Start(std::int64_t line) {
    const wchar_t* text = nullptr;
    UINT length = 0;
    if (FAILED(reader_->GetLocalName(&text, &length))) return false;
    names_.push_back(Utf8(text, length));
    return handler_->Start(names_.back(), attributes_, line);
  }

  void End() {
    if (unwanted_ == 0) handler_->End(names_.back());
    if (unwanted_ == 0 || unwanted_ == depth_) names_.pop_back();
    if (unwanted_ == depth_) unwanted_ = 0;
    --depth_;
  }

  void PassText() {
    std::vector<wchar_t> chunk(4096);
    UINT length = 0;
    while (SUCCEEDED(reader_->ReadValueChunk(chunk.data(), static_cast<UINT>(chunk.size()), &length)) &&
           length > 0)
      handler_->Text(Utf8(chunk.data(), length));
  }

  IXmlReader* reader_;
  ByteStream* stream_;
  XmlHandler* handler_;
  std::vector<std::string> names_;  // of the elements that are open and were passed on
  std::vector<std::string> texts_;
  std::vector<XmlAttribute> attributes_;
  std::pair<XmlNodeType, Position> node_;  // the one read last
  Position furthest_;
  bool has_root_ = false;
  int depth_ = 0;
  int unwanted_ = 0;  // depth of an element whose content is not wanted
};

}  // namespace

std::optional<XmlProblem> ReadXml(const ByteSource& source, XmlHandler* handler) {
  static const XmlLite lite;
  const XmlProblem unavailable{0, "cannot be read: the system's XML reader (xmllite.dll) is missing"};
  if (lite.create_reader == nullptr) return unavailable;
  XmlBytes bytes(source);
  ByteStream stream(&bytes);
  Owned<IXmlReader> reader;
  if (FAILED(lite.create_reader(kIXmlReader, reinterpret_cast<void**>(reader.Out()), nullptr)) ||
      FAILED(reader->SetProperty(XmlReaderProperty_DtdProcessing, DtdProcessing_Prohibit)) ||
      FAILED(reader->SetInput(&stream)))
    return unavailable;
  return Reader(reader.Get(), &stream, handler).Run();
}

}  // namespace velmora
