// The working area of a project, from the lines of its area file and back. The file is described in
// vag2.h.
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

// Reads the lines of an area file, in order from the first.
class AreaLines {
 public:
  explicit AreaLines(WorkingArea* area) : area_(area) {}

  // Takes a line without its line end. False when reading ends: all three lines are read, or one is not a
  // pair of numbers.
  bool Next(std::wstring_view line);
  // How many of the three lines have been read.
  int Read() const { return read_; }
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
