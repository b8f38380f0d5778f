// A project's own copies of the settings files. Nothing is shown.
#ifndef VELMORA_SETTINGS_PROJECT_COPIES_H_
#define VELMORA_SETTINGS_PROJECT_COPIES_H_

#include <vector>

#include "velmora/text/string.h"

namespace velmora {

class CProjPath;
class CTundrilIni;

struct ProjectCopy {
  const wchar_t* name;
  const wchar_t* default_content;  // the content where the installation has no such file; null: none is made
  bool replaceable;                // by the installation's, when that is asked for

  CString PathIn(const CProjPath& project) const;
};

// In the order in which they are made. CProjPath's names are read anew by every call.
std::vector<ProjectCopy> ProjectCopies();
// The rock and stone program's parameters.
ProjectCopy StoneProjectCopy();

enum class CopyDone {
  kKept,      // was there already
  kBlocked,   // a folder or the like is in its place
  kNone,      // the installation has none, and none is made
  kMade,      // with the default content
  kCopied,    // the installation's
  kReplaced,  // by the installation's
  kFailed,    // could not be written
};
CopyDone MakeProjectCopy(const CTundrilIni* ini, const CProjPath& project, const ProjectCopy& file,
                         bool overwrite);

}  // namespace velmora

#endif  // VELMORA_SETTINGS_PROJECT_COPIES_H_
