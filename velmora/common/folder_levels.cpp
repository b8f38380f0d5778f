#include "velmora/common/folder_levels.h"

#include <algorithm>
#include <string_view>

#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr std::wstring_view kSeparators = L"\\/";
// Accepted by every system.
constexpr size_t kLongestName = 259;

size_t FindFrom(std::wstring_view path, wchar_t c, size_t start) {
  return std::min(path.find(c, start), path.size());
}

// "..", also with further points and blanks, which Windows ignores.
bool GoesUp(std::wstring_view part) {
  return part.find_first_not_of(L". ") == std::wstring_view::npos &&
         std::count(part.begin(), part.end(), L'.') >= 2;
}

// Device names of Windows, with any extension.
bool IsDeviceName(std::wstring_view part) {
  std::wstring_view name = part.substr(0, part.find(L'.'));
  while (!name.empty() && name.back() == L' ') name.remove_suffix(1);
  for (const std::wstring_view device : {L"CON", L"PRN", L"AUX", L"NUL", L"CLOCK$", L"CONIN$", L"CONOUT$"})
    if (EqualNoCase(name, device)) return true;
  constexpr std::wstring_view kPortNumbers = L"0123456789\u00B9\u00B2\u00B3";
  return name.size() == 4 && kPortNumbers.find(name.back()) != std::wstring_view::npos &&
         (EqualNoCase(name.substr(0, 3), L"COM") || EqualNoCase(name.substr(0, 3), L"LPT"));
}

// Whether `is` holds for a part of the path.
template <class Kind>
bool HasPart(std::wstring_view path, Kind is) {
  for (size_t start = 0; start <= path.size();) {
    const size_t end = std::min(path.find_first_of(kSeparators, start), path.size());
    if (is(path.substr(start, end - start))) return true;
    start = end + 1;
  }
  return false;
}

}  // namespace

size_t RootLength(std::wstring_view path) {
  if (path.starts_with(L"\\\\")) {  // server and share
    const size_t share = FindFrom(path, L'\\', 2);
    return FindFrom(path, L'\\', share + 1);
  }
  return path.starts_with(L'\\') ? 1 : 3;
}

bool HasOrMakesFolder(const CString& path) {
  // Checked again, because another program may create the same folder at this moment.
  return FileOrFolderExists(path) || MakeFolder(path) || FileOrFolderExists(path);
}

std::optional<CString> MakeFolderLevels(const CString& path) {
  const std::wstring_view text = path.GetView();
  const size_t root = std::min(RootLength(text), text.size());
  for (size_t start = root;;) {
    const size_t end = FindFrom(text, L'\\', start);
    const std::wstring_view part = text.substr(start, end - start);
    // Empty parts and "." are skipped; there may be thousands.
    const bool passed_over = (part.empty() || part == L".") && start > root && end < text.size();
    if (!passed_over && !HasOrMakesFolder(text.substr(0, end))) return text.substr(0, end);
    if (end == text.size()) return std::nullopt;
    start = end + 1;
  }
}

bool StaysInsideFolder(std::wstring_view name) {
  constexpr std::wstring_view kNeverInNames(L":\0", 2);
  if (name.empty() || name.size() > kLongestName ||
      kSeparators.find(name.front()) != std::wstring_view::npos ||
      name.find_first_of(kNeverInNames) != std::wstring_view::npos)
    return false;
  return !HasPart(name, GoesUp) && !HasPart(name, IsDeviceName);
}

bool NamesDevice(std::wstring_view path) { return HasPart(path, IsDeviceName); }

}  // namespace velmora
