// The records of CDirSort: filling and comparing them.
#ifndef VELMORA_PROJECT_DIR_ENTRY_H_
#define VELMORA_PROJECT_DIR_ENTRY_H_

#include <cstdint>
#include <span>
#include <string_view>

#include "velmora/platform/files.h"
#include "velmora/project/dir_sort.h"

namespace velmora {

// The number at the start of a text, after blanks and with an optional sign, clamped to 64 bits; kNoNumber
// for a text without one.
inline constexpr std::int64_t kNoNumber = 99999999;
std::int64_t NumberAtStart(std::span<const wchar_t> field);

// Above 0 when `marked` comes before `current`; the keys are those of CDirSort::Init.
int CompareEntries(const dirsorttype& marked, const dirsorttype& current, int key);

// Fills a zeroed record. Date and time stay empty when the file's time is unknown.
void FillEntry(const FoundFile& file, dirsorttype* entry);

// The required end of a name that matches `pattern`: from its last point on, empty when any name matches.
std::wstring_view RequiredEnding(std::wstring_view pattern);
bool EndsWithNoCase(std::wstring_view name, std::wstring_view ending);

}  // namespace velmora

#endif  // VELMORA_PROJECT_DIR_ENTRY_H_
