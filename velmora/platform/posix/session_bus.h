// The session's D-Bus: the names of the conversation on it (docs/conversation.md), waiting, and finding a
// bus that answers.
#ifndef VELMORA_PLATFORM_POSIX_SESSION_BUS_H_
#define VELMORA_PLATFORM_POSIX_SESSION_BUS_H_

#include <sdbus-c++/sdbus-c++.h>

#include <chrono>
#include <string>

namespace velmora {

inline constexpr char kConversationInterface[] = "velmora.Conversation";
inline constexpr char kAdviseMethod[] = "Advise";      // (item)
inline constexpr char kUnadviseMethod[] = "Unadvise";  // (item)
inline constexpr char kPokeMethod[] = "Poke";          // (item, text)
inline constexpr char kDataSignal[] = "Data";          // (item, text)
inline std::string BusNameOf(const std::string& service) { return "velmora." + service; }
inline std::string ObjectPathOf(const std::string& topic) { return "/velmora/" + topic; }

inline constexpr char kBusDaemon[] = "org.freedesktop.DBus";

// Waits until the connection can read, or write when it has something to send, at most `limit`.
void WaitForBus(const sdbus::IConnection& bus, std::chrono::milliseconds limit);
std::chrono::milliseconds TimeUntil(std::chrono::steady_clock::time_point end);

// The first address of DBUS_SESSION_BUS_ADDRESS, else of the user's run-time folder, at which a bus answers
// within `limit`. Empty when none does. The D-Bus library has no such limit: it waits a minute and a half for
// a bus that accepts the connection and does not answer. Sockets of this machine only.
std::string AnsweringSessionBus(std::chrono::milliseconds limit);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_SESSION_BUS_H_
