#include "cli/project/check_entries.h"

#include <optional>

#include "cli/terminal/error.h"
#include "velmora/common/folder_levels.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

bool HasNoNameOnWindows(std::wstring_view name) {
  for (const wchar_t c : name)
    if (c < L' ') return true;
  return name.find_first_of(L"<>:\"|?*\xDC5C") != std::wstring_view::npos || name.back() == L'.' ||
         name.back() == L' ';
}

// Walks the folders of a project.
class EntryCheck {
 public:
  EntryCheck(const CString& folder, FindingsByFile* findings) : folder_(folder), findings_(findings) {
    const std::optional<CString> real = RealPath(folder);
    if (!real) return;
    real_root_ = *real;
    Walk(CString(), *real);
  }

 private:
  // `below` is a folder's path below the project's, empty or with a backslash at the end.
  void Walk(const CString& below, const CString& real_folder) {
    for (const FoundFile& file : FindFiles(folder_ + L"\\" + below + L"*")) {
      if (file.name == L"." || file.name == L"..") continue;
      if (++seen_ > kMostEntries) {
        if (seen_ == kMostEntries + 1)
          Add(below + file.name,
              "is entry " + std::to_string(seen_) + "; the entries after it are not checked");
        return;
      }
      CheckName(below + file.name, file.name.GetView());
      const std::optional<CString> real = RealPath(folder_ + L"\\" + below + file.name);
      // An entry that is not a link has its real path in the folder.
      const bool is_link = real != real_folder + L"\\" + file.name;
      if (is_link)
        CheckLink(below + file.name, real);
      else if (file.status.kind == FileKind::kFolder)
        Walk(below + file.name + L"\\", *real);
      else if (file.status.kind == FileKind::kOther)
        Add(below + file.name, "is a pipe or a device, not a file");
    }
  }

  void CheckName(const CString& path, std::wstring_view name) {
    if (NamesDevice(name))
      Add(path, "is the name of a device on Windows, whose programs cannot open it; rename it");
    else if (HasNoNameOnWindows(name))
      Add(path, "is not a valid file name on Windows; rename it");
  }

  void CheckLink(const CString& path, const std::optional<CString>& real) {
    if (!real) {
      Add(path, "is a broken link");
    } else if (!(*real + L"\\").GetView().starts_with((real_root_ + L"\\").GetView())) {
      Add(path, "is a link that leads out of the project, to " + Quoted(PathForDisplay(*real)));
    }
  }

  void Add(const CString& path, const std::string& text) {
    findings_->push_back({PathForDisplay(path), {{.text = text}}});
  }

  CString folder_;
  CString real_root_;
  FindingsByFile* findings_;
  size_t seen_ = 0;
};

}  // namespace

void CheckEntries(const CString& folder, FindingsByFile* findings) { EntryCheck(folder, findings); }

}  // namespace velmora::cli
