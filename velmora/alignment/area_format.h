// The working area of a project, from the lines of its area file and back. The file is described in
// vag2.h. No files, no state beyond AreaLines' section.
#ifndef VELMORA_ALIGNMENT_AREA_FORMAT_H_
#define VELMORA_ALIGNMENT_AREA_FORMAT_H_

#include <string_view>

#include "velmora/text/string.h"

namespace velmora {

struct WorkingArea {
  CString file;  // the alignment file's name
  double station_min = 0;
  double station_max = 0;
  double offset_min = 0;
  double offset_max = 0;
};

// Takes a file's lines one after the other from the first.
class AreaLines {
 public:
  explicit AreaLines(WorkingArea* area) : area_(area) {}

  // A line without its line end. False when no further one is wanted: all three are read, or one is no pair
  // of numbers.
  bool Next(std::wstring_view line);
  // Whether all three lines have been read.
  bool Complete() const { return read_ == 3; }

 private:
  WorkingArea* area_;
  int stars_ = 0;
  int read_ = 0;
};

// The three lines of the area.
CString FormatArea(const WorkingArea& area);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_AREA_FORMAT_H_
