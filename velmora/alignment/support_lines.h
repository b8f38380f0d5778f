// Support points by the block, between a file's bytes and records: the lines that stod_punkt.cpp reads and
// writes one by one, where they are plain ASCII.
#ifndef VELMORA_ALIGNMENT_SUPPORT_LINES_H_
#define VELMORA_ALIGNMENT_SUPPORT_LINES_H_

#include <string>
#include <string_view>

#include "velmora/alignment/stod_punkt.h"

namespace velmora {

// Reads the three lines of the point at the start of `text` and returns their length. 0 when they are not
// plain or not whole: a name without letters beyond ASCII that is no record's, a number of few digits, a
// line with anything in it. The six values are not set.
size_t ReadPlainSupportPoint(std::string_view text, stdpkttype* point);

// Appends the three lines as they are on disk. False, with nothing appended, when they are not plain.
bool AppendPlainSupportPoint(const stdpkttype& point, std::string* text);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_SUPPORT_LINES_H_
