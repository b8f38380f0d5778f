#include "velmora/alignment/area_file.h"

#include <array>

#include "velmora/common/folder_levels.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/numbers.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

// What is wrong with the alignment's name; empty when nothing is.
std::string AlignmentProblem(const CProjPath& project, const CString& name) {
  if (NamesDevice(name.GetView())) return "has the name of a device, which Windows does not read as a file";
  if (!StaysInsideFolder(name.GetView())) return "leads out of the project";
  return IsFile(JoinPath(project.m_DbfKat, name)) ? "" : "is missing";
}

}  // namespace

bool AreaLines::Next(std::wstring_view line) {
  if (line.starts_with(L'*')) {
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

Findings CheckArea(const CProjPath& project) {
  Findings findings;
  if (!IsFile(project.m_VlPath)) return findings;
  WorkingArea area;
  AreaLines lines(&area);
  TextReader reader;
  CString line;
  std::int64_t number = 0;
  std::int64_t name_line = 0;
  bool goes_on = reader.Open(project.m_VlPath);
  while (goes_on && reader.ReadLine(&line)) {
    ++number;
    goes_on = lines.Next(line.GetView());
    if (name_line == 0 && lines.Read() == 1) name_line = number;
  }
  if (goes_on) ++number;  // the line that is missing
  if (area.file.IsEmpty()) {
    findings.push_back(
        {name_line == 0 ? number : name_line, "names no alignment after its second \"*\" line"});
    return findings;
  }
  if (const std::string problem = AlignmentProblem(project, area.file); !problem.empty())
    findings.push_back({name_line, "the alignment " + Quoted(ToUtf8(area.file)) + " " + problem});
  if (area.station_min > area.station_max)
    findings.push_back({name_line + 1, "the first station is above the last: no point is in the area"});
  if (area.offset_min > area.offset_max)
    findings.push_back({name_line + 2, "the first offset is above the last: no point is in the area"});
  if (!lines.Complete())
    findings.push_back({number, std::string("is not two numbers, the area's first and last ") +
                                    (lines.Read() == 1 ? "station" : "offset")});
  return findings;
}

}  // namespace velmora
