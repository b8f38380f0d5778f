#include "velmora/exchange/dxf_groups.h"

#include <algorithm>

#include "velmora/exchange/dxf_text.h"
#include "velmora/text/codepage.h"
#include "velmora/text/quoted.h"

namespace velmora::exchange {
namespace {

constexpr size_t kLongestLine = 64 << 10;  // no release writes more than some thousand characters

}  // namespace

bool DxfGroups::Fail(std::int64_t line, std::string text) {
  error_ = {line, std::move(text)};
  return false;
}

bool DxfGroups::Fill() {
  const std::int64_t count = source_(buffer_);
  if (count < 0) return Fail(0, "cannot be read to its end");
  start_ = 0;
  end_ = static_cast<size_t>(count);
  return count > 0;
}

bool DxfGroups::ReadLine(std::string* line) {
  line->clear();
  for (bool any = false;; any = true) {
    if (start_ == end_ && !Fill()) {
      line_ += any ? 1 : 0;
      return any && error_.text.empty();
    }
    const std::string_view rest = std::string_view(buffer_).substr(start_, end_ - start_);
    const size_t length = std::min(rest.find('\n'), rest.size());
    line->append(rest.substr(0, length));
    start_ += std::min(length + 1, rest.size());
    if (line->size() > kLongestLine) return Fail(line_ + 1, "this line is too long for DXF");
    if (length == rest.size()) continue;
    if (line->ends_with('\r')) line->pop_back();
    ++line_;
    return true;
  }
}

bool DxfGroups::Next(DxfGroup* group) {
  if (!error_.text.empty() || !ReadLine(&code_)) return false;
  if (line_ == 1) {
    if (code_.starts_with("AutoCAD Binary DXF")) return Fail(0, "is a binary DXF file; save it as ASCII DXF");
    if (code_.starts_with("AC10")) return Fail(0, "is a DWG file; save it as ASCII DXF");
    code_.erase(0, ByteOrderMark(EncodingFromMark(code_)).size());
  }
  const auto code = ParseDxfInteger(code_);
  if (!code) return Fail(line_, Quoted(code_) + " is not a group code of DXF");
  if (!ReadLine(&value_)) {
    if (!error_.text.empty()) return false;
    return Fail(line_, "the file ends within a group: it is incomplete");
  }
  *group = {*code, value_, line_};
  return true;
}

}  // namespace velmora::exchange
