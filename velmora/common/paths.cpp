#include "velmora/common/paths.h"

#include <algorithm>

#include "velmora/platform/files.h"

namespace velmora {

void SplitPath(const CString& path, CString* folder, CString* name) {
  CString rest = path;
  rest.Trim().Trim(L'"');
  const int cut = rest.ReverseFind(L'\\');
  if (folder != nullptr) *folder = rest.Left(std::max(cut, 0));
  if (name != nullptr) *name = rest.Mid(cut + 1);
}

CString ConvertSlashes(const CString& path, int mode) {
  std::wstring text(path.GetView());
  if (mode == 1)
    std::replace(text.begin(), text.end(), L'\\', L'/');
  else
    std::replace(text.begin(), text.end(), L'/', L'\\');
  return CString(text);
}

CString JoinPath(const CString& folder, const CString& name) {
  CString path;
  path.Format(L"%s%s%s", folder, L"\\", name);
  return path;
}

CString NameOfPath(const CString& path) {
  const std::wstring_view text = path.GetView();
  return CString(text.substr(text.find_last_of(PathSeparators()) + 1));  // the whole path without a separator
}

CString SortUpper(const CString& text) {
  std::wstring raised(text.GetView());
  for (wchar_t& c : raised)
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  return CString(raised);
}

std::string EndingOfName(std::string_view path) {
  const size_t name = path.find_last_of("/\\") + 1;
  const size_t dot = path.rfind('.');
  if (dot == std::string_view::npos || dot <= name || dot + 1 == path.size()) return {};
  std::string ending(path.substr(dot));
  for (char& c : ending)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  return ending;
}

}  // namespace velmora
