// The version, at compile time and at run time: they differ when a program runs with another library than
// the one whose headers it was built with.
#ifndef VELMORA_VERSION_H_
#define VELMORA_VERSION_H_

#include "velmora/export.h"

// 0: each minor version may change the interface.
#define VELMORA_VERSION_MAJOR 0
// Grows with what is new, PATCH within it with what is corrected.
#define VELMORA_VERSION_MINOR 1
// From 0 in each minor version.
#define VELMORA_VERSION_PATCH 0
// One number that grows with each version: 0.1.0 is 100, 1.2.3 is 10203.
#define VELMORA_VERSION (VELMORA_VERSION_MAJOR * 10000 + VELMORA_VERSION_MINOR * 100 + VELMORA_VERSION_PATCH)

namespace velmora {

// VELMORA_VERSION of the library that the program runs with.
VELMORA_API int Version();
// The same as text, "0.1.0".
VELMORA_API const char* VersionText();

}  // namespace velmora

#endif  // VELMORA_VERSION_H_
