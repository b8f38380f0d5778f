#include "cli/doctor/content.h"

#include <optional>

#include "cli/context/project_folder.h"
#include "cli/context/settings_context.h"
#include "cli/doctor/checks.h"
#include "cli/project/check_entries.h"
#include "cli/project/check_structure.h"
#include "velmora/common/paths.h"
#include "velmora/platform/console.h"
#include "velmora/platform/whole_file.h"
#include "velmora/project/proj_path.h"

namespace velmora::cli {
namespace {

enum class ContentKind { kSettings, kAlignment, kArea, kSupportPoints };

// Whether the programs see another file, whose name is spelled as they spell it.
bool IsHidden(const CString& path, const CString& usual) {
  if (NameOfPath(path) == usual) return false;
  CString folder;
  SplitPath(path, &folder, nullptr);
  const CString other = JoinPath(folder, usual);
  return FileOrFolderExists(other) && !IsSameFile(path, other);
}

// Nothing for a file that is not checked. Other programs have files of the same endings, so that only the
// suite's own names are settings.
std::optional<ContentKind> KindOf(const CString& path) {
  const CString name = NameOfPath(path);
  for (const CString& known : SettingsNames())
    if (name.CompareNoCase(known) == 0)
      return IsHidden(path, known) ? std::nullopt : std::optional(ContentKind::kSettings);
  if (name.Left(5).CompareNoCase(L"STAMP") == 0 && name.Right(4).CompareNoCase(L".DAT") == 0)
    return ContentKind::kSettings;
  if (name.CompareNoCase(CProjPath::TundrilVlNamn) == 0) return ContentKind::kArea;
  if (name.CompareNoCase(CProjPath::StenVlNamn) == 0) return std::nullopt;
  if (name.Right(3).CompareNoCase(L".VL") == 0) return ContentKind::kAlignment;
  if (name.Right(4).CompareNoCase(L".STP") == 0) return ContentKind::kSupportPoints;
  return std::nullopt;
}

std::string Megabytes(std::uint64_t bytes) { return std::to_string(bytes >> 20) + " MB"; }

// `path` in the folder that the user named.
std::string ShownIn(const CString& given, const std::string& path) {
  if (path == ".") return PathForDisplay(given);
  return PathForDisplay(JoinPath(given, PathFromSystem(path)));
}

// A file that the user named.
Diagnosis Unchecked(const CString& path, const std::string& given) {
  const CString end = NameOfPath(path).Right(4);
  const bool settings =
      end.CompareNoCase(L".PAR") == 0 || end.CompareNoCase(L".CFG") == 0 || end.CompareNoCase(L".DAT") == 0;
  return {given, 0, "does not have the name of a settings, code, alignment, area or support-point file",
          settings ? "nothing was checked in it; the command checks settings or codes under another name"
                   : "nothing was checked in it",
          settings ? "velmora codes check " + ShellArgument(given) + " --kind KIND" : ""};
}

// `name` below `folder` in the disk's letter case.
CString AsOnDisk(const CString& folder, const CString& name) {
  CString above;
  SplitPath(name, &above, nullptr);
  const std::vector<FoundFile> found = FindFiles(JoinPath(folder, name));
  const CString last = found.empty() ? NameOfPath(name) : found.front().name;
  return above.IsEmpty() ? last : JoinPath(AsOnDisk(folder, above), last);
}

}  // namespace

void ContentCheck::CheckFile(const CString& path, const std::string& shown, Owner owner) {
  progress_.Update(0, ++files_);
  const std::optional<ContentKind> kind = KindOf(path);
  if (!kind) {
    report_->CountSkipped();
    return;
  }
  report_->CountChecked();
  const std::optional<FileStatus> status = GetFileStatus(path);
  const std::uint64_t size = status ? status->size : 0;
  if (size > kLargestFile || size > kMostRead - read_) {
    if (size > kLargestFile)
      report_->Add({shown, 0,
                    "is larger than " + Megabytes(kLargestFile) + ", and its content is not checked",
                    "such a file has some thousand lines; look whether it is the right one", ""});
    else
      report_->Add({shown, 0,
                    "its content is not checked, as " + Megabytes(read_) + " of other files were read before",
                    "faults in it are not reported; check it by itself",
                    "velmora doctor " + ShellArgument(shown)});
    return;
  }
  read_ += size;
  std::string bytes;
  if (const std::string problem = ReadWholeFile(path, &bytes); !problem.empty()) {
    report_->Add({shown, 0, problem, "programs of this user cannot read it either", ""});
    return;
  }
  if (std::optional<Diagnosis> found = CheckEncoding(shown, bytes)) report_->Add(*std::move(found));
  switch (*kind) {
    case ContentKind::kAlignment:
      DiagnoseAlignment(std::move(bytes), shown, report_);
      return;
    case ContentKind::kSupportPoints:
      DiagnoseSupportPoints(std::move(bytes), shown, report_);
      return;
    case ContentKind::kArea:
      DiagnoseArea(path, shown, report_);
      return;
    case ContentKind::kSettings:
      break;
  }
  TextLines lines;
  if (const std::string problem = ReadTextLines(path, &lines); !problem.empty())
    report_->Add({shown, 0, problem, "programs read only its start, or nothing of it; restore the file", ""});
  else
    DiagnoseSettings(KindByName(NameOfPath(path)), lines, shown, owner, report_);
}

std::set<std::wstring> ContentCheck::CheckFilesInUse(const CString& folder, const CString& shown) {
  std::vector<CString> names = SettingsNames();
  names.push_back(JoinPath(CProjPath::TundrilDbfKat, CProjPath::TundrilVlNamn));
  std::set<std::wstring> in_use;
  for (CString& name : names) {
    const CString path = JoinPath(folder, name);
    if (!FileOrFolderExists(path)) continue;
    const std::string file = PathForDisplay(JoinPath(shown, AsOnDisk(folder, name)));
    TextLines none;
    if (IsFile(path))
      CheckFile(path, file, Owner::kFolder);
    else
      report_->Add({file, 0, ReadTextLines(path, &none), "programs do without the file; restore it", ""});
    in_use.emplace(name.MakeUpper().GetView());
  }
  return in_use;
}

void ContentCheck::CheckFolder(const CString& folder, const std::string& given) {
  CString shown = PathFromSystem(given);
  while (shown.GetLength() > 1 && shown.GetAt(shown.GetLength() - 1) == L'\\')
    shown = shown.Left(shown.GetLength() - 1);
  Diagnoses found;
  const auto report = [&] {
    for (Diagnosis& each : found) each.file = ShownIn(shown, each.file);
    report_->AddOfFolder(std::move(found));
    found.clear();
  };
  CheckPrograms(folder, given, &found);
  report();
  const std::set<std::wstring> in_use = CheckFilesInUse(folder, shown);
  EntryVisitor visitor;
  visitor.folder = [&](const CString& below, const std::vector<FoundFile>& entries) {
    report();
    CheckNames(entries, below, &found);
  };
  visitor.file = [&](const CString& path) {
    if (CString upper = path; in_use.contains(std::wstring(upper.MakeUpper().GetView()))) return;
    CheckFile(JoinPath(folder, path), ShownIn(shown, PathForDisplay(path)), Owner::kFolder);
  };
  CheckEntries(folder, &found, visitor);
  report();
}

void ContentCheck::CheckGiven(const std::string& given) {
  const CString path = ProjectFolder(given);
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (!status)
    report_->Add({given, 0, WhyNotFound(path, "no such file or folder; check the name"),
                  "nothing was checked there", ""});
  else if (status->kind == FileKind::kOther)
    report_->Add({given, 0, "is a pipe or a device, not a file", "nothing was checked there", ""});
  else if (status->kind == FileKind::kFolder)
    CheckFolder(path, given);
  else {
    CheckFile(path, given, Owner::kFolder);
    if (!KindOf(path)) report_->Add(Unchecked(path, given));
  }
}

}  // namespace velmora::cli
