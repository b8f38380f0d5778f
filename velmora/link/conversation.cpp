#include "velmora/link/conversation.h"

#include <algorithm>

#include "velmora/platform/types.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::conversation {
namespace {

// Digits and blanks are the same in every encoding, so no decoding is needed.
std::wstring Widened(std::string_view line) {
  std::wstring wide;
  for (const char c : line) wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
  return wide;
}

// A known notification; without `lParam` the text's second number is used.
struct Known {
  int number;
  std::uintptr_t wParam;
  std::optional<std::intptr_t> lParam;
};
constexpr Known kKnown[] = {
    {193, 1117, std::nullopt},  //
    {195, 1119, 0},             //
    {196, 1120, 0},             //
    {197, 1121, std::nullopt},  //
    {198, 1122, 84},
};

}  // namespace

std::string_view TextOf(std::string_view data) {
  return data.substr(0, std::min(data.find('\0'), kLongestText));
}

std::optional<Greeting> ParseGreeting(std::string_view line) {
  const std::wstring wide = Widened(line);
  NumberScanner scanner(wide);
  Greeting greeting{};
  if (!scanner.Next(&greeting.pid) || greeting.pid <= 0) return std::nullopt;
  std::wstring_view rest = scanner.Rest();
  while (!rest.empty() && IsBlank(rest.front())) rest.remove_prefix(1);
  for (const wchar_t c : rest) {
    if (IsBlank(c)) break;
    greeting.item += static_cast<char>(c);
  }
  return greeting;
}

std::optional<Notification> ParseNotification(std::string_view line) {
  const std::wstring wide = Widened(line);
  NumberScanner scanner(wide);
  int number = 0;
  if (!scanner.Next(&number)) return std::nullopt;
  for (const Known& known : kKnown) {
    if (known.number != number) continue;
    int second = 1;
    if (!known.lParam) (void)scanner.Next(&second);
    return Notification{WM_USER, known.wParam, known.lParam.value_or(second)};
  }
  return std::nullopt;
}

std::string Announcement(std::string_view folder) {
  return ("10000 " + std::string(folder)).substr(0, kLongestText);
}

}  // namespace velmora::conversation
