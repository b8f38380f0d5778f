// Where the session's D-Bus is, and whether it answers. The D-Bus library waits a minute and a half for a
// bus that takes the connection and says nothing; this finds out in a time of our own. (One that stops in the
// moment after is still waited for so long.)
#ifndef VELMORA_PLATFORM_POSIX_SESSION_BUS_H_
#define VELMORA_PLATFORM_POSIX_SESSION_BUS_H_

#include <chrono>
#include <string>

namespace velmora {

// The first address of DBUS_SESSION_BUS_ADDRESS, else of the user's run-time folder, at which a bus has
// answered a greeting within `limit`. Empty when none has. Sockets of this machine only, as session buses
// have them.
std::string AnsweringSessionBus(std::chrono::milliseconds limit);

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_SESSION_BUS_H_
