// Suggestions for misspelled words.
#ifndef VELMORA_TEXT_NEAREST_H_
#define VELMORA_TEXT_NEAREST_H_

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

// The known word that is the fewest letters away: left out, added, exchanged for another or with a neighbour;
// letter case does not count. At most a quarter of the letters may differ, or one. Empty when no word is that
// near, and when the word itself is known.
std::string Nearest(std::string_view word, const std::vector<std::string>& known);

// For the end of a message: "; did you mean "info"?", or nothing.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& known);

}  // namespace velmora

#endif  // VELMORA_TEXT_NEAREST_H_
