#include <algorithm>

#include "cli/context/environment.h"
#include "cli/context/registry_error.h"
#include "cli/context/settings_context.h"
#include "cli/doctor/checks.h"
#include "cli/doctor/content.h"
#include "cli/env/sample_installation.h"
#include "cli/project/check_structure.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/environment/installation.h"
#include "velmora/environment/user_data.h"
#include "velmora/environment/user_folders.h"
#include "velmora/platform/console.h"
#include "velmora/platform/registry_store.h"
#include "velmora/platform/whole_file.h"
#include "velmora/project/folder_list.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/settings_file.h"

namespace velmora::cli {
namespace {

// Makes what is missing of an installation with this program folder; empty when another program made it.
std::string InstallCommand(const CString& program) {
  const CString folder = SampleFolderOf(program);
  if (folder.IsEmpty()) return "";
  return "velmora env install --to " + ShellArgument(PathForDisplay(folder)) + " --registered-data";
}

std::string InstallAnew() {
  const bool registered = !RegisteredUserData().IsEmpty() || !RegisteredCommonData().IsEmpty();
  return std::string("velmora env install --to DIR") + (registered ? " --registered-data" : "");
}

// The installation that is registered for the usual sub-key; empty when none is.
CString RegisteredProgram() { return FirstInstallationFolder(FromUtf8(kUsualSub)).value_or(CString()); }

void CheckIni(const Environment& environment, DoctorReport* report) {
  const std::string missing = PathForDisplay(environment.missing_ini);
  constexpr char kDefaults[] = "no setting of the installation applies, only those built in";
  switch (StateOfIni(environment)) {
    case IniState::kUsable:
      return;
    case IniState::kNotAtVariable:
      report->Add({PathForDisplay(environment.ini.m_programDir), 0,
                   "the variable TUNDRIL names this folder, and it has no Velmora.ini",
                   std::string(kDefaults) + "; point TUNDRIL at an installation, or make one",
                   InstallAnew()});
      return;
    case IniState::kUnreadable:
      report->Add({missing, 0, "is not a readable file",
                   std::string(kDefaults) + "; move it away and restore the user's ini file", ""});
      return;
    case IniState::kNoPermission:
      report->Add({PathForDisplay(WantedIni(environment)), 0, WhyNotFound(WantedIni(environment), ""),
                   kDefaults, ""});
      return;
    case IniState::kMissing: {
      const std::string command = InstallCommand(RegisteredProgram());
      report->Add(
          {missing, 0, "the current user's ini file is missing",
           std::string(kDefaults) + (command.empty() ? "; restore it, or start Lindqvar as this user" : ""),
           command});
      return;
    }
    case IniState::kNoInstallation:
      report->Add({"installation", 0, "none is registered, and the variable TUNDRIL names none",
                   std::string(kDefaults) + "; register the suite's own, or make one", InstallAnew()});
      return;
  }
}

void CheckProgramFolder(const Environment& environment, DoctorReport* report) {
  const CString& program = environment.ini.m_programDir;
  if (environment.found_by != FoundBy::kRegistry || IsFolder(program)) return;
  if (WhyNoStatus(program) == NoStatus::kNoPermission) {
    report->Add({PathForDisplay(program), 0, WhyNotFound(program, ""),
                 "it is registered as the program folder, and the suite's programs do not start", ""});
    return;
  }
  const std::string command = InstallCommand(program);
  report->Add({PathForDisplay(program), 0, "is registered as the program folder, and there is no such folder",
               command.empty() ? "the suite's programs do not start; velmora env setup names the registry's "
                                 "key, whose value InstallPath is the folder"
                               : "the suite's programs do not start; the command makes the folder again",
               command});
}

// Whether the file is a copy of one that all users share; it is then reported with them where it is missing.
bool IsShared(const UserFilePlan& plan, const CString& path) {
  return std::any_of(plan.files.begin(), plan.files.end(),
                     [&](const UserFile& file) { return file.destination.CompareNoCase(path) == 0; });
}

// Files that all users share, and the user's copies of them.
void CheckSharedFiles(const UserFilePlan& plan, DoctorReport* report) {
  for (const UserFile& file : plan.files) {
    const auto add = [&](const char* finding, const char* meaning, const char* command) {
      report->Add({PathForDisplay(file.destination), 0, finding, meaning, command});
    };
    if (file.state == UserFileState::kMissing)
      add("is missing; all users share such a file", "programs do without it", "velmora env sync");
    else if (file.state == UserFileState::kNewer)
      add("is older than the file that all users share", "programs use the older values", "velmora env sync");
    else if (file.state == UserFileState::kUnreadable)
      add("the file that all users share cannot be examined", "it is not brought up to date here", "");
  }
}

// The settings and code files in use, and the title blocks beside them.
void CheckFiles(const Environment& environment, const UserFilePlan& plan, ContentCheck* content,
                DoctorReport* report) {
  for (const CString& name : SettingsNames()) {
    const std::vector<SettingsPlace> places = SettingsPlaces(&environment.ini, nullptr, name);
    if (const SettingsPlace* place = PlaceInUse(places)) {
      TextLines none;
      if (IsFile(place->path))
        content->CheckFile(place->path, PathForDisplay(place->path), Owner::kInstallation);
      else
        report->Add(
            {PathForDisplay(place->path), 0, ReadTextLines(place->path, &none),
             "programs use built-in values; the command copies the file again once this is moved away",
             "velmora env sync"});
    } else if (!places.empty() && name != CProjPath::StenParNamn && !IsShared(plan, places.front().path)) {
      report->Add({PathForDisplay(places.front().path), 0, "is missing, and so is one that all users share",
                   "programs use built-in values; copy it here from another installation", ""});
    }
  }
  const CString& folder = environment.ini.m_cfgDir;
  for (const FoundFile& file : FindFiles(JoinPath(folder, L"STAMP*.DAT")))
    if (file.status.kind == FileKind::kFile)
      content->CheckFile(JoinPath(folder, file.name), PathForDisplay(JoinPath(folder, file.name)),
                         Owner::kInstallation);
  Diagnoses found;
  CheckNames(FindFiles(JoinPath(folder, L"*")), folder + L"\\", &found);
  report->AddOfFolder(std::move(found));
}

void CheckIniContent(const Environment& environment, const UserFilePlan& plan, DoctorReport* report) {
  const CString& ini = environment.ini.m_iniPath;
  const std::string shown = PathForDisplay(ini);
  const std::optional<FileStatus> status = GetFileStatus(ini);
  std::string bytes;
  std::string problem = status && status->size > ContentCheck::kLargestFile ? "is too large for an ini file"
                                                                            : ReadWholeFile(ini, &bytes);
  if (!problem.empty()) {
    report->Add({shown, 0, problem, "programs read no setting from it; restore the file", ""});
    return;
  }
  report->CountChecked();
  if (std::optional<Diagnosis> found = CheckEncoding(shown, bytes)) report->Add(*std::move(found));
  const CString list = environment.ini.ReadKey(L"ARKIV", L"MAPPAR").Trim();
  if (list.IsEmpty()) return;
  const std::string list_shown = PathForDisplay(list);
  if (!FileOrFolderExists(list) && IsShared(plan, list)) return;
  if (!IsFile(list)) {
    report->Add({shown, 0,
                 "MAPPAR of section ARKIV names a folder list that is missing: " + Quoted(list_shown),
                 "new projects are made without their usual folders; restore the list, or name another",
                 "velmora env set ARKIV MAPPAR FILE"});
    return;
  }
  report->CountChecked();
  report->AddAll(list_shown, CheckFolderList(ReadFolderList(list)), "", [&](const Finding& finding) {
    return Diagnosis{list_shown, finding.line, finding.text,
                     "new projects are made without this folder; correct the line in an editor", ""};
  });
}

}  // namespace

void CheckInstallation(ContentCheck* content, DoctorReport* report) {
  if (const std::string problem = RegistryProblem(); !problem.empty()) {
    const std::string file = RegistryFile();
    report->Add({file.empty() ? "registry" : file, 0, problem,
                 "no installation is found, and only the built-in settings apply", ""});
    return;
  }
  Environment environment;
  FindEnvironment(kUsualSub, &environment);
  CheckIni(environment, report);
  CheckProgramFolder(environment, report);
  if (!environment.HasIni()) return;
  UserFilePlan plan;
  if (environment.found_by == FoundBy::kRegistry) plan = PlanUserFileCheck(environment.ini);
  CheckIniContent(environment, plan, report);
  CheckSharedFiles(plan, report);
  CheckFiles(environment, plan, content, report);
}

}  // namespace velmora::cli
