#include "velmora/environment/user_folders.h"

#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

constexpr wchar_t kSuiteFolder[] = L"Quorval\\Zennik\\Velmora";
constexpr std::wstring_view kMaker = L"\\Quorval\\Zennik\\";
constexpr std::wstring_view kFormerMaker = L"\\Brovald\\Zennik\\";
constexpr int kLongestListedName = 259;

}  // namespace

CString UserFolder(const CString& data_folder, const CString& release, const CString& sub) {
  return JoinPath(JoinPath(JoinPath(data_folder, kSuiteFolder), release), sub);
}

CString SharedFolder(const CString& data_folder, const CString& sub) {
  return JoinPath(JoinPath(data_folder, kSuiteFolder), sub);
}

IniPathParts SplitIniPath(const CString& ini_path) {
  const CString folder = ini_path.Left(ini_path.ReverseFind(L'\\'));
  const CString sub = folder.Right(2);
  const CString above = folder.Left(folder.GetLength() - 3);  // without the backslash before `sub`
  return {sub, above.Right(3)};
}

CString FormerMakerPath(const CString& path) {
  std::wstring text(path.GetView());
  const size_t at = text.rfind(kMaker);
  if (at == std::wstring::npos) return {};
  text.replace(at, kMaker.size(), kFormerMaker);
  return CString(text);
}

std::vector<CString> FilesIn(const CString& folder) {
  if (folder.IsEmpty() || folder.GetLength() >= kLongestFolder) return {};
  std::vector<CString> names;
  for (const FoundFile& file : FindFiles(JoinPath(folder, L"*.*")))
    if (file.status.kind != FileKind::kFolder && file.name.GetLength() <= kLongestListedName)
      names.push_back(file.name);
  return names;
}

}  // namespace velmora
