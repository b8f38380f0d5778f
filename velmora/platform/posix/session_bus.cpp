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

// The call of Hello as it goes over the wire, which every client makes first: a header of 16 bytes, then
// path, member, interface and destination, each padded to 8.
constexpr std::string_view kHello =
    "l\1\0\1\0\0\0\0\1\0\0\0m\0\0\0"
    "\1\1o\0\25\0\0\0/org/freedesktop/DBus\0\0\0"
    "\3\1s\0\5\0\0\0Hello\0\0\0"
    "\2\1s\0\24\0\0\0org.freedesktop.DBus\0\0\0\0"
    "\6\1s\0\24\0\0\0org.freedesktop.DBus\0\0\0\0"sv;

// What separates the pieces of a list of addresses, taken off its front.
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

bool Send(int socket, std::string_view bytes) {
  return send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

// What comes before the time is up, to the first `last` at the least. Empty when that does not come.
std::string ReceiveTo(int socket, char last, Clock::time_point end) {
  constexpr size_t kLongest = 65536;
  std::string come;
  while (come.find(last) == std::string::npos) {
    const auto left = std::chrono::ceil<milliseconds>(end - Clock::now()).count();
    pollfd descriptor = {socket, POLLIN, 0};
    if (left <= 0 || poll(&descriptor, 1, static_cast<int>(left)) <= 0) return "";
    char bytes[512];
    const ssize_t count = recv(socket, bytes, sizeof bytes, MSG_DONTWAIT);
    if (count <= 0 || come.size() > kLongest) return "";
    come.append(bytes, static_cast<size_t>(count));
  }
  return come;
}

bool Answers(std::string_view address, Clock::time_point end) {
  const std::optional<SocketName> name = SocketOf(address);
  if (!name) return false;
  const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!socket || connect(socket.Get(), reinterpret_cast<const sockaddr*>(&name->address), name->length) != 0)
    return false;
  // The user's number in decimal, and that in hexadecimal.
  std::string user;
  for (const char digit : std::to_string(geteuid())) user += std::string("3") + digit;
  return Send(socket.Get(), "\0AUTH EXTERNAL "sv) && Send(socket.Get(), user + "\r\n") &&
         ReceiveTo(socket.Get(), '\n', end).starts_with("OK ") && Send(socket.Get(), "BEGIN\r\n") &&
         Send(socket.Get(), kHello) && !ReceiveTo(socket.Get(), 'l', end).empty();
}

}  // namespace

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
