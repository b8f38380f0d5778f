// The lines of the conversation with the field-data program, without the conversation itself.
//
//   line         := greeting | notification
//   greeting     := number blank item     the first line, on the item "-1"; a number above 0 is taken
//   notification := number [number]       every later line
//   announcement := "10000" blank folder  the answer to the greeting
//
// Numbers are read as everywhere in the suite: blanks before them are skipped, text behind them is left.
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

// Of what arrives no more is looked at, and of what is sent no more leaves, the terminating zero apart.
inline constexpr size_t kLongestText = 511;

// What is read of advised data: the text before the first zero byte, cut to kLongestText.
std::string_view TextOf(std::string_view data);

struct Greeting {
  int pid;           // above 0
  std::string item;  // may be empty when the line has a number only
};
// Nothing for a line that does not begin with a number above 0.
std::optional<Greeting> ParseGreeting(std::string_view line);

// What the using program's window is sent.
struct Notification {
  unsigned message;
  std::uintptr_t wParam;
  std::intptr_t lParam;
};
// Nothing for a number that is not known.
std::optional<Notification> ParseNotification(std::string_view line);

// Cut to kLongestText.
std::string Announcement(std::string_view folder);

}  // namespace velmora::conversation

#endif  // VELMORA_LINK_CONVERSATION_H_
