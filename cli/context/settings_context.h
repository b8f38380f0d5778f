// Where settings and code files are looked for: an installation and, where one is named, a project.
#ifndef VELMORA_CLI_CONTEXT_SETTINGS_CONTEXT_H_
#define VELMORA_CLI_CONTEXT_SETTINGS_CONTEXT_H_

#include <string>
#include <vector>

#include "cli/context/environment.h"
#include "velmora/project/proj_path.h"
#include "velmora/settings/tundril_inst.h"

namespace velmora::cli {

struct Place {
  const char* name;  // "project copy"
  CString path;
  bool exists = false;
};

class SettingsContext {
 public:
  // `project` is its folder, empty for none. Throws a Refusal when it is no folder.
  explicit SettingsContext(const std::string& project);
  SettingsContext(const SettingsContext&) = delete;
  SettingsContext& operator=(const SettingsContext&) = delete;

  // What is read from disk anew.
  CTundrilInst Facade();
  CTundrilIni* Ini() { return &environment_.ini; }
  CProjPath* Project() { return has_project_ ? &project_ : nullptr; }
  bool HasInstallation() const { return environment_.found_by != FoundBy::kNothing; }

  // Where the file is looked for, first come first taken. TUNDRIL.CFG is the installation's only.
  std::vector<Place> PlacesOf(const CString& file) const;
  // The first that exists; throws a Refusal that says what to do when there is none.
  Place RequirePlace(const CString& file) const;

 private:
  Environment environment_;
  CProjPath project_;
  bool has_project_ = false;
};

// The first that exists; null when there is none.
const Place* PlaceInUse(const std::vector<Place>& places);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_SETTINGS_CONTEXT_H_
