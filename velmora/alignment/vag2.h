// The alignment of a project: a plan and its profile in one file, and the working area, which a small
// file of the project keeps.
//
// Area file: sections separated by lines beginning with "*". The part after the second such line is
//   name of the alignment file, in the project's folder m_DbfKat
//   lowest and highest station
//   smallest and largest offset
// Lines before it belong to other programs and are kept.
#ifndef VELMORA_ALIGNMENT_VAG2_H_
#define VELMORA_ALIGNMENT_VAG2_H_

#include <functional>

#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/export.h"
#include "velmora/platform/text_file.h"
#include "velmora/project/proj_path.h"

namespace velmora {

// Not thread-safe.
class VELMORA_API CVag2 {
 public:
  CVaglinje plan;           // in the map; empty without one
  CVaglinje profil;         // levels along the same stations; empty without one
  wchar_t vlFil[256] = {};  // the alignment file, without folder
  // The working area, m, as in CVaglinje; set by ReadOmr and written by SaveOmr. @{
  double omrSekMin = 0;
  double omrSekMax = 0;
  double omrAvstMin = -30.0;
  double omrAvstMax = 30.0;
  // @}
  wchar_t vlNamn[256] = {};  // the alignment's name

  CVag2();  // empty; the parts have their types
  virtual ~CVag2() = default;

  // Replaces both alignments by those of a combined file (alignment_format.h) and sets their own working
  // areas. Unreadable lines are named in the status bar and skipped. Null only empties both.
  // Returns 0; -1 after a message box, with both empty, when the file cannot be opened or read. @{
  int Init(const wchar_t* file);
  int Init(const CString& file) { return Init(file.GetString()); }
  // @}

  // Called for each line of a file as it is read, numbered from 1; `line` is its text, empty for a point of
  // plain numbers and nothing else.
  using LineReport = std::function<void(int number, LineKind kind, const CString& line)>;
  // The same from an open file, with every line passed to `report` instead of the status bar. Returns 0; -1,
  // with both empty, on a read error.
  int Read(TextReader& reader, const LineReport& report);

  // Writes the combined file, or the profile alone with its type when there is no plan. Results and
  // messages as CVaglinje::Uppdat. @{
  int Uppdat(const wchar_t* file);
  int Uppdat(const CString& file) { return Uppdat(file.GetString()); }
  // @}

  // Reads the area file at m_VlPath and then the alignment it names, wherever that leads. -1 when the file is
  // missing, lacks one of the three lines, or the alignment cannot be read; a device or a pipe counts as one
  // that cannot be opened.
  int ReadOmr(CProjPath* project);
  // Rewrites the area file: what comes up to its second "*" line is kept, lines after the old area are
  // not. Returns 0; -1 with the old file as it was.
  int SaveOmr(CProjPath* project);

 private:
  template <class Report>
  int ReadLines(TextReader& reader, Report report);
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_VAG2_H_
