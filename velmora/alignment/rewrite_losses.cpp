#include "velmora/alignment/rewrite_losses.h"

#include <algorithm>
#include <cmath>

#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/geometry.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr std::wstring_view kHeading = L"Profil";

bool IsPoint(LineKind kind) { return kind == LineKind::kPlanPoint || kind == LineKind::kProfilePoint; }

std::wstring_view AfterNumbers(std::wstring_view line, int count) {
  NumberScanner scanner(line);
  for (double ignored = 0; count > 0 && scanner.Next(&ignored); --count) {
  }
  return scanner.Rest();
}

// The first line, of which the numbers, a type of 1 and a name are kept.
void CheckFirstLine(std::wstring_view line, bool is_point, const LineFindings& found) {
  const size_t dollar = line.find(L'$');
  if (dollar != std::wstring_view::npos) {
    const std::wstring_view rest = line.substr(dollar + 1);
    const std::wstring_view name = rest.substr(0, rest.find(L'$'));
    if (name.size() > kLongestName)
      found.Add("only " + std::to_string(kLongestName) + " characters of the name are read", name);
    if (name.size() < rest.size() && !TrimBlanks(rest.substr(name.size() + 1)).empty())
      found.Add("is not read, as it follows the second \"$\"", rest.substr(name.size() + 1));
  }
  if (!is_point) return;
  std::wstring_view between = AfterNumbers(line.substr(0, dollar), 4);
  NumberScanner scanner(between);
  if (int type = 0; scanner.Next(&type)) {
    if (type != kPlanType && type != kProfileType)
      found.Add("is not a type of alignment (" + std::to_string(kPlanType) + " plan, " +
                    std::to_string(kProfileType) + " profile)",
                TrimBlanks(between.substr(0, between.size() - scanner.Rest().size())));
    between = scanner.Rest();
  }
  if (!TrimBlanks(between).empty())
    found.Add("is not read, as it is before the \"$\" or the line's end", TrimBlanks(between));
}

}  // namespace

Findings LineLosses::Check(int number, LineKind kind, const CString& text) {
  Findings findings;
  const LineFindings found{number, &findings};
  const std::wstring_view line = text.GetView();
  const bool is_point = IsPoint(kind);
  if (is_point && line.empty()) return findings;  // plain numbers
  if (number == 1) CheckFirstLine(line, is_point, found);
  if (kind == LineKind::kUnreadable) {
    if (TrimBlanks(line).empty())
      found.Add("empty line, skipped", true, false);
    else
      found.Add("unreadable, skipped", line.substr(0, 120));
    return findings;
  }
  if (is_point) {
    // A line without text has plain numbers and nothing else.
    const int numbers = kind == LineKind::kPlanPoint || separators_ == 0 ? 4 : 3;
    const std::wstring_view rest = TrimBlanks(AfterNumbers(line, numbers));
    if (number > 1 && !rest.empty()) found.Add("is not read, as it follows the numbers", rest);
    return findings;
  }
  ++separators_;
  const std::wstring_view after_star =
      line.starts_with(L'*') ? TrimBlanks(line.substr(1)) : std::wstring_view();
  if (separators_ == 2) {
    if (ParseProfilePoint(line))
      found.Add("is skipped: the profile's heading, \"Profil\", is missing before it", line);
    else if (!line.starts_with(L'*') && !TrimBlanks(line).empty() && TrimBlanks(line) != kHeading)
      found.Add("is written as \"Profil\"", line, false);
  } else if (!line.starts_with(L'*')) {
    found.Add("is skipped: a second \"*\", after the profile's heading, is missing before it", line);
  } else if (!after_star.empty()) {
    found.Add("is not read, as it follows a \"*\"", after_star);
  }
  return findings;
}

void SkippedLines::Add(LineKind kind, const Findings& found) {
  if (IsPoint(kind)) return;
  // An empty line is not lost.
  const auto skipped = std::find_if(found.begin(), found.end(),
                                    [](const Finding& finding) { return finding.misread && finding.lost; });
  if (skipped == found.end()) return;
  if (count_++ == 0) first_ = *skipped;
}

std::optional<Finding> SkippedLines::Note() const {
  std::optional<Finding> note = first_;
  if (count_ > 1) note->text += "; " + std::to_string(count_) + " lines in all, which align info lists";
  return note;
}

ArcShift LargestArcShift(const std::vector<kovltype>& points) {
  constexpr double kWritten = 1e4;
  ArcShift largest;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const kovltype& a = points[i];
    if (IsStraight(a.bulge)) continue;
    const double change = std::fabs(a.bulge - std::round(a.bulge * kWritten) / kWritten);
    // The middle of an arc is |bulge| * chord / 2 from that of its chord.
    const double shift = change * Distance(InPlane(a), InPlane(points[i + 1])) / 2;
    if (shift > largest.metres) largest = {shift, i};
  }
  return largest;
}

}  // namespace velmora
