// Numbers in text, read and written with "." whatever the locale.
//
// A number is what the suite's files hold: an optional sign, digits with at most one ".", an
// optional exponent. "inf", "nan" and hexadecimal are not numbers, nor is one too large for a
// double, so that no file can put an infinity among the coordinates.
#ifndef VELMORA_TEXT_NUMBERS_H_
#define VELMORA_TEXT_NUMBERS_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace velmora {

// Reads fields separated by blanks from the start of a line, as "%lf %lf %d" does: each Next skips
// blanks and takes the longest number there. On failure it returns false, leaves the output alone
// and does not move past the field.
class NumberScanner {
 public:
  explicit NumberScanner(std::wstring_view text) : rest_(text) {}

  [[nodiscard]] bool Next(double* value);
  [[nodiscard]] bool Next(float* value);
  [[nodiscard]] bool Next(int* value);

  // What has not been read yet.
  std::wstring_view Rest() const { return rest_; }

 private:
  template <class Number>
  bool NextNumber(Number* value, bool integer);

  std::wstring_view rest_;
};

// Fills `values` from the start of `text` and returns how many could be read.
size_t ScanNumbers(std::wstring_view text, std::span<double> values);

// The number that `text` starts with, after blanks; nothing when there is none.
[[nodiscard]] std::optional<double> ParseNumber(std::wstring_view text);
// The number that `text` consists of, blanks around it apart.
[[nodiscard]] std::optional<double> ParseWholeNumber(std::wstring_view text);

// "%.{decimals}f"; "inf", "-inf" and "nan" where the value is not finite.
std::string FormatFixed(double value, int decimals);
// The shortest text that reads back as the same double.
std::string FormatShortest(double value);
// The same to `at`, which has room for kLongestShortest characters; returns the end.
inline constexpr size_t kLongestShortest = 64;
char* PutShortest(double value, char* at);

}  // namespace velmora

#endif  // VELMORA_TEXT_NUMBERS_H_
