#include "velmora/version.h"

#define VELMORA_QUOTE(number) #number
#define VELMORA_TEXT(major, minor, patch) \
  VELMORA_QUOTE(major) "." VELMORA_QUOTE(minor) "." VELMORA_QUOTE(patch)

namespace velmora {

int Version() { return VELMORA_VERSION; }

const char* VersionText() {
  return VELMORA_TEXT(VELMORA_VERSION_MAJOR, VELMORA_VERSION_MINOR, VELMORA_VERSION_PATCH);
}

}  // namespace velmora
