// Shows a CString as text when a test fails.
#ifndef VELMORA_TESTS_SUPPORT_PRINT_TEXT_H_
#define VELMORA_TESTS_SUPPORT_PRINT_TEXT_H_

#include <ostream>

#include "velmora/text/string.h"

namespace velmora {

inline void PrintTo(const CString& text, std::ostream* out) { *out << "L\"" << ToUtf8(text) << '"'; }

}  // namespace velmora

#endif  // VELMORA_TESTS_SUPPORT_PRINT_TEXT_H_
