#include "cli/doctor/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "cli/doctor/content.h"
#include "cli/output/options.h"
#include "cli/project/check_structure.h"
#include "cli/terminal/absolute_path.h"
#include "cli/terminal/completes.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"

namespace velmora::cli {
namespace {

struct DoctorOptions {
  std::vector<std::string> paths;
  OutputOptions output;
};

// The current folder or the nearest one above it that is a project; empty when none is.
std::string CurrentProject() {
  CString folder = PathFromSystem(AbsolutePath("."));
  for (bool above = false; !folder.IsEmpty(); above = true) {
    if (folder.GetAt(folder.GetLength() - 1) == L'\\') folder = folder.Left(folder.GetLength() - 1);
    if (IsProject(folder)) return above ? PathForDisplay(folder) : ".";
    const int end = folder.ReverseFind(L'\\');
    folder = folder.Left(std::max(end, 0));
  }
  return {};
}

DoctorReport Check(const std::vector<std::string>& paths) {
  DoctorReport report;
  ContentCheck content(&report);
  for (const std::string& path : paths) content.CheckGiven(path);
  if (!paths.empty()) return report;
  CheckInstallation(&content, &report);
  if (const std::string project = CurrentProject(); !project.empty()) content.CheckGiven(project);
  return report;
}

void Doctor(const DoctorOptions& options) {
  if (std::find(options.paths.begin(), options.paths.end(), "-") != options.paths.end())
    throw WrongUsage("standard input cannot be checked; give the names of files and folders");
  if (std::find(options.paths.begin(), options.paths.end(), "") != options.paths.end())
    throw WrongUsage("a name is empty; give the names of files and folders");
  (void)options.output.Format();  // refuses before the work
  const DoctorReport report = Check(options.paths);
  report.Write(options.output, options.paths);
  if (!report.IsEmpty()) throw ExitWith{1};
}

}  // namespace

void AddDoctorCommand(CLI::App* doctor) {
  const auto options = std::make_shared<DoctorOptions>();
  doctor
      ->add_option("PATH", options->paths,
                   "Projects' folders, and settings, code, alignment, area and support-point files (default: "
                   "the installation, and the project that the current folder is in)")
      ->type_name("")
      ->check(CompletesFile());
  AddOutputOptions(doctor, &options->output);
  doctor->footer(
      "Nothing is corrected. Words in capitals in a command are to be filled in. Exit status: 0 nothing "
      "found, 1 something found, 2 wrong usage.");
  doctor->callback([options] { Doctor(*options); });
}

}  // namespace velmora::cli
