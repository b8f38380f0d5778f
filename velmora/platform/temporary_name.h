// The name of a replacement's new file, beside its target.
#ifndef VELMORA_PLATFORM_TEMPORARY_NAME_H_
#define VELMORA_PLATFORM_TEMPORARY_NAME_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace velmora {

// The same for the same target every time: that is how two programs find out that they replace the
// same file, and how a killed program's new file is found again. At most `longest` units long; a
// target's name that leaves no room is told by its number instead.
template <class Char>
std::basic_string<Char> TemporaryName(std::basic_string_view<Char> target, size_t longest) {
  const auto ascii = [](std::string_view text) { return std::basic_string<Char>(text.begin(), text.end()); };
  const auto suffix = ascii(".velmora-new");
  if (target.size() + suffix.size() <= longest) return std::basic_string<Char>(target) + suffix;
  std::uint64_t number = 0xCBF29CE484222325U;  // FNV-1a
  for (const Char unit : target)
    number = (number ^ static_cast<std::make_unsigned_t<Char>>(unit)) * 0x100000001B3U;
  std::basic_string<Char> digits;
  for (int shift = 60; shift >= 0; shift -= 4)
    digits += static_cast<Char>("0123456789abcdef"[(number >> shift) & 0xFU]);
  return digits + suffix;
}

}  // namespace velmora

#endif  // VELMORA_PLATFORM_TEMPORARY_NAME_H_
