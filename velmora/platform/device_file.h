// Pipes and devices, which are written as the output comes because no new file can replace them.
#ifndef VELMORA_PLATFORM_DEVICE_FILE_H_
#define VELMORA_PLATFORM_DEVICE_FILE_H_

#include <cstdio>

#include "velmora/text/string.h"

namespace velmora {

// For binary output; null when it cannot be opened. The caller closes it with std::fclose.
std::FILE* OpenDeviceToWrite(const CString& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_DEVICE_FILE_H_
