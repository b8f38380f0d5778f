#include <vector>

#include "cli/context/environment.h"
#include "cli/context/project_folder.h"
#include "cli/context/settings_context.h"
#include "cli/context/settings_lines.h"
#include "cli/project/check_entries.h"
#include "cli/project/check_structure.h"
#include "cli/project/commands.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/area_file.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/project/folder_list.h"

namespace velmora::cli {
namespace {

void Add(const std::string& file, const Findings& findings, Diagnoses* found) {
  for (const Finding& finding : findings) found->push_back({file, finding.line, finding.text, "", ""});
}

// A settings or code file, where the project has one.
void CheckSettings(const CString& folder, const CString& name, Diagnoses* found) {
  const CString path = JoinPath(folder, name);
  if (!FileOrFolderExists(path)) return;
  TextLines lines;
  const std::string problem = ReadTextLines(path, &lines);
  const std::string file = PathForDisplay(name);
  Add(file, problem.empty() ? MisreadLines(KindByName(name), lines) : Findings{{.text = problem}}, found);
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
  Diagnoses found;
  CheckPrograms(folder, options.folder, &found);
  CheckNames(FindFiles(JoinPath(folder, L"*")), CString(), &found);
  if (IsFolder(project.m_DbfKat)) CheckNames(FindFiles(JoinPath(project.m_DbfKat, L"*")), CString(), &found);
  for (const CString& name : SettingsNames()) CheckSettings(folder, name, &found);
  Add(PathForDisplay(JoinPath(CProjPath::TundrilDbfKat, CProjPath::TundrilVlNamn)), CheckArea(project),
      &found);
  CheckEntries(folder, &found);
  if (!list.IsEmpty()) Add(PathForDisplay(list), CheckFolderList(ReadFolderList(list)), &found);

  std::vector<std::string> inputs;
  for (const Diagnosis& each : found) inputs.push_back(each.file);
  if (!list.IsEmpty()) inputs.push_back(PathForDisplay(list));
  OutputFile output(options.output.file, inputs);
  const OutputFormat format = options.output.Format();
  if (format == OutputFormat::kTable && found.empty()) {
    output.Write("No findings.\n");
    output.Finish();
    return;
  }
  RecordWriter records(output, format, {{"file", "file"}, {"line", "line", true}, {"finding", "finding"}});
  for (const Diagnosis& each : found)
    records.Row({each.file, each.line > 0 ? Cell(each.line) : Cell(), each.finding});
  records.Finish();
  output.Finish();
  if (!found.empty()) throw ExitWith{1};
}

}  // namespace velmora::cli
