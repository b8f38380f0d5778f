#include "velmora/settings/key_value_format.h"

namespace velmora {

KeyValueLine ParseKeyValueLine(std::wstring_view line) {
  const size_t equals = line.find(L'=');
  if (equals == std::wstring_view::npos || equals == 0) return {};
  KeyValueLine parsed;
  parsed.key = line.substr(0, equals);
  parsed.value = line.substr(equals + 1);
  const bool fits = equals < kKeyRoom && line.size() - equals < kValueRoom;
  parsed.kind = fits ? KeyValueLine::Kind::kRecord : KeyValueLine::Kind::kBlank;
  return parsed;
}

CString FormatKeyValueLine(std::wstring_view key, std::wstring_view value) {
  CString line;
  line.Format(L"%s=%s\n", key, value);
  return line;
}

}  // namespace velmora
