#include "velmora/platform/xml_reader.h"

#include <algorithm>
#include <cstring>
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

// The bytes as a stream; lives as long as its owner.
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
    ULONG done = 0;
    while (done < size) {
      const std::int64_t read = bytes_->Read({static_cast<char*>(buffer) + done, size - done});
      failed_ = failed_ || read < 0;
      if (read <= 0) break;
      done += static_cast<ULONG>(read);
    }
    if (count != nullptr) *count = done;
    return failed_ ? E_FAIL : done < size ? S_FALSE : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
  bool Failed() const { return failed_; }

 private:
  XmlBytes* bytes_;
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
      if (type == XmlNodeType_DocumentType) return XmlProblem{Line(), kXmlHasDtd};
      if (type == XmlNodeType_Element) {
        const bool empty = reader_->IsEmptyElement() != 0;
        if (++depth_ > kDeepestXml) return XmlProblem{Line(), kXmlTooDeep};
        if (unwanted_ == 0 && !Start()) unwanted_ = depth_;
        if (empty) End();
      } else if (type == XmlNodeType_EndElement) {
        End();
      } else if (depth_ > 0 && unwanted_ == 0 &&
                 (type == XmlNodeType_Text || type == XmlNodeType_CDATA || type == XmlNodeType_Whitespace)) {
        PassText();
      }
    }
    if (result == S_FALSE) return std::nullopt;
    if (stream_->Failed()) return XmlProblem{Line(), "cannot be read on"};
    if (result == static_cast<HRESULT>(WC_E_DTDPROHIBITED)) return XmlProblem{Line(), kXmlHasDtd};
    if (result == static_cast<HRESULT>(SC_E_MAXELEMENTDEPTH)) return XmlProblem{Line(), kXmlTooDeep};
    return XmlProblem{Line(), "is not well-formed XML"};
  }

 private:
  std::int64_t Line() const {
    UINT line = 0;
    reader_->GetLineNumber(&line);
    return line;
  }

  bool Start() {
    const std::int64_t line = Line();
    const wchar_t* text = nullptr;
    UINT length = 0;
    if (FAILED(reader_->GetLocalName(&text, &length))) return false;
    names_.push_back(Utf8(text, length));
    texts_.clear();
    for (HRESULT at = reader_->MoveToFirstAttribute(); at == S_OK; at = reader_->MoveToNextAttribute()) {
      if (FAILED(reader_->GetLocalName(&text, &length))) break;
      texts_.push_back(Utf8(text, length));
      if (FAILED(reader_->GetValue(&text, &length))) length = 0;
      texts_.push_back(Utf8(text, length));
    }
    attributes_.clear();
    for (size_t i = 0; i + 1 < texts_.size(); i += 2) attributes_.push_back({texts_[i], texts_[i + 1]});
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
