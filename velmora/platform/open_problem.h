// Why a file could not be opened.
#ifndef VELMORA_PLATFORM_OPEN_PROBLEM_H_
#define VELMORA_PLATFORM_OPEN_PROBLEM_H_

#include <string>

#include "velmora/text/string.h"

namespace velmora {

// For a user: why the file could not be opened for reading, and what to do.
std::string WhyUnopened(const CString& path);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_OPEN_PROBLEM_H_
