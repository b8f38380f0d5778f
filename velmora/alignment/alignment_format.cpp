#include "velmora/alignment/alignment_format.h"

#include <array>
#include <cmath>
#include <utility>

#include "velmora/common/last_message.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr double kSameStation = 0.1;  // m: in a profile the second number repeats in the fourth

CString NameIn(std::wstring_view line) {
  const size_t dollar = line.find(L'$');
  if (dollar == std::wstring_view::npos) return CString();
  const std::wstring_view rest = line.substr(dollar + 1);
  return CString(rest.substr(0, rest.find(L'$')).substr(0, kLongestName));
}

}  // namespace

FirstLine ParseFirstLine(std::wstring_view line) {
  FirstLine parsed{std::nullopt, std::nullopt, NameIn(line)};
  NumberScanner scanner(line);
  kovltype point{};
  int type = 0;
  for (double* number : {&point.x, &point.y, &point.bulge, &point.sek})
    if (!scanner.Next(number)) return parsed;
  parsed.point = point;
  if (scanner.Next(&type)) parsed.type = type;
  return parsed;
}

std::optional<kovltype> ParsePoint(std::wstring_view line) {
  std::array<double, 4> n;
  if (ScanNumbers(line, n) < n.size()) return std::nullopt;
  return kovltype{n[0], n[1], n[2], n[3]};
}

std::optional<kovltype> ParseProfilePoint(std::wstring_view line) {
  std::array<double, 3> n;
  if (ScanNumbers(line, n) < n.size()) return std::nullopt;
  return kovltype{n[0], n[1], n[2], n[1]};
}

CString FormatFirstLine(const kovltype& point, int type, std::wstring_view name) {
  CString line;
  line.Format(L"%.4lf %.4lf %.4lf %.4lf %d $%s\n", point.x, point.y, point.bulge, point.sek, type, name);
  return line;
}

CString FormatPoint(const kovltype& point) {
  CString line;
  line.Format(L"%.4lf %.4lf %.4lf %.4lf\n", point.x, point.y, point.bulge, point.sek);
  return line;
}

CString FormatProfilePoint(const kovltype& point) {
  CString line;
  line.Format(L"%.4lf %.4lf %.4lf\n", point.x, point.y, point.bulge);
  return line;
}

CString CannotOpenAlignment(const wchar_t* file) {
  return FormatForUser(L"Kan ej öppna väglinje : %s", file);
}

CString UnreadableLine(const CString& line) {
  const int end = line.Find(L'\n');
  return FormatForUser(L"Fel rad : %s", end < 0 ? line : line.Left(end));
}

CombinedLines::CombinedLines(std::wstring_view first) {
  const FirstLine parsed = ParseFirstLine(first);
  name_ = parsed.name;
  first_ = parsed.point;
  if (parsed.type == kProfileType || parsed.type == kPlanType)
    type_ = *parsed.type;
  else
    open_ = first_ && std::fabs(first_->y - first_->sek) <= kSameStation;
}

void CombinedLines::DecideBy(std::wstring_view second) {
  const std::optional<kovltype> point = ParsePoint(second);
  type_ = point && std::fabs(point->y - point->sek) < kSameStation ? kProfileType : kPlanType;
}

LineKind CombinedLines::Next(std::wstring_view line, kovltype* point) {
  if (first_) {
    *point = *std::exchange(first_, std::nullopt);
    return PointKind();
  }
  if (to_skip_ > 0) {
    --to_skip_;
    return LineKind::kSeparator;
  }
  if (line.starts_with(L'*')) {
    if (!in_profile_) to_skip_ = 2;
    in_profile_ = true;
    return LineKind::kSeparator;
  }
  const std::optional<kovltype> read = in_profile_ ? ParseProfilePoint(line) : ParsePoint(line);
  if (!read) return LineKind::kUnreadable;
  *point = *read;
  return PointKind();
}

}  // namespace velmora
