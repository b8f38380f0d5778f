// The profile of the process's application object, as initialising changes it.
#ifndef VELMORA_ENVIRONMENT_APPLICATION_PROFILE_H_
#define VELMORA_ENVIRONMENT_APPLICATION_PROFILE_H_

#include "velmora/platform/process.h"

namespace velmora {

// Without an application object nothing changes.
inline void ReplaceApplicationProfile(const CString& path) {
  if (!ApplicationProfile().IsEmpty()) SetApplicationProfile(path);
}

}  // namespace velmora

#endif  // VELMORA_ENVIRONMENT_APPLICATION_PROFILE_H_
