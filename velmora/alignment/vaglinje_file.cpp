#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/point_lines.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/common/text_hooks.h"
#include "velmora/platform/text_file.h"

namespace velmora {

int CVaglinje::Init(const wchar_t* file) {
  DeleteAll();
  if (file == nullptr) return 0;

  const CString path = file;  // `file` may be our own `filnamn`
  TextReader reader;
  if (!reader.Open(path)) {
    ShowMessage(CannotOpenAlignment(path));
    return -1;
  }
  filnamn = NameOfPath(path);
  namn[0] = L'\0';
  CString line;
  NumberLines plain(4);
  for (bool first = true; reader.ReadLine(&line); first = false) {
    line = ConvertReadLine(line);
    if (first) {
      const FirstLine header = ParseFirstLine(line.GetView());
      if (header.type) typ = *header.type;
      CopyToField(namn, header.name.GetView());
    }
    if (const auto point = ParsePoint(line.GetView()))
      Ny(1, &*point);
    else
      ShowStatus(UnreadableLine(line));
    TakePlainLines(&reader, &plain, [this](const std::array<double, 4>& n) {
      const kovltype point{n[0], n[1], n[2], n[3]};
      Ny(1, &point);
    });
  }
  if (!reader.Failed()) return 0;
  // Half an alignment must not pass for a whole one: it could be written back.
  DeleteAll();
  ShowMessage(CannotOpenAlignment(path));
  return -1;
}

int CVaglinje::Uppdat(const wchar_t* file) {
  TextWriter writer;
  bool good = writer.Begin(file);
  if (good) {
    PointLineWriter lines(&writer);
    if (Home() == 0) writer.Write(FormatFirstLine(*pael, typ, FieldText(namn)).GetView());
    while ((*this)++ != nullptr) lines.PlanPoint(*pael);
    lines.Flush();
    good = writer.Commit();
  }
  if (good) return 0;
  ShowMessage(CannotOpenAlignment(file));
  return -1;
}

}  // namespace velmora
