// Where the fuzz targets keep their files, and what they compare.
#ifndef VELMORA_FUZZ_SUPPORT_SCRATCH_H_
#define VELMORA_FUZZ_SUPPORT_SCRATCH_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/test_files.h"
#include "velmora/alignment/alignment_point.h"
#include "velmora/text/string.h"

namespace velmora::fuzz {

// A file of this process's own folder, in memory where the system has such a disk. The first call also moves
// the user's folders and registry there and counts the library's messages instead of showing them.
CString Scratch(const CString& name);
const CString& ScratchFolder();
// The same with this content.
CString Put(const CString& name, std::string_view bytes);

// How many message boxes and status texts the library has shown.
int Messages();

// The lines of a file as the library reads them.
std::vector<CString> LinesOf(const CString& path);
// The same text in UTF-16, which the fast readers of plain lines leave to the general one; nothing when the
// text is UTF-16 already.
std::optional<std::string> InUtf16(std::string_view bytes);
// Whether a file like this one can hold the text, also at its start.
bool CanHold(std::string_view file, std::wstring_view text);

// The words of a line.
std::vector<CString> WordsOf(const CString& line);

// A number as it is read back after it was written with so many decimals.
double Rewritten(double value, int decimals);
// To the last bit.
bool Same(double a, double b);
bool SamePoints(const std::vector<kovltype>& a, const std::vector<kovltype>& b);
// Points as they are read back after they were written.
std::vector<kovltype> Rewritten(std::vector<kovltype> points);

}  // namespace velmora::fuzz

#endif  // VELMORA_FUZZ_SUPPORT_SCRATCH_H_
