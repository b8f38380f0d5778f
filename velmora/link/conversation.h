// The texts of the conversation with the field-data program: parsing and formatting.
//
//   line         := greeting | notification
//   greeting     := number blank item     the first text, on the item "-1"; the number is above 0
//   notification := number [number]       every later text
//   announcement := "10000" blank folder  the reply to the greeting
//
// Blanks before numbers are skipped; text after them is ignored.
#ifndef VELMORA_LINK_CONVERSATION_H_
#define VELMORA_LINK_CONVERSATION_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::conversation {

inline constexpr char kService[] = "Tundril";
inline constexpr char kTopic[] = "WIN";
inline constexpr char kFirstItem[] = "-1";

// In both directions, without the terminating zero.
inline constexpr size_t kLongestText = 511;

// The text before the first zero byte, cut to kLongestText.
std::string_view TextOf(std::string_view data);

struct Greeting {
  int pid;           // above 0
  std::string item;  // empty when the line has only a number
};
// Nothing for a line that does not begin with a number above 0.
std::optional<Greeting> ParseGreeting(std::string_view line);

// The message to the client's window.
struct Notification {
  unsigned message;
  std::uintptr_t wParam;
  std::intptr_t lParam;
};
// Nothing for an unknown number.
std::optional<Notification> ParseNotification(std::string_view line);

// Cut to kLongestText.
std::string Announcement(std::string_view folder);

}  // namespace velmora::conversation

#endif  // VELMORA_LINK_CONVERSATION_H_
