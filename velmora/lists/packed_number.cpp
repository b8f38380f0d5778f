#include "velmora/lists/packed_number.h"

#include "velmora/text/numbers.h"

namespace velmora {

std::string TextOfPacked(std::string_view field) {
  double number = 0;
  return ReadPackedNumber(field, &number) ? FormatShortest(number) : std::string(field.substr(1));
}

}  // namespace velmora
