// A number with the noun that it counts, for a line shown to a user.
#ifndef VELMORA_TEXT_COUNTED_H_
#define VELMORA_TEXT_COUNTED_H_

#include <concepts>
#include <string>
#include <string_view>

namespace velmora {

//   Counted(1, "row is", "rows are")   // "1 row is"
//   Counted(2, "row is", "rows are")   // "2 rows are"
//   Counted(2, "point")                // "2 points"
template <std::integral Number>
std::string Counted(Number count, std::string_view one, std::string_view many = {}) {
  const bool is_regular = many.empty();
  std::string text = std::to_string(count) + " ";
  text += count == 1 || is_regular ? one : many;
  return count != 1 && is_regular ? text + "s" : text;
}

}  // namespace velmora

#endif  // VELMORA_TEXT_COUNTED_H_
