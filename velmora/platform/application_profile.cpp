#include <mutex>

#include "velmora/platform/process.h"

namespace velmora {
namespace {

struct Profile {
  std::mutex mutex;
  CString path;
};

Profile& TheProfile() {
  static Profile profile;
  return profile;
}

}  // namespace

CString ApplicationProfile() {
  Profile& profile = TheProfile();
  const std::lock_guard<std::mutex> lock(profile.mutex);
  return profile.path;
}

void SetApplicationProfile(const CString& path) {
  Profile& profile = TheProfile();
  const std::lock_guard<std::mutex> lock(profile.mutex);
  profile.path = path;
}

}  // namespace velmora
