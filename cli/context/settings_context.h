// Where settings and code files are looked for: an installation and, where one is named, a project.
#ifndef VELMORA_CLI_CONTEXT_SETTINGS_CONTEXT_H_
#define VELMORA_CLI_CONTEXT_SETTINGS_CONTEXT_H_

#include <string>
#include <vector>

#include "cli/context/environment.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/settings_file.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora::cli {

// The names of the settings and code files that programs look for; every call reads CProjPath's anew.
std::vector<CString> SettingsNames();

class SettingsContext {
 public:
  // `project` is its folder, empty for none. Throws a Refusal when it is not a folder.
  explicit SettingsContext(const std::string& project);
  SettingsContext(const SettingsContext&) = delete;
  SettingsContext& operator=(const SettingsContext&) = delete;

  // One that has read nothing yet.
  CTundrilInst Facade();
  CTundrilIni* Ini() { return &environment_.ini; }
  CProjPath* Project() { return has_project_ ? &project_ : nullptr; }
  bool HasInstallation() const { return environment_.found_by != FoundBy::kNothing; }

  // Where the file is looked for, in order.
  std::vector<SettingsPlace> PlacesOf(const CString& file) const {
    return SettingsPlaces(&environment_.ini, has_project_ ? &project_ : nullptr, file);
  }
  // The first that exists; throws a Refusal that says what to do when there is none.
  SettingsPlace RequirePlace(const CString& file) const;
  // The question before a file is changed that all projects without a copy of their own share; empty for a
  // project's own.
  std::string SharedQuestion(const SettingsPlace& place) const;

 private:
  Environment environment_;
  CProjPath project_;
  bool has_project_ = false;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_SETTINGS_CONTEXT_H_
