#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/area_file.h"
#include "velmora/alignment/vag2.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

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

}  // namespace

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
