#include "velmora/platform/posix/session_bus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "velmora/platform/posix/file_descriptor.h"

namespace velmora {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using namespace std::string_view_literals;

// Removes the text up to the first separator from the front of the list.
std::string_view TakePiece(std::string_view* list, char separator) {
  const size_t length = std::min(list->find(separator), list->size());
  const std::string_view piece = list->substr(0, length);
  list->remove_prefix(std::min(length + 1, list->size()));
  return piece;
}

std::string Unescaped(std::string_view value) {
  std::string text;
  for (size_t i = 0; i < value.size(); ++i) {
    unsigned char byte = 0;
    const char* const digits = value.data() + i + 1;
    if (value[i] == '%' && i + 2 < value.size() &&
        std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
      text += static_cast<char>(byte);
      i += 2;
    } else {
      text += value[i];
    }
  }
  return text;
}

struct SocketName {
  sockaddr_un address = {};
  socklen_t length = 0;
};

// "unix:path=/run/bus,guid=..." or "unix:abstract=..."; nothing for other addresses.
std::optional<SocketName> SocketOf(std::string_view address) {
  if (TakePiece(&address, ':') != "unix") return std::nullopt;
  while (!address.empty()) {
    std::string_view value = TakePiece(&address, ',');
    const std::string_view key = TakePiece(&value, '=');
    if (key != "path" && key != "abstract") continue;
    // A path ends with a zero, an abstract name begins with one.
    const std::string text = Unescaped(value);
    const std::string name = key == "path" ? text + '\0' : '\0' + text;
    SocketName socket;
    if (name.size() > sizeof socket.address.sun_path) return std::nullopt;
    socket.address.sun_family = AF_UNIX;
    std::copy(name.begin(), name.end(), socket.address.sun_path);
    socket.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    return socket;
  }
  return std::nullopt;
}

// Up to the line's end; empty when it does not come in time.
std::string ReceiveLine(int socket, Clock::time_point end) {
  constexpr size_t kLongest = 65536;
  std::string line;
  while (line.find('\n') == std::string::npos) {
    pollfd descriptor = {socket, POLLIN, 0};
    if (poll(&descriptor, 1, static_cast<int>(TimeUntil(end).count())) <= 0) return "";
    char bytes[512];
    const ssize_t count = recv(socket, bytes, sizeof bytes, MSG_DONTWAIT);
    if (count <= 0 || line.size() > kLongest) return "";
    line.append(bytes, static_cast<size_t>(count));
  }
  return line;
}

// Whether the bus accepts our authentication, the first step of every connection.
bool Answers(std::string_view address, Clock::time_point end) {
  const std::optional<SocketName> name = SocketOf(address);
  if (!name) return false;
  const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!socket || connect(socket.Get(), reinterpret_cast<const sockaddr*>(&name->address), name->length) != 0)
    return false;
  // The decimal digits of the user's number, each as the hexadecimal code of its character.
  std::string request("\0AUTH EXTERNAL "sv);
  for (const char digit : std::to_string(geteuid())) request.append("3").append(1, digit);
  request += "\r\n";
  return send(socket.Get(), request.data(), request.size(), MSG_NOSIGNAL) ==
             static_cast<ssize_t>(request.size()) &&
         ReceiveLine(socket.Get(), end).starts_with("OK ");
}

}  // namespace

milliseconds TimeUntil(Clock::time_point end) {
  return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(end - Clock::now()));
}

void WaitForBus(const sdbus::IConnection& bus, milliseconds limit) {
  const sdbus::IConnection::PollData data = bus.getEventLoopPollData();
  if (const int own = data.getPollTimeout(); own >= 0) limit = std::min(limit, milliseconds(own));
  pollfd descriptor = {data.fd, data.events, 0};
  poll(&descriptor, 1, static_cast<int>(limit.count()));
}

std::string AnsweringSessionBus(milliseconds limit) {
  const char* const given = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  const char* const run_time = std::getenv("XDG_RUNTIME_DIR");
  std::string addresses;
  if (given != nullptr && *given != '\0')
    addresses = given;
  else if (run_time != nullptr)
    addresses = std::string("unix:path=") + run_time + "/bus";
  const Clock::time_point end = Clock::now() + limit;
  for (std::string_view list = addresses; !list.empty();) {
    const std::string_view address = TakePiece(&list, ';');
    if (Answers(address, end)) return std::string(address);
  }
  return "";
}

}  // namespace velmora
