// Text in the conversation's encoding, and connecting.
#ifndef VELMORA_CLI_LINK_LINK_TEXT_H_
#define VELMORA_CLI_LINK_LINK_TEXT_H_

#include <string>
#include <string_view>

#include "velmora/link/conversation.h"

namespace velmora::cli {

inline constexpr size_t kLongestText = conversation::kLongestText;  // bytes
inline constexpr size_t kLongestFolder = 505;                       // "10000 " comes before it
inline constexpr size_t kLongestScripted = 32'000;

// UTF-8 to Windows-1252. Throws a Refusal that begins with `what` when a character has no code there or the
// text is longer than `longest`.
std::string EncodeLinkText(std::string_view utf8, const std::string& what, size_t longest = kLongestText);

// Throws a Refusal when the field-data program does not answer.
void ConnectToProgram();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_LINK_LINK_TEXT_H_
