#include "velmora/settings/field_text.h"

#include <algorithm>

#include "velmora/text/letters.h"

namespace velmora {

std::wstring_view TakeWord(std::wstring_view* rest) {
  const auto start = std::find_if_not(rest->begin(), rest->end(), IsBlank);
  const auto end = std::find_if(start, rest->end(), IsBlank);
  const std::wstring_view word(start, end);
  rest->remove_prefix(static_cast<size_t>(end - rest->begin()));
  return word;
}

void CopyToBuffer(wchar_t* buffer, int size, std::wstring_view text) {
  if (buffer == nullptr || size < 1) return;
  const size_t length = std::min(text.size(), static_cast<size_t>(size) - 1);
  std::copy_n(text.data(), length, buffer);
  buffer[length] = L'\0';
}

}  // namespace velmora
