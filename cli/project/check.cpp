#include <algorithm>
#include <map>
#include <vector>

#include "cli/context/environment.h"
#include "cli/context/project_folder.h"
#include "cli/context/settings_lines.h"
#include "cli/project/check_names.h"
#include "cli/project/commands.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

std::string Shown(const CString& name) { return PathForDisplay(name); }

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

void CheckPrograms(const CString& folder, ProjectFindings* findings) {
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
        findings->push_back({ToUtf8(name), 0, std::string(what) + " of " + program.name + " is missing"});
      else if (!is_kind(path))
        findings->push_back(
            {ToUtf8(name), 0, std::string("is not a ") + what + ", as " + program.name + " needs it"});
    };
    for (const wchar_t* name : program.folders) need(name, IsFolder, "folder");
    for (const wchar_t* name : program.databases) need(name, IsFile, "database");
  }
  if (!any) findings->push_back({".", 0, "holds no program's folders or databases; is it a project?"});
}

void CheckNames(const CString& folder, ProjectFindings* findings) {
  std::map<std::wstring, CString> seen;
  for (const FoundFile& file : FindFiles(JoinPath(folder, L"*"))) {
    std::wstring lower(file.name.GetView());
    for (wchar_t& c : lower) c = LowerLetter(c);
    const auto [first, is_new] = seen.emplace(lower, file.name);
    if (!is_new)
      findings->push_back({Shown(file.name), 0,
                           "differs from " + Quoted(Shown(first->second)) +
                               " only in letter case; the suite's programs see one of them"});
  }
}

// A settings or code file, where the project has one.
void CheckSettings(const CString& folder, const wchar_t* name, ProjectFindings* findings) {
  const CString path = JoinPath(folder, name);
  if (!FileOrFolderExists(path)) return;
  TextLines lines;
  const std::string problem = ReadTextLines(path, &lines);
  if (!problem.empty()) {
    findings->push_back({ToUtf8(name), 0, problem});
    return;
  }
  for (const Finding& finding : CheckSettingsText(KindByName(name), lines))
    if (finding.misread) findings->push_back({ToUtf8(name), finding.line, finding.text});
}

// The folder list that a new project would get its folders from.
CString FolderList(const std::string& given) {
  if (!given.empty()) return PathFromSystem(AbsolutePath(given));
  Environment environment;
  try {
    FindEnvironment(kUsualSub, &environment);
  } catch (const Refusal&) {
    return {};  // a project can be checked without an installation
  }
  return environment.HasIni() ? environment.ini.ReadKey(L"ARKIV", L"MAPPAR").Trim() : CString();
}

}  // namespace

void ProjectCheck(const ProjectOptions& options) {
  const CString folder = ExistingProjectFolder(options.folder);
  CProjPath project;
  project.SetPath(folder);
  ProjectFindings findings;
  CheckPrograms(folder, &findings);
  CheckNames(folder, &findings);
  if (IsFolder(project.m_DbfKat)) CheckNames(project.m_DbfKat, &findings);
  for (const wchar_t* name :
       {CProjPath::TundrilCfgNamn, CProjPath::TundrilParNamn, CProjPath::StenParNamn, CProjPath::Jb23ParNamn,
        CProjPath::Kodfil, CProjPath::Miljkod, CProjPath::Linkod})
    CheckSettings(folder, name, &findings);
  CheckArea(project, &findings);
  CheckEntries(folder, &findings);
  if (const CString list = FolderList(options.folder_list); !list.IsEmpty())
    CheckFolderList(list, folder, &findings);

  OutputFile output(options.output.file);
  const OutputFormat format = options.output.Format();
  if (format == OutputFormat::kTable && findings.empty()) {
    output.Write("No findings.\n");
    output.Finish();
    return;
  }
  RecordWriter records(output, format, {{"file", "file"}, {"line", "line", true}, {"finding", "finding"}});
  for (const ProjectFinding& finding : findings)
    records.Row({finding.where, finding.line > 0 ? Cell(finding.line) : Cell(), finding.text});
  records.Finish();
  output.Finish();
  if (!findings.empty()) throw ExitWith{1};
}

}  // namespace velmora::cli
