// The installation that the commands work with, found as the suite's programs find it.
#ifndef VELMORA_CLI_CONTEXT_ENVIRONMENT_H_
#define VELMORA_CLI_CONTEXT_ENVIRONMENT_H_

#include <string>
#include <vector>

#include "velmora/environment/tundril_ini.h"

namespace velmora::cli {

inline constexpr char kUsualSub[] = "sv";

enum class FoundBy { kRegistry, kVariable, kNothing };

struct Environment {
  CTundrilIni ini;
  FoundBy found_by = FoundBy::kNothing;
  // Where an installation is registered that could not be used: the user's ini file that it lacks. Empty
  // when none is registered.
  CString missing_ini;

  // Whether there is an ini file to read and write.
  bool HasIni() const;
};

// The first registered installation with the current user's ini file, else the folder that the
// environment variable TUNDRIL names, else nothing but defaults. Throws a Refusal when the registry cannot
// be read.
void FindEnvironment(const std::string& sub, Environment* environment);

// Whether there is an ini file to read and write, and why not.
enum class IniState {
  kUsable,
  kNotAtVariable,   // the folder that the variable TUNDRIL names has none
  kUnreadable,      // the user's is a folder or the like
  kNoPermission,    // its folder hides whether there is one
  kMissing,         // an installation is registered, and the user has none
  kNoInstallation,  // none is registered or named
};
// The ini file that the installation should have; empty when none is registered or named.
CString WantedIni(const Environment& environment);
IniState StateOfIni(const Environment& environment);
// Throws a Refusal without an ini file.
void RequireIni(const Environment& environment);

// The sections of Velmora.ini that the suite's programs read, and the keys of each; its name in any letter
// case.
std::vector<std::string> IniSections();
std::vector<std::string> IniKeys(const std::string& section);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_ENVIRONMENT_H_
