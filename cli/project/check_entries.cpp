#include "cli/project/check_entries.h"

#include <optional>

#include "cli/terminal/error.h"
#include "velmora/common/folder_levels.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

constexpr char kNotCopied[] = "a copy of the project to Windows fails or lacks it";

bool HasNoNameOnWindows(std::wstring_view name) {
  wchar_t before = L'\0';
  for (const wchar_t c : name) {
    // A backslash, or a byte that is not text, is a surrogate without its other half.
    const bool is_byte = c >= 0xDC00 && c <= 0xDFFF && !(before >= 0xD800 && before <= 0xDBFF);
    if (c < L' ' || is_byte) return true;
    before = c;
  }
  return name.find_first_of(L"<>:\"|?*") != std::wstring_view::npos || name.back() == L'.' ||
         name.back() == L' ';
}

// Walks the folders of a project.
class EntryCheck {
 public:
  EntryCheck(const CString& folder, Diagnoses* found, const EntryVisitor& visitor)
      : folder_(folder), found_(found), visitor_(visitor) {
    const std::optional<CString> real = RealPath(folder);
    if (!real) return;
    real_root_ = *real;
    Walk(CString(), *real);
  }

 private:
  // `below` is a folder's path below the project's, empty or with a backslash at the end.
  void Walk(const CString& below, const CString& real_folder) {
    const std::vector<FoundFile> entries = FindFiles(folder_ + L"\\" + below + L"*");
    // A folder that can be listed has at least the entries "." and "..".
    if (entries.empty()) AddUnlisted(below);
    if (visitor_.folder) visitor_.folder(below, entries);
    for (const FoundFile& file : entries) {
      if (file.name == L"." || file.name == L"..") continue;
      if (++seen_ > kMostEntries) {
        if (seen_ == kMostEntries + 1)
          Add(below + file.name,
              "is entry " + std::to_string(seen_) + "; the entries after it are not checked",
              "faults beyond it are not reported; check the folders in it one by one");
        return;
      }
      CheckName(below + file.name, file.name.GetView());
      const CString in_folder = real_folder + L"\\" + file.name;
      const std::optional<CString> real =
          file.may_be_link ? RealPath(folder_ + L"\\" + below + file.name) : in_folder;
      if (real != in_folder)
        CheckLink(below + file.name, real);
      else if (file.status.kind == FileKind::kFolder)
        Walk(below + file.name + L"\\", in_folder);
      else if (file.status.kind == FileKind::kOther)
        Add(below + file.name, "is a pipe or a device, not a file",
            "programs that open it can wait for ever; remove it");
      else if (visitor_.file)
        visitor_.file(below + file.name);
    }
  }

  void AddUnlisted(const CString& below) {
    const bool too_long = WhyNoStatus(folder_ + L"\\" + below) == NoStatus::kPathTooLong;
    Add(below.IsEmpty() ? CString(L".") : below.Left(below.GetLength() - 1),
        too_long ? "has too long a path to be listed, and nothing in it is checked"
                 : "cannot be listed, and nothing in it is checked",
        too_long ? "programs find no file in it; shorten the names above it, or move it up"
                 : "programs of this user find no file in it; give the user permission to read it");
  }

  void CheckName(const CString& path, std::wstring_view name) {
    if (NamesDevice(name))
      Add(path, "is the name of a device on Windows, whose programs cannot open it; rename it", kNotCopied);
    else if (HasNoNameOnWindows(name))
      Add(path, "is not a valid file name on Windows; rename it", kNotCopied);
  }

  void CheckLink(const CString& path, const std::optional<CString>& real) {
    if (!real) {
      Add(path, "is a broken link",
          "what it led to is gone or not mounted, or it leads to itself; restore its target or remove it");
    } else if (!(*real + L"\\").GetView().starts_with((real_root_ + L"\\").GetView())) {
      Add(path,
          "is a link that leads out of the project, to " +
              Quoted(PathForDisplay(real->IsEmpty() ? CString(L"\\") : *real)),
          "a copy or an archive of the project lacks its target, and a change here changes that; replace it "
          "by a copy of its target");
    }
  }

  void Add(const CString& path, const std::string& finding, const std::string& meaning) {
    found_->push_back({PathForDisplay(path), 0, finding, meaning, ""});
  }

  CString folder_;
  CString real_root_;
  Diagnoses* found_;
  const EntryVisitor& visitor_;
  size_t seen_ = 0;
};

}  // namespace

void CheckEntries(const CString& folder, Diagnoses* found, const EntryVisitor& visitor) {
  EntryCheck(folder, found, visitor);
}

}  // namespace velmora::cli
