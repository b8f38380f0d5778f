#include "velmora/platform/dialog.h"

#include <iterator>

namespace velmora {
namespace {

// The buttons of each style (its low four bits) in the box's order; 0 ends the row. OK is 1, Cancel 2,
// Abort 3, Retry 4, Ignore 5, Yes 6, No 7, Try Again 10, Continue 11.
constexpr int kButtons[][3] = {{1, 0, 0}, {1, 2, 0}, {3, 4, 5}, {6, 7, 2}, {6, 7, 0}, {4, 2, 0}, {2, 10, 11}};

}  // namespace

int DefaultButton(unsigned style) {
  const unsigned kind = style & 0xFU;
  const unsigned place = (style >> 8) & 0xFU;
  if (kind >= std::size(kButtons)) return kButtons[0][0];
  const auto& buttons = kButtons[kind];
  return place < std::size(buttons) && buttons[place] != 0 ? buttons[place] : buttons[0];
}

}  // namespace velmora
