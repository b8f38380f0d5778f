#include "velmora/alignment/area_format.h"

#include <array>

#include "velmora/text/numbers.h"

namespace velmora {

bool AreaLines::Next(std::wstring_view line) {
  if (!line.empty() && line.front() == L'*') {
    ++stars_;
    return true;
  }
  if (stars_ != 2) return true;
  if (read_ == 0) {
    area_->file = CString(line);
    ++read_;
    return true;
  }
  std::array<double, 2> pair;
  if (ScanNumbers(line, pair) < pair.size()) return false;
  (read_ == 1 ? area_->station_min : area_->offset_min) = pair[0];
  (read_ == 1 ? area_->station_max : area_->offset_max) = pair[1];
  return ++read_ < 3;
}

CString FormatArea(const WorkingArea& area) {
  CString lines;
  lines.Format(L"%s\n%.3lf %.3lf\n%.3lf %.3lf\n", area.file, area.station_min, area.station_max,
               area.offset_min, area.offset_max);
  return lines;
}

}  // namespace velmora
