// What CDirSort does with one entry or two: functions without a list.
#ifndef VELMORA_PROJECT_DIR_ENTRY_H_
#define VELMORA_PROJECT_DIR_ENTRY_H_

#include <cstdint>
#include <span>
#include <string_view>

#include "velmora/platform/files.h"
#include "velmora/project/dir_sort.h"

namespace velmora {

// The number that a text begins with, after blanks and with an optional sign; what is too large for 64
// bits counts as the largest. A text that begins with none has kNoNumber, and so comes behind most that do.
inline constexpr std::int64_t kNoNumber = 99999999;
std::int64_t NumberAtStart(std::span<const wchar_t> field);

// Above 0 when `marked` is to come before `current`; the keys are those of CDirSort::Init.
int CompareEntries(const dirsorttype& marked, const dirsorttype& current, int key);

// Fills a record of zeros. Date and time stay empty when the file's time is none.
void FillEntry(const FoundFile& file, dirsorttype* entry);

// How a name has to end to match `pattern`: from its last point on, or empty when any name does.
std::wstring_view RequiredEnding(std::wstring_view pattern);
bool EndsWithNoCase(std::wstring_view name, std::wstring_view ending);

}  // namespace velmora

#endif  // VELMORA_PROJECT_DIR_ENTRY_H_
