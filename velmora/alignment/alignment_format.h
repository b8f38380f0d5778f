// The lines of alignment files, to records and back. Pure functions, but for the section that CombinedLines
// keeps.
//
// Single alignment file
//   first line := x y bulge sek [type] ['$' name ['$' anything]]
//   line       := x y bulge sek
// Combined file: the same, then optionally
//   '*' anything, a heading ("Profil"), '*', and
//   line       := level station bulge
// Numbers are separated by blanks; what follows the last one is ignored.
#ifndef VELMORA_ALIGNMENT_ALIGNMENT_FORMAT_H_
#define VELMORA_ALIGNMENT_ALIGNMENT_FORMAT_H_

#include <optional>
#include <string_view>

#include "velmora/alignment/alignment_point.h"
#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

inline constexpr int kPlanType = 1;       // the type of a plan, on the first line and in CVaglinje::typ
inline constexpr int kProfileType = 10;   // that of a profile
inline constexpr int kLongestName = 255;  // characters; what follows is cut

// What the first line says.
struct FirstLine {
  std::optional<kovltype> point;  // as ParsePoint
  std::optional<int> type;        // only with a point before it
  CString name;                   // empty without "$"
};
// The name ends at the next "$".
FirstLine ParseFirstLine(std::wstring_view line);

// A point of a plan or of a single file. Nothing when the line does not start with four numbers.
std::optional<kovltype> ParsePoint(std::wstring_view line);
// A point of a combined file's profile: level, station and bulge; `sek` is the station.
std::optional<kovltype> ParseProfilePoint(std::wstring_view line);

// Lines with their line ends, numbers with four decimals. @{
CString FormatFirstLine(const kovltype& point, int type, std::wstring_view name);
CString FormatPoint(const kovltype& point);
CString FormatProfilePoint(const kovltype& point);
// @}

// "Kan ej öppna väglinje : %s"
CString CannotOpenAlignment(const wchar_t* file);
// "Fel rad : %s", the line cut at its first line feed
CString UnreadableLine(const CString& line);

// The kinds of lines in a combined file.
enum class LineKind {
  kPlanPoint,
  kProfilePoint,
  kSeparator,  // a line beginning with "*", and the two that follow the first such line
  kUnreadable,
};

// Classifies the lines of a combined file, in order from the first.
class VELMORA_API CombinedLines {
 public:
  // The first line and, where that leaves open which of the two alignments the lines of four numbers belong
  // to, the second decide it. Both are passed to Next as well. @{
  explicit CombinedLines(std::wstring_view first);
  bool IsOpen() const { return open_; }
  void DecideBy(std::wstring_view second);
  // @}

  // Takes the next line; *point is filled for a point.
  LineKind Next(std::wstring_view line, kovltype* point);

  // The kind that the next line has if it is a point.
  LineKind PointKind() const {
    return !in_profile_ && type_ == kPlanType ? LineKind::kPlanPoint : LineKind::kProfilePoint;
  }
  // How many numbers a point's line has: 4 in the first part, 3 in the profile's section, 0 where the next
  // line is not a point whatever it holds.
  int NumbersALine() const { return to_skip_ > 0 ? 0 : in_profile_ ? 3 : 4; }

  // The name on the first line.
  const CString& Name() const { return name_; }

 private:
  CString name_;
  std::optional<kovltype> first_;  // until it is taken
  int type_ = kPlanType;
  bool open_ = false;
  bool in_profile_ = false;
  int to_skip_ = 0;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_ALIGNMENT_FORMAT_H_
