// Finds and changes values in the bytes of a profile (profile.h).
#ifndef VELMORA_PLATFORM_PROFILE_TEXT_H_
#define VELMORA_PLATFORM_PROFILE_TEXT_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/text/string.h"

namespace velmora {

// The whole value without its quotes. Nothing when there is no such key.
std::optional<std::wstring> FindProfileValue(std::string_view profile, std::wstring_view section,
                                             std::wstring_view key);
// The same of several keys of a section, in one pass.
std::vector<std::optional<std::wstring>> FindProfileValues(std::string_view profile,
                                                           std::wstring_view section,
                                                           std::span<const CString> keys);

enum class ProfileChange {
  kDone,
  kNothingToDo,  // the value is there already, or there is none to delete
  kRefused,      // a character outside the profile's encoding, or half a character at its end
};

// Without a value the key is deleted. Bytes outside the key's line are unchanged; a new line ends as the line
// before it, without one as the first line. *changed is set on kDone only.
ProfileChange ChangeProfile(std::string_view profile, std::wstring_view section, std::wstring_view key,
                            std::optional<std::wstring_view> value, std::string* changed);

// Whether the first line ends in a line feed alone, as other systems than Windows write files.
bool BeginsWithLineFeedEnds(std::string_view profile);

// Whether section, key and value can be read back unchanged.
bool ProfileCanHold(std::wstring_view section, std::wstring_view key, std::optional<std::wstring_view> value);

// Text without the blanks that profiles ignore: ASCII blanks and the end-of-file character 1A.
std::wstring_view TrimProfileBlanks(std::wstring_view text);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROFILE_TEXT_H_
