#include "velmora/text/nearest.h"

#include <algorithm>
#include <array>

#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

constexpr size_t kLongest = 64;

std::wstring Lower(std::string_view text) {
  std::wstring lower = WideFromUtf8(text.substr(0, 4 * kLongest));
  for (wchar_t& c : lower) c = LowerLetter(c);
  return lower;
}

// Row i of the table holds the distances of the first i letters of `a` from the starts of `b`.
size_t Distance(std::wstring_view a, std::wstring_view b) {
  std::array<std::array<size_t, kLongest + 1>, 3> rows{};
  for (size_t k = 0; k <= b.size(); ++k) rows[0][k] = k;
  for (size_t i = 1; i <= a.size(); ++i) {
    const auto& before = rows[(i - 1) % 3];
    auto& row = rows[i % 3];
    row[0] = i;
    for (size_t k = 1; k <= b.size(); ++k) {
      row[k] = std::min({before[k] + 1, row[k - 1] + 1, before[k - 1] + (a[i - 1] == b[k - 1] ? 0U : 1U)});
      if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1])
        row[k] = std::min(row[k], rows[(i - 2) % 3][k - 2] + 1);
    }
  }
  return rows[a.size() % 3][b.size()];
}

}  // namespace

std::string Nearest(std::string_view word, const std::vector<std::string>& known) {
  const std::wstring given = Lower(word);
  std::string nearest;
  if (given.size() < 3 || given.size() > kLongest) return nearest;
  size_t limit = std::max<size_t>(given.size() / 4, 1);
  for (const std::string& each : known) {
    if (each == word) return {};
    const std::wstring other = Lower(each);
    if (other.size() < 2 || other.size() > kLongest) continue;
    const size_t distance = Distance(given, other);
    if (distance > limit || (distance == limit && !nearest.empty())) continue;
    nearest = each;
    limit = distance;
  }
  return nearest;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& known) {
  const std::string nearest = Nearest(word, known);
  return nearest.empty() ? "" : "; did you mean " + Quoted(nearest) + "?";
}

}  // namespace velmora
