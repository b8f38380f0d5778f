#include "velmora/exchange/dxf_groups.h"

#include <algorithm>

#include "velmora/exchange/dxf_text.h"
#include "velmora/text/codepage.h"
#include "velmora/text/quoted.h"

namespace velmora::exchange {
namespace {

constexpr size_t kBufferSize = 64 << 10;
constexpr size_t kLongestLine = 64 << 10;  // no release writes more than some thousand characters

}  // namespace

DxfGroups::DxfGroups(const std::function<std::int64_t(std::span<char>)>& read)
    : read_(read), buffer_(kBufferSize, '\0') {}

bool DxfGroups::Fail(std::string text) {
  error_ = std::move(text);
  return false;
}

bool DxfGroups::Fill() {
  const std::int64_t count = read_(buffer_);
  if (count < 0) return Fail("cannot be read to its end");
  start_ = 0;
  end_ = static_cast<size_t>(count);
  if (begun_ || count == 0) return count > 0;
  begun_ = true;
  const std::string_view bytes = std::string_view(buffer_).substr(0, end_);
  if (bytes.starts_with("AutoCAD Binary DXF")) return Fail("is a binary DXF file; save it as ASCII DXF");
  if (bytes.starts_with("AC10")) return Fail("is a DWG file; save it as ASCII DXF");
  start_ = ByteOrderMark(EncodingFromMark(bytes)).size();
  return true;
}

bool DxfGroups::ReadLine(std::string* line) {
  line->clear();
  for (bool any = false;; any = true) {
    if (start_ == end_ && !Fill()) {
      line_ += any ? 1 : 0;
      return any && error_.empty();
    }
    const std::string_view rest = std::string_view(buffer_).substr(start_, end_ - start_);
    const size_t length = std::min(rest.find('\n'), rest.size());
    line->append(rest.substr(0, length));
    start_ += std::min(length + 1, rest.size());
    if (line->size() > kLongestLine)
      return Fail("line " + std::to_string(line_ + 1) + " is too long for DXF");
    if (length == rest.size()) continue;
    if (line->ends_with('\r')) line->pop_back();
    ++line_;
    return true;
  }
}

bool DxfGroups::Next(DxfGroup* group) {
  if (!error_.empty() || !ReadLine(&code_)) return false;
  const auto code = ParseDxfInteger(code_);
  if (!code)
    return Fail("line " + std::to_string(line_) + ": " + Quoted(code_) + " is not a group code of DXF");
  if (!ReadLine(&value_)) {
    if (!error_.empty()) return false;
    return Fail("line " + std::to_string(line_) + ": the file ends within a group");
  }
  *group = {*code, value_, line_};
  return true;
}

}  // namespace velmora::exchange
