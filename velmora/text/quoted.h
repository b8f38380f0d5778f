// Text of unknown content, for a line shown to a user.
#ifndef VELMORA_TEXT_QUOTED_H_
#define VELMORA_TEXT_QUOTED_H_

#include <string>
#include <string_view>

namespace velmora {

// UTF-8 in quotes, with "?" for control characters and invalid bytes, cut to a readable length.
std::string Quoted(std::string_view text);
std::string Quoted(std::wstring_view text);

}  // namespace velmora

#endif  // VELMORA_TEXT_QUOTED_H_
