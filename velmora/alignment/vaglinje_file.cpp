#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/common/text_hooks.h"
#include "velmora/platform/text_file.h"

namespace velmora {

int CVaglinje::Init(const wchar_t* file) {
  Home();
  while (antal > 0) Delete();
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
  }
  if (!reader.Failed()) return 0;
  // Half an alignment must not pass for a whole one: it could be written back.
  Home();
  while (antal > 0) Delete();
  ShowMessage(CannotOpenAlignment(path));
  return -1;
}

int CVaglinje::Uppdat(const wchar_t* file) {
  TextWriter writer;
  bool good = writer.Begin(file);
  if (good) {
    for (int at = Home(); at == 0; at = (*this)++ == nullptr ? -1 : 0)
      writer.Write((pos == 1 ? FormatFirstLine(*pael, typ, FieldText(namn)) : FormatPoint(*pael)).GetView());
    good = writer.Commit();
  }
  if (good) return 0;
  ShowMessage(CannotOpenAlignment(file));
  return -1;
}

}  // namespace velmora
