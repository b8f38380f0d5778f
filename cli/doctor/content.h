// Files of a project or an installation, checked by what their names say they are.
#ifndef VELMORA_CLI_DOCTOR_CONTENT_H_
#define VELMORA_CLI_DOCTOR_CONTENT_H_

#include <cstdint>
#include <set>
#include <string>

#include "cli/doctor/checks.h"
#include "cli/doctor/report.h"
#include "cli/output/progress.h"
#include "velmora/text/string.h"

namespace velmora::cli {

class ContentCheck {
 public:
  static constexpr std::uint64_t kLargestFile = std::uint64_t{64} << 20;  // bytes
  static constexpr std::uint64_t kMostRead = std::uint64_t{1} << 30;      // of all files

  explicit ContentCheck(DoctorReport* report) : report_(report) {}

  // An ordinary file; one of another kind is counted. `shown` is its path as commands name it.
  void CheckFile(const CString& path, const std::string& shown, Owner owner);
  // A project's folder with everything below it. `given` is the folder as commands name it.
  void CheckFolder(const CString& folder, const std::string& given);
  // What the user named, whether it is a file, a folder or nothing.
  void CheckGiven(const std::string& given);

 private:
  // The settings, code and area files that programs look for in a project, also where a link leads to them.
  // Returns their names in capitals.
  std::set<std::wstring> CheckFilesInUse(const CString& folder, const CString& shown);

  DoctorReport* report_;
  Progress progress_{"checking", 0, "file"};
  std::uint64_t files_ = 0;
  std::uint64_t read_ = 0;  // bytes
};

// The installation and the current user's files in it.
void CheckInstallation(ContentCheck* content, DoctorReport* report);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_CONTENT_H_
