#include "fuzz/support/input.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {

Input::Input(const std::uint8_t* data, size_t size) {
  const std::string_view all(reinterpret_cast<const char*>(data), size);
  const size_t mark = all.rfind("##\n");
  file_ = all.substr(0, mark);
  std::istringstream rest(mark == std::string_view::npos ? "" : std::string(all.substr(mark + 3)));
  for (std::string line; arguments_.size() < kMostArguments && std::getline(rest, line);)
    arguments_.push_back(line);
}

const std::string& Input::Bytes(size_t i) const {
  static const std::string kNone;
  return i < arguments_.size() ? arguments_[i] : kNone;
}

CString Input::Text(size_t i) const {
  std::wstring text;
  AppendDecoded(Bytes(i), TextEncoding::kUtf8, &text);
  return CString(text.c_str());
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
