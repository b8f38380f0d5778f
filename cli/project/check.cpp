#include <algorithm>
#include <map>
#include <vector>

#include "cli/context/environment.h"
#include "cli/context/project_folder.h"
#include "cli/context/settings_lines.h"
#include "cli/project/check_entries.h"
#include "cli/project/commands.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/area_check.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/project/folder_list.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

void Add(const CString& file, const std::string& text, FindingsByFile* findings) {
  findings->push_back({PathForDisplay(file), {{.text = text}}});
}

// The names of one program. It is in use when any of them exists, and then needs all of them.
struct Program {
  const char* name;
  std::vector<const wchar_t*> folders;
  std::vector<const wchar_t*> databases;
};

std::vector<Program> Programs() {
  return {
      {"the main program", {CProjPath::TundrilDbfKat, CProjPath::TundrilRitKat}, {CProjPath::TundrilDbsNamn}},
      {"post-processing", {CProjPath::PostDbfKat, CProjPath::PostRitKat, CProjPath::StabRitKat}, {}},
      {"the rock and stone program",
       {CProjPath::StenDbfKat, CProjPath::StenRitKat},
       {CProjPath::StenDbsNamn}},
      {"the constructions program",
       {CProjPath::HarbelDbfKat, CProjPath::HarbelRitKat},
       {CProjPath::HarbelDbsNamn}}};
}

void CheckPrograms(const CString& folder, FindingsByFile* findings) {
  bool any = false;
  for (const Program& program : Programs()) {
    const auto there = [&](const wchar_t* name) { return FileOrFolderExists(JoinPath(folder, name)); };
    const bool used = std::any_of(program.folders.begin(), program.folders.end(), there) ||
                      std::any_of(program.databases.begin(), program.databases.end(), there);
    any = any || used;
    if (!used) continue;
    const auto need = [&](const wchar_t* name, bool (*is_kind)(const CString&), const char* what) {
      const CString path = JoinPath(folder, name);
      if (!FileOrFolderExists(path))
        Add(name, std::string(what) + " of " + program.name + " is missing", findings);
      else if (!is_kind(path))
        Add(name, std::string("is not a ") + what + ", as " + program.name + " needs it", findings);
    };
    for (const wchar_t* name : program.folders) need(name, IsFolder, "folder");
    for (const wchar_t* name : program.databases) need(name, IsFile, "database");
  }
  if (!any) Add(L".", "holds no program's folders or databases; is it a project?", findings);
}

void CheckNames(const CString& folder, FindingsByFile* findings) {
  std::map<std::wstring, CString> seen;
  for (const FoundFile& file : FindFiles(JoinPath(folder, L"*"))) {
    std::wstring lower(file.name.GetView());
    for (wchar_t& c : lower) c = LowerLetter(c);
    const auto [first, is_new] = seen.emplace(lower, file.name);
    if (!is_new)
      Add(file.name,
          "differs from " + Quoted(PathForDisplay(first->second)) +
              " only in letter case; the suite's programs see one of them",
          findings);
  }
}

// A settings or code file, where the project has one.
void CheckSettings(const CString& folder, const wchar_t* name, FindingsByFile* findings) {
  const CString path = JoinPath(folder, name);
  if (!FileOrFolderExists(path)) return;
  TextLines lines;
  const std::string problem = ReadTextLines(path, &lines);
  if (!problem.empty()) {
    Add(name, problem, findings);
    return;
  }
  Findings found = CheckSettingsText(KindByName(name), lines);
  std::erase_if(found, [](const Finding& finding) { return !finding.misread; });
  findings->emplace_back(ToUtf8(name), std::move(found));
}

// The folder list that a new project would get its folders from; empty when there is none.
CString ListedFoldersFile(const std::string& given) {
  if (!given.empty()) {
    const CString list = PathFromSystem(AbsolutePath(given));
    if (!IsFile(list)) throw Refusal(At(given, "no such folder list"));
    return list;
  }
  Environment environment;
  try {
    FindEnvironment(kUsualSub, &environment);
  } catch (const Refusal&) {
    return {};  // a project can be checked without an installation
  }
  const CString list = environment.HasIni() ? environment.ini.ReadKey(L"ARKIV", L"MAPPAR").Trim() : CString();
  return IsFile(list) ? list : CString();
}

}  // namespace

void ProjectCheck(const ProjectOptions& options) {
  const CString folder = ExistingProjectFolder(options.folder);
  const CString list = ListedFoldersFile(options.folder_list);
  CProjPath project;
  project.SetPath(folder);
  FindingsByFile findings;
  CheckPrograms(folder, &findings);
  CheckNames(folder, &findings);
  if (IsFolder(project.m_DbfKat)) CheckNames(project.m_DbfKat, &findings);
  for (const wchar_t* name :
       {CProjPath::TundrilCfgNamn, CProjPath::TundrilParNamn, CProjPath::StenParNamn, CProjPath::Jb23ParNamn,
        CProjPath::Kodfil, CProjPath::Miljkod, CProjPath::Linkod})
    CheckSettings(folder, name, &findings);
  findings.emplace_back(PathForDisplay(JoinPath(CProjPath::TundrilDbfKat, CProjPath::TundrilVlNamn)),
                        CheckArea(project));
  CheckEntries(folder, &findings);
  if (!list.IsEmpty()) findings.emplace_back(PathForDisplay(list), CheckFolderList(ReadFolderList(list)));
  std::erase_if(findings, [](const auto& of_file) { return of_file.second.empty(); });

  std::vector<std::string> inputs;
  for (const auto& [file, of_file] : findings) inputs.push_back(file);
  if (!list.IsEmpty()) inputs.push_back(PathForDisplay(list));
  OutputFile output(options.output.file, inputs);
  const OutputFormat format = options.output.Format();
  if (format == OutputFormat::kTable && findings.empty()) {
    output.Write("No findings.\n");
    output.Finish();
    return;
  }
  RecordWriter records(output, format, {{"file", "file"}, {"line", "line", true}, {"finding", "finding"}});
  for (const auto& [file, of_file] : findings)
    for (const Finding& finding : of_file)
      records.Row({file, finding.line > 0 ? Cell(finding.line) : Cell(), finding.text});
  records.Finish();
  output.Finish();
  if (!findings.empty()) throw ExitWith{1};
}

}  // namespace velmora::cli
