// The settings files that a project can have copies of.
#ifndef VELMORA_SETTINGS_PROJECT_COPIES_H_
#define VELMORA_SETTINGS_PROJECT_COPIES_H_

#include <vector>

namespace velmora {

struct LocalFile {
  const wchar_t* name;
  const wchar_t* otherwise;  // the content where the installation has no such file; null: none is made
  bool replaceable;          // by the installation's, when that is asked for
};

// In the order in which they are made. CProjPath's names are read anew by every call.
std::vector<LocalFile> LocalFiles();
// The rock and stone program's parameters.
LocalFile LocalStoneFile();

}  // namespace velmora

#endif  // VELMORA_SETTINGS_PROJECT_COPIES_H_
