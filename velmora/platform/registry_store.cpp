#include "velmora/platform/registry_store.h"
#include "velmora/text/codepage.h"

namespace velmora {

std::string RegistryBytes(const CString& text) {
  std::string bytes;
  if (!AppendEncoded(text.GetView(), TextEncoding::kUtf16Le, &bytes)) return {};
  return bytes.append(2, '\0');
}

CString RegistryText(std::string_view bytes) {
  std::wstring text;
  AppendDecoded(bytes.substr(0, bytes.size() / 2 * 2), TextEncoding::kUtf16Le, &text);
  return CString(std::wstring_view(text).substr(0, text.find(L'\0')));
}

bool SetRegistryText(HKEY root, const CString& path, const CString& name, const CString& value) {
  const std::string bytes = RegistryBytes(value);
  RegistryKey key;
  return !bytes.empty() && key.Create(root, path, KEY_WRITE) == kRegistryDone &&
         key.Write(name, REG_SZ, bytes) == kRegistryDone;
}

}  // namespace velmora
