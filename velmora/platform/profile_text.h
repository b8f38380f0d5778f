// A profile's content, as bytes: finding and changing a value. The rules stand in profile.h.
#ifndef VELMORA_PLATFORM_PROFILE_TEXT_H_
#define VELMORA_PLATFORM_PROFILE_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

// Whole, without its quotes. Nothing when there is no such key.
std::optional<std::wstring> FindProfileValue(std::string_view profile, std::wstring_view section,
                                             std::wstring_view key);

enum class ProfileChange {
  kDone,
  kNothingToDo,  // the value stands there already, or there is none to delete
  kRefused,      // the profile's encoding lacks a character
};

// Without a value the key is deleted. Bytes outside the key's line are kept, and so is the way lines
// end: a new line ends as the one before it. *changed is set on kDone only.
ProfileChange ChangeProfile(std::string_view profile, std::wstring_view section, std::wstring_view key,
                            std::optional<std::wstring_view> value, std::string* changed);

// Whether section, key and value would be read back as they are.
bool ProfileCanHold(std::wstring_view section, std::wstring_view key, std::optional<std::wstring_view> value);

// Text without the blanks that profiles ignore: those of ASCII and the end mark of old systems (1A).
std::wstring_view TrimProfileBlanks(std::wstring_view text);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_PROFILE_TEXT_H_
