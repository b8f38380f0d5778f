#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/area_check.h"
#include "velmora/alignment/area_format.h"
#include "velmora/alignment/vag2.h"
#include "velmora/common/folder_levels.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

constexpr wchar_t kTemporaryName[] = L"vl.tmp";

// Copies the lines up to and including the second that begins with "*".
bool CopyForeignPart(TextReader* reader, TextWriter* writer) {
  int stars = 0;
  CString line;
  while (stars < 2 && reader->ReadLine(&line)) {
    if (line.GetAt(0) == L'*') ++stars;
    writer->Write((line += L'\n').GetView());
  }
  return !reader->Failed();
}

// What is wrong with the alignment's name; empty when nothing is.
std::string AlignmentProblem(const CProjPath& project, const CString& name) {
  if (NamesDevice(name.GetView())) return "has the name of a device, which Windows does not read as a file";
  if (!StaysInsideFolder(name.GetView())) return "leads out of the project";
  return IsFile(JoinPath(project.m_DbfKat, name)) ? "" : "is missing";
}

}  // namespace

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

int CVag2::ReadOmr(CProjPath* project) {
  TextReader reader;
  if (!IsFile(project->m_VlPath) || !reader.Open(project->m_VlPath)) return -1;
  WorkingArea area{FieldText(vlFil), omrSekMin, omrSekMax, omrAvstMin, omrAvstMax};
  AreaLines lines(&area);
  CString line;
  while (reader.ReadLine(&line) && lines.Next(line.GetView())) {
  }
  CopyToField(vlFil, area.file.GetView());
  omrSekMin = area.station_min;
  omrSekMax = area.station_max;
  omrAvstMin = area.offset_min;
  omrAvstMax = area.offset_max;
  if (reader.Failed() || !lines.Complete() || vlFil[0] == L'\0') return -1;
  const CString file = JoinPath(project->m_DbfKat, FieldText(vlFil));
  if (IsFile(file)) return Init(file) < 0 ? -1 : 0;
  Init(nullptr);
  ShowMessage(CannotOpenAlignment(file));
  return -1;
}

int CVag2::SaveOmr(CProjPath* project) {
  TextWriter writer;
  if (!writer.Begin(project->m_VlPath, JoinPath(project->m_DbfKat, kTemporaryName))) return -1;
  // Begin() holds the lock: nobody else replaces the file before Commit(). A file that exists and cannot be
  // read is left alone, as it holds the lines of other programs.
  TextReader reader;
  const bool exists = FileOrFolderExists(project->m_VlPath);
  if (exists && !reader.Open(project->m_VlPath)) return -1;
  if (!exists)
    writer.Write(L"*\n*\n");
  else if (!CopyForeignPart(&reader, &writer))
    return -1;
  writer.Write(FormatArea({FieldText(vlFil), omrSekMin, omrSekMax, omrAvstMin, omrAvstMax}).GetView());
  reader = TextReader();  // the file it reads is about to be replaced
  return writer.Commit() ? 0 : -1;
}

}  // namespace velmora
