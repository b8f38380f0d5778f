#include "cli/project/check_names.h"

#include <optional>

#include "cli/terminal/error.h"
#include "velmora/common/folder_levels.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"

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
  EntryCheck(const CString& folder, ProjectFindings* findings) : folder_(folder), findings_(findings) {
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
    findings_->push_back({PathForDisplay(path), 0, text});
  }

  CString folder_;
  CString real_root_;
  ProjectFindings* findings_;
  size_t seen_ = 0;
};

}  // namespace

void CheckEntries(const CString& folder, ProjectFindings* findings) { EntryCheck(folder, findings); }

void CheckArea(const CProjPath& project, ProjectFindings* findings) {
  if (!IsFile(project.m_VlPath)) return;
  const std::string where = PathForDisplay(NameOfPath(project.m_DbfKat) + L"\\" + CProjPath::TundrilVlNamn);
  TextReader reader;
  int stars = 0;
  std::int64_t number = 0;
  CString line;
  const bool open = reader.Open(project.m_VlPath);
  while (open && stars < 2 && reader.ReadLine(&line)) {
    ++number;
    if (line.GetAt(0) == L'*') ++stars;
  }
  ++number;
  if (!open || stars < 2 || !reader.ReadLine(&line) || line.IsEmpty()) {
    findings->push_back({where, number, "names no alignment after its second \"*\" line"});
    return;
  }
  const std::string alignment = "the alignment " + Quoted(ToUtf8(line));
  if (NamesDevice(line.GetView()))
    findings->push_back(
        {where, number, alignment + " has the name of a device, which Windows does not read as a file"});
  else if (!StaysInsideFolder(line.GetView()) || !MayBeMadeIn(project.m_DbfKat, line.GetView()))
    findings->push_back({where, number, alignment + " leads out of the project"});
  else if (!IsFile(JoinPath(project.m_DbfKat, line)))
    findings->push_back({where, number, alignment + " is missing"});
}

void CheckFolderList(const CString& list, const CString& folder, ProjectFindings* findings) {
  TextReader reader;
  if (!IsFile(list) || !reader.Open(list)) return;
  const std::string where = PathForDisplay(list);
  CString line;
  int listed = 0;
  int refused = 0;
  std::int64_t number = 1;
  for (; reader.ReadLine(&line) && refused < kMostRefusedFolders; ++number) {
    if (line.IsEmpty()) continue;
    const std::string quoted = "the folder " + Quoted(ToUtf8(line));
    if (++listed > kMostListedFolders) {
      findings->push_back({where, number, quoted + " and what follows are not read; is it a folder list?"});
      return;
    }
    if (MayBeMadeIn(folder, line.GetView())) continue;
    ++refused;
    findings->push_back(
        {where, number, quoted + " is not made: it leads out of the project or is not a valid folder name"});
  }
  if (reader.Failed())
    findings->push_back({where, number, "cannot be read from here on; is it a folder list?"});
}

}  // namespace velmora::cli
