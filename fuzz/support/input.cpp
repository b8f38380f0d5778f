#include "fuzz/support/input.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {

Input::Input(const std::uint8_t* data, size_t size) {
  constexpr std::string_view kMark = "##\n";
  const std::string_view all(reinterpret_cast<const char*>(data), size);
  const size_t mark = all.rfind(kMark);
  file_ = all.substr(0, mark);
  if (mark == std::string_view::npos) return;
  std::string_view rest = all.substr(mark + kMark.size());
  while (!rest.empty() && arguments_.size() < kMostArguments) {
    const size_t end = std::min(rest.find('\n'), rest.size());
    arguments_.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

const std::string& Input::Bytes(size_t i) const {
  static const std::string kNone;
  return i < arguments_.size() ? arguments_[i] : kNone;
}

CString Input::Text(size_t i) const {
  std::wstring text;
  AppendDecoded(Bytes(i), TextEncoding::kUtf8, &text);
  return CString(std::wstring_view(text).substr(0, text.find(L'\0')));
}

double Input::Number(size_t i) const { return ParseNumber(Text(i).GetView()).value_or(0); }

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace velmora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  velmora::fuzz::Run(velmora::fuzz::Input(data, size));
  return 0;
}
