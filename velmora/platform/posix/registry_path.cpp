#include "velmora/platform/posix/registry_path.h"

#include <algorithm>

#include "velmora/platform/registry_store.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr size_t kDeepest = 512;
constexpr std::wstring_view kSharedName = L"Software";
constexpr std::wstring_view kView32Name = L"Wow6432Node";

std::int64_t RootNumber(HKEY root) {
  const HKEY roots[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS,
                        HKEY_CURRENT_CONFIG};
  const auto* found = std::find(std::begin(roots), std::end(roots), root);
  return found == std::end(roots) ? 0 : std::begin(roots) - found - 1;
}

// Inserts the 32-bit view's key below HKEY_LOCAL_MACHINE\Software.
void ChooseView(unsigned access, std::vector<std::wstring>* parts) {
  if (parts->empty() || !EqualNoCase(parts->front(), kSharedName)) return;
  if (parts->size() > 1 && EqualNoCase((*parts)[1], kView32Name)) return;
  if ((access & unsigned{KEY_WOW64_64KEY}) == 0) parts->emplace(parts->begin() + 1, kView32Name);
}

}  // namespace

bool IsRegistryName(std::wstring_view name, size_t longest) {
  std::string ignored;
  return name.size() <= longest && name.find(L'\0') == std::wstring_view::npos &&
         AppendEncoded(name, TextEncoding::kUtf8, &ignored);
}

std::string FoldedRegistryName(std::wstring_view name) {
  std::wstring folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), LowerLetter);
  return Utf8FromWide(folded);
}

int ParseRegistryPath(HKEY root, std::wstring_view path, unsigned access, RegistryPath* parsed) {
  parsed->root = RootNumber(root);
  parsed->parts.clear();
  if (parsed->root == 0) return kRegistryBadRoot;
  if (path.starts_with(L'\\')) return kRegistryBadPath;
  while (!path.empty()) {
    const size_t end = std::min(path.find(L'\\'), path.size());
    if (end > 0) {
      const std::wstring_view part = path.substr(0, end);
      if (!IsRegistryName(part, kLongestKeyName) || parsed->parts.size() == kDeepest)
        return kRegistryBadArgument;
      parsed->parts.emplace_back(part);
    }
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  if (root == HKEY_LOCAL_MACHINE) ChooseView(access, &parsed->parts);
  return kRegistryDone;
}

}  // namespace velmora
