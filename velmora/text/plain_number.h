// Numbers of digits and one decimal sign, read in a few nanoseconds.
#ifndef VELMORA_TEXT_PLAIN_NUMBER_H_
#define VELMORA_TEXT_PLAIN_NUMBER_H_

#include <string_view>

namespace velmora {

// The double nearest to a text that consists of digits, perhaps a "-" before them and at most one decimal
// sign, `point` or `other`. False for any other text, and for one of more than 64 characters.
bool ReadPlainNumber(std::string_view text, char point, char other, double* number);

}  // namespace velmora

#endif  // VELMORA_TEXT_PLAIN_NUMBER_H_
