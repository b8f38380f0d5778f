// The points of a combined alignment file, line by line, for those who keep them in lists of their own.
#ifndef VELMORA_ALIGNMENT_COMBINED_READER_H_
#define VELMORA_ALIGNMENT_COMBINED_READER_H_

#include <array>

#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/point_lines.h"
#include "velmora/common/text_hooks.h"
#include "velmora/platform/text_file.h"

namespace velmora {

// Calls add(kind, point) for each point and then report(number, kind, line) as LineReport does, for every
// line. Returns the name on the first line. What was added counts only when the reader has not failed.
// Inlined, so that a report that ignores points costs nothing.
template <class Add, class Report>
CString ReadCombined(TextReader& reader, Add add, Report report) {
  CString first;
  if (!reader.ReadLine(&first)) return CString();
  first = ConvertReadLine(first);
  CombinedLines format(first.GetView());
  CString line;
  const bool has_second = format.IsOpen() && reader.ReadLine(&line);
  if (has_second) {
    line = ConvertReadLine(line);
    format.DecideBy(line.GetView());
  }

  int number = 0;
  const auto take = [&](const CString& text) {
    kovltype point{};
    const LineKind kind = format.Next(text.GetView(), &point);
    if (kind == LineKind::kPlanPoint || kind == LineKind::kProfilePoint) add(kind, point);
    report(++number, kind, text);
  };
  take(first);
  if (has_second) take(line);
  NumberLines four(4);
  NumberLines three(3);
  const CString no_text;
  for (;;) {
    const LineKind kind = format.PointKind();
    const auto take_point = [&](const kovltype& point) {
      add(kind, point);
      report(++number, kind, no_text);
    };
    if (format.NumbersALine() == 4)
      TakePlainLines(&reader, &four, [&](const std::array<double, 4>& n) {
        take_point({n[0], n[1], n[2], n[3]});
      });
    else if (format.NumbersALine() == 3)
      TakePlainLines(&reader, &three, [&](const std::array<double, 4>& n) {
        take_point({n[0], n[1], n[2], n[1]});
      });
    if (!reader.ReadLine(&line)) break;
    take(ConvertReadLine(line));
  }
  return format.Name();
}

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_COMBINED_READER_H_
