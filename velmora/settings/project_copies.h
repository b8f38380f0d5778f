// The settings files that a project can have copies of.
#ifndef VELMORA_SETTINGS_PROJECT_COPIES_H_
#define VELMORA_SETTINGS_PROJECT_COPIES_H_

#include <vector>

namespace velmora {

struct ProjectCopy {
  const wchar_t* name;
  const wchar_t* default_content;  // the content where the installation has no such file; null: none is made
  bool replaceable;          // by the installation's, when that is asked for
};

// In the order in which they are made. CProjPath's names are read anew by every call.
std::vector<ProjectCopy> ProjectCopies();
// The rock and stone program's parameters.
ProjectCopy StoneProjectCopy();

}  // namespace velmora

#endif  // VELMORA_SETTINGS_PROJECT_COPIES_H_
