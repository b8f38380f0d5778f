#include "cli/project/check_structure.h"

#include <algorithm>
#include <map>

#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/console.h"
#include "velmora/project/proj_path.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

// The names of one program. It is in use when any of them exists, and then needs all of them.
struct Program {
  const char* name;
  const char* option;  // of project new
  std::vector<const wchar_t*> folders;
  std::vector<const wchar_t*> databases;
};

std::vector<Program> Programs() {
  return {{"the main program",
           "--tundril",
           {CProjPath::TundrilDbfKat, CProjPath::TundrilRitKat},
           {CProjPath::TundrilDbsNamn}},
          {"post-processing",
           "--mirsen",
           {CProjPath::PostDbfKat, CProjPath::PostRitKat, CProjPath::StabRitKat},
           {}},
          {"the rock and stone program",
           "--karsk",
           {CProjPath::StenDbfKat, CProjPath::StenRitKat},
           {CProjPath::StenDbsNamn}},
          {"the constructions program",
           "--harbel",
           {CProjPath::HarbelDbfKat, CProjPath::HarbelRitKat},
           {CProjPath::HarbelDbsNamn}}};
}

bool IsUsed(const Program& program, const CString& folder) {
  const auto there = [&](const wchar_t* name) { return FileOrFolderExists(JoinPath(folder, name)); };
  return std::any_of(program.folders.begin(), program.folders.end(), there) ||
         std::any_of(program.databases.begin(), program.databases.end(), there);
}

// The main program's folders are not made beside its database.
Diagnosis MissingFolder(const CString& folder, const std::string& given, const wchar_t* name,
                        const Program& program) {
  const bool refused =
      program.option == std::string("--tundril") && IsFile(JoinPath(folder, CProjPath::TundrilDbsNamn));
  return {PathForDisplay(name), 0, std::string("folder of ") + program.name + " is missing",
          std::string("the program's files there are gone, or it was never made") +
              (refused ? "; restore it, or make an empty folder of this name" : "; restore it, or make it"),
          refused ? "" : "velmora project new " + ShellArgument(given) + " " + program.option + " --yes"};
}

void CheckProgram(const Program& program, const CString& folder, const std::string& given, Diagnoses* found) {
  const auto wrong_kind = [&](const wchar_t* name, const std::string& what) {
    found->push_back({PathForDisplay(name), 0, "is not a " + what + ", as " + program.name + " needs it",
                      "the program cannot open the project; move this entry away, then restore the " + what,
                      ""});
  };
  for (const wchar_t* name : program.folders) {
    const CString path = JoinPath(folder, name);
    if (!FileOrFolderExists(path))
      found->push_back(MissingFolder(folder, given, name, program));
    else if (!IsFolder(path))
      wrong_kind(name, "folder");
  }
  for (const wchar_t* name : program.databases) {
    const CString path = JoinPath(folder, name);
    if (!FileOrFolderExists(path))
      found->push_back({PathForDisplay(name), 0, std::string("database of ") + program.name + " is missing",
                        "the project has no data in this program; restore the file, unless the program "
                        "has not been used here yet",
                        ""});
    else if (!IsFile(path))
      wrong_kind(name, "database");
  }
}

}  // namespace

bool IsProject(const CString& folder) {
  const std::vector<Program> programs = Programs();
  return std::any_of(programs.begin(), programs.end(),
                     [&](const Program& program) { return IsUsed(program, folder); });
}

void CheckPrograms(const CString& folder, const std::string& given, Diagnoses* found) {
  for (const Program& program : Programs())
    if (IsUsed(program, folder)) CheckProgram(program, folder, given, found);
  const bool listed = !FindFiles(JoinPath(folder, L"*")).empty();
  if (listed && !IsProject(folder))
    found->push_back({".", 0, "holds no program's folders or databases; is it a project?",
                      "no program opens it; name the project's own folder, or make one here",
                      "velmora project new " + ShellArgument(given) + " --tundril --yes"});
}

void CheckNames(const std::vector<FoundFile>& entries, const CString& below, Diagnoses* found) {
  std::map<std::wstring, CString> seen;
  for (const FoundFile& file : entries) {
    std::wstring lower(file.name.GetView());
    for (wchar_t& c : lower) c = LowerLetter(c);
    const auto [first, is_new] = seen.emplace(lower, file.name);
    if (!is_new)
      found->push_back({PathForDisplay(below + file.name), 0,
                        "differs from " + Quoted(PathForDisplay(first->second)) +
                            " only in letter case; the suite's programs see one of them",
                        "which one they see is left to chance; compare the two, and rename or remove one",
                        ""});
  }
}

}  // namespace velmora::cli
