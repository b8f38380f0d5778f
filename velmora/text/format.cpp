#include "velmora/text/format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr int kWidest = 4096;       // a width or precision from a damaged format must not exhaust memory
constexpr int kLongestWhole = 330;  // a real number's characters without its decimals

struct Conversion {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool zero = false;
  bool alternate = false;
  int width = 0;
  std::optional<int> precision;
  wchar_t letter = 0;
};

std::wstring Widen(std::string_view ascii) { return std::wstring(ascii.begin(), ascii.end()); }

std::wstring UpperAscii(std::wstring text) {
  for (wchar_t& c : text) c = UpperLetter(c);
  return text;
}

// Sign and digits apart, so that "0" can pad between them.
std::wstring Pad(const Conversion& how, std::wstring_view sign, std::wstring_view body, bool zeros) {
  const size_t length = sign.size() + body.size();
  const auto width = static_cast<size_t>(how.width);
  const size_t fill = width > length ? width - length : 0;
  std::wstring text;
  if (!how.left && !zeros) text.append(fill, L' ');
  text.append(sign);
  if (!how.left && zeros) text.append(fill, L'0');
  text.append(body);
  if (how.left) text.append(fill, L' ');
  return text;
}

std::wstring_view SignOf(const Conversion& how, bool negative) {
  if (negative) return L"-";
  if (how.plus) return L"+";
  return how.space ? L" " : L"";
}

std::wstring FormatWhole(const Conversion& how, const FormatArgument& argument) {
  std::array<char, 72> digits;
  const auto write = [&](std::uint64_t value, int base) {
    return Widen(std::string_view(
        digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value, base).ptr));
  };
  std::wstring sign;
  std::wstring body;
  if (how.letter == L'd' || how.letter == L'i') {
    const std::int64_t value = argument.Integer();
    const bool negative = !argument.IsUnsigned() && value < 0;
    const auto bits = static_cast<std::uint64_t>(value);
    sign = SignOf(how, negative);
    body = write(negative ? 0 - bits : bits, 10);
  } else {
    const int base = how.letter == L'o' ? 8 : how.letter == L'u' ? 10 : 16;
    body = write(argument.Bits(), base);
    if (how.alternate && base == 16 && argument.Bits() != 0) sign = L"0x";
    if (how.letter == L'X') body = UpperAscii(body), sign = UpperAscii(sign);
  }
  if (how.precision) {
    const auto wanted = static_cast<size_t>(*how.precision);
    if (wanted == 0 && body == L"0") body.clear();
    if (body.size() < wanted) body.insert(0, wanted - body.size(), L'0');
  }
  if (how.alternate && how.letter == L'o' && body.substr(0, 1) != L"0") body.insert(0, 1, L'0');
  return Pad(how, sign, body, how.zero && !how.precision);
}

std::wstring FormatReal(const Conversion& how, double value) {
  const wchar_t letter = LowerLetter(how.letter);
  const std::chars_format format = letter == L'f'   ? std::chars_format::fixed
                                   : letter == L'e' ? std::chars_format::scientific
                                                    : std::chars_format::general;
  std::array<char, kLongestWhole + kWidest> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value), format,
                                 how.precision.value_or(6));
  std::wstring body = Widen(std::string_view(buffer.data(), end.ptr));
  if (how.letter != letter) body = UpperAscii(body);
  return Pad(how, SignOf(how, std::signbit(value)), body, how.zero && std::isfinite(value));
}

std::wstring FormatOne(const Conversion& how, const FormatArgument& argument) {
  switch (how.letter) {
    case L'd':
    case L'i':
    case L'u':
    case L'x':
    case L'X':
    case L'o':
      return FormatWhole(how, argument);
    case L'f':
    case L'F':
    case L'e':
    case L'E':
    case L'g':
    case L'G':
      return FormatReal(how, argument.Real());
    case L'c':
      if (argument.IsText()) return Pad(how, L"", argument.Text().substr(0, 1), false);
      return Pad(how, L"", std::wstring(1, static_cast<wchar_t>(argument.Integer())), false);
    default: {
      if (!argument.IsText()) {
        Conversion number = how;
        number.letter = L'd';
        return FormatWhole(number, argument);
      }
      const std::wstring_view text = argument.Text();
      return Pad(how, L"", how.precision ? text.substr(0, static_cast<size_t>(*how.precision)) : text, false);
    }
  }
}

class Formatter {
 public:
  Formatter(std::wstring_view format, std::span<const FormatArgument> arguments)
      : rest_(format), arguments_(arguments) {}

  std::wstring Run() {
    std::wstring text;
    while (!rest_.empty()) {
      const size_t percent = std::min(rest_.find(L'%'), rest_.size());
      text.append(rest_.substr(0, percent));
      rest_.remove_prefix(percent);
      if (!rest_.empty()) text.append(One());
    }
    return text;
  }

 private:
  // rest_ begins at "%".
  std::wstring One() {
    const std::wstring_view whole = rest_;
    rest_.remove_prefix(1);
    Conversion how;
    Flags(&how);
    how.width = Count(&how.left);
    if (Take(L'.')) {
      bool negative = false;
      const int precision = Count(&negative);
      if (!negative) how.precision = precision;
    }
    while (!rest_.empty() && std::wstring_view(L"hlLzjtw").find(rest_.front()) != std::wstring_view::npos)
      rest_.remove_prefix(1);
    if (rest_.substr(0, 3) == L"I64" || rest_.substr(0, 3) == L"I32") rest_.remove_prefix(3);
    if (rest_.empty()) return std::wstring(whole);
    how.letter = rest_.front();
    rest_.remove_prefix(1);
    if (how.letter == L'%') return L"%";
    if (std::wstring_view(L"diuxXocsfFeEgGS").find(how.letter) == std::wstring_view::npos)
      return std::wstring(whole.substr(0, whole.size() - rest_.size()));
    const FormatArgument* argument = NextArgument();
    return argument == nullptr ? Pad(how, L"", L"", false) : FormatOne(how, *argument);
  }

  void Flags(Conversion* how) {
    for (;; rest_.remove_prefix(1)) {
      if (rest_.empty()) return;
      switch (rest_.front()) {
        case L'-':
          how->left = true;
          break;
        case L'+':
          how->plus = true;
          break;
        case L' ':
          how->space = true;
          break;
        case L'0':
          how->zero = true;
          break;
        case L'#':
          how->alternate = true;
          break;
        default:
          return;
      }
    }
  }

  // A width or precision; from an argument for "*", where a negative one sets *negative.
  int Count(bool* negative) {
    std::int64_t count = 0;
    if (Take(L'*')) {
      const FormatArgument* argument = NextArgument();
      count = argument == nullptr ? 0 : argument->Integer();
      if (count < 0) *negative = true;
      count = std::clamp<std::int64_t>(count, -kWidest, kWidest);
      return static_cast<int>(count < 0 ? -count : count);
    }
    for (; !rest_.empty() && IsDigit(rest_.front()); rest_.remove_prefix(1))
      count = std::min<std::int64_t>(count * 10 + (rest_.front() - L'0'), kWidest);
    return static_cast<int>(count);
  }

  bool Take(wchar_t c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  const FormatArgument* NextArgument() { return next_ < arguments_.size() ? &arguments_[next_++] : nullptr; }

  std::wstring_view rest_;
  std::span<const FormatArgument> arguments_;
  size_t next_ = 0;
};

}  // namespace

std::wstring_view FormatArgument::Text() const {
  const auto* text = std::get_if<std::wstring_view>(&value_);
  return text == nullptr ? std::wstring_view() : *text;
}

double FormatArgument::Real() const {
  if (const auto* real = std::get_if<double>(&value_)) return *real;
  if (const auto* natural = std::get_if<std::uint64_t>(&value_)) return static_cast<double>(*natural);
  if (const auto* integer = std::get_if<std::int64_t>(&value_)) return static_cast<double>(*integer);
  return 0;
}

std::int64_t FormatArgument::Integer() const {
  if (const auto* integer = std::get_if<std::int64_t>(&value_)) return *integer;
  if (const auto* natural = std::get_if<std::uint64_t>(&value_)) return static_cast<std::int64_t>(*natural);
  if (const auto* real = std::get_if<double>(&value_))
    return std::isfinite(*real) && std::fabs(*real) < 9.2e18 ? static_cast<std::int64_t>(*real) : 0;
  return 0;
}

std::uint64_t FormatArgument::Bits() const {
  const auto bits = static_cast<std::uint64_t>(Integer());
  if (size_ >= sizeof(std::uint64_t)) return bits;
  return bits & ((std::uint64_t{1} << (size_ * 8)) - 1);
}

std::wstring FormatText(std::wstring_view format, std::span<const FormatArgument> arguments) {
  return Formatter(format, arguments).Run();
}

}  // namespace velmora
