// The working area of a project, from the lines of its area file and back, and what is wrong with the file,
// which is described in vag2.h.
#ifndef VELMORA_ALIGNMENT_AREA_FILE_H_
#define VELMORA_ALIGNMENT_AREA_FILE_H_

#include <string_view>

#include "velmora/common/finding.h"
#include "velmora/project/proj_path.h"
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

// Why CVag2::ReadOmr would not read the working area or its alignment, or would read the alignment outside
// the project, and limits that no point is between. Empty for a project without an area file.
Findings CheckArea(const CProjPath& project);

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_AREA_FILE_H_
