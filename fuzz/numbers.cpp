// Text to numbers and back, encodings to text and back, and lines of numbers the quick way.
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/alignment/number_lines.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/codepage.h"
#include "velmora/text/numbers.h"

namespace velmora::fuzz {
namespace {

void RequireEncodingsKeep(std::string_view bytes) {
  for (const TextEncoding encoding :
       {TextEncoding::kWindows1252, TextEncoding::kUtf8, TextEncoding::kUtf16Le, TextEncoding::kUtf16Be}) {
    const std::string_view whole = IsUtf16(encoding) ? bytes.substr(0, bytes.size() / 2 * 2) : bytes;
    std::wstring text;
    std::string again;
    AppendDecoded(whole, encoding, &text);
    Require(AppendEncoded(text, encoding, &again), "what was read can be written");
    if (encoding != TextEncoding::kUtf8 || IsValidUtf8(whole)) Require(again == whole, "as it was");
  }
}

void RequireNumber(const std::string& word) {
  const std::optional<double> number = ParseWholeNumber(std::wstring(word.begin(), word.end()));
  if (!number) return;
  char* end = nullptr;
  Require(Same(std::strtod(word.c_str(), &end), *number) && *end == '\0',
          "a number as the C library reads it");
  Require(std::isfinite(*number), "no infinity");
  for (const int decimals : {0, 2, 3, 4, 6}) {
    char text[512];
    std::snprintf(text, sizeof text, "%.*f", decimals, *number);
    Require(FormatFixed(*number, decimals) == text, "decimals as the C library writes them");
  }
  const std::string shortest = FormatShortest(*number);
  Require(Same(std::strtod(shortest.c_str(), nullptr), *number), "the shortest text reads back");
  if (std::fabs(*number) > 1e9) return;
  for (const bool km : {false, true}) {
    const std::optional<double> station = ParseStation(StationText(*number, km));
    Require(station && std::fabs(*station - *number) < 0.001, "a station reads back");
  }
}

// Both ways of reading plain lines agree; the target of alignments compares them with the general reader.
void RequireLines(std::string bytes, int count) {
  bytes.append(NumberLines::kSlack, '\n');
  NumberLines wide(count, HasWideLanes()), narrow(count, false);
  std::array<double, 4> a{}, b{};
  for (std::string_view rest = bytes; rest.size() > NumberLines::kSlack;) {
    const size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
    const size_t length = wide.Read(rest, &a);
    Require(length == 0 || length == end, "a whole line or none");
    if (length > 0 && narrow.Read(rest, &b) > 0)
      Require(std::equal(a.begin(), a.begin() + count, b.begin(), Same), "the same numbers");
    rest.remove_prefix(end);
  }
}

}  // namespace

void Run(const Input& input) {
  const std::string& bytes = input.File();
  RequireEncodingsKeep(bytes);
  for (size_t start = 0; start < bytes.size();) {
    const size_t end = std::min(bytes.find_first_of(" \t\n\v\f\r", start), bytes.size());
    const std::string word = bytes.substr(start, end - start);
    if (word.find('\0') == std::string::npos) RequireNumber(word);
    if (const auto station = ParseStation(word)) Require(std::isfinite(*station), "a station is finite");
    start = end + 1;
  }
  RequireLines(bytes, 3);
  RequireLines(bytes, 4);
}

}  // namespace velmora::fuzz
