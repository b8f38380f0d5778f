#include "velmora/alignment/stod_punkt.h"

#include "velmora/alignment/support_lines.h"
#include "velmora/common/last_message.h"
#include "velmora/common/messages.h"
#include "velmora/common/text_hooks.h"
#include "velmora/platform/files.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr wchar_t kLevelRecord[] = L"gvy";
constexpr int kExtension = 4;  // characters of ".ext"

bool IsStarRecord(const CString& line) { return line.GetAt(0) == L'*'; }

template <class Number>
void ScanInto(std::wstring_view line, Number* value) {
  (void)NumberScanner(line).Next(value);  // a malformed number leaves the value as it was
}

std::wstring_view FirstWord(std::wstring_view line) {
  line = TrimBlanks(line);
  size_t end = 0;
  while (end < line.size() && !IsBlank(line[end])) ++end;
  return line.substr(0, end);
}

CString PointName(const CString& file) {
  const CString rest = file.Left(file.GetLength() - kExtension);
  const int dollar = rest.ReverseFind(L'$');
  return dollar < 0 ? CString() : rest.Right(dollar + 1);
}

void ScanSixValues(stdpkttype* point) {
  NumberScanner scanner(LastMessageText().GetView());
  for (float& value : point->varden)
    if (!scanner.Next(&value)) return;
}

CString FormatSupportPoint(const stdpkttype& p) {
  CString lines;
  lines.Format(L"%s\n%9.4f\n%6.2f %6.2f %6.2f %6.2f %6.2f %6.2f\n", FieldText(p.namn), p.z, p.varden[0],
               p.varden[1], p.varden[2], p.varden[3], p.varden[4], p.varden[5]);
  return lines;
}

}  // namespace

CStodPunkt::CStodPunkt(const wchar_t* file) {
  if (file == nullptr) return;
  filnamn = file;
  punktnamn = PointName(filnamn);
  TextReader reader;
  bool good = reader.Open(filnamn);
  if (good) {
    good = Read(reader) && !reader.Failed();
    if (!good) Clear();
  }
  unreadable_ = !good && FileOrFolderExists(filnamn);
  if (!good) ShowMessage(FormatForUser(L"Kan ej öppna stödpunkt : %s", filnamn));
}

void CStodPunkt::Clear() {
  DeleteAll();
  huvud1 = huvud2 = huvud3 = huvud4 = huvud5 = 0;
  huvud6 = gvy = 0;
}

// Returns whether the line that ends the header has been read.
bool CStodPunkt::ReadHeader(TextReader& reader) {
  CString line;
  for (double* value : {&huvud1, &huvud2, &huvud3, &huvud4, &huvud5})
    if (reader.ReadLine(&line) && !IsStarRecord(line)) ScanInto(line.GetView(), value);
  if (!reader.ReadLine(&line)) return true;
  if (IsStarRecord(line)) return true;
  ScanInto(line.GetView(), &huvud6);
  return false;
}

// Reads the plain points next in the buffer, up to a line that is not plain.
void CStodPunkt::ReadPlainPoints(TextReader* reader) {
  const std::string_view text = reader->Buffered();
  size_t done = 0;
  stdpkttype point{};
  ScanSixValues(&point);
  while (const size_t length = ReadPlainSupportPoint(text.substr(done), &point)) {
    Ny(1, &point);
    done += length;
  }
  reader->Skip(done);
}

// False for a file of blank lines, whose points would take thirty times its size.
bool CStodPunkt::Read(TextReader& reader) {
  CString line;
  if (!ReadHeader(reader))
    while (reader.ReadLine(&line) && !line.IsEmpty() && !IsStarRecord(line)) {
    }
  for (;;) {
    ReadPlainPoints(&reader);
    if (!reader.ReadLine(&line) || IsStarRecord(line)) return true;
    if (antal > kManyPoints && reader.Consumed() / kFewestBytes < static_cast<std::uint64_t>(antal))
      return false;
    line = ConvertReadLine(line);
    CString next;
    if (line.CompareNoCase(kLevelRecord) == 0) {
      if (reader.ReadLine(&next)) ScanInto(next.GetView(), &gvy);
      (void)reader.ReadLine(&next);  // the empty line after it
      continue;
    }
    Ny(1);
    CopyToField(pael->namn, FirstWord(line.GetView()));
    if (reader.ReadLine(&next)) ScanInto(next.GetView(), &pael->z);
    if (reader.ReadLine(&next) && !next.IsEmpty()) ScanSixValues(pael);
  }
}

int CStodPunkt::Uppdat(const wchar_t* file) {
  const CString target = file == nullptr ? filnamn : CString(file);
  TextWriter writer;
  // A file that could not be read is not replaced by an empty one.
  bool good = !(unreadable_ && target.CompareNoCase(filnamn) == 0) && writer.Begin(target);
  if (good) {
    CString text;
    text.Format(L"%f\n%f\n%f\n", huvud1, huvud2, huvud3);
    writer.Write(text.GetView());
    text.Format(L"%f\n%f\n%f\n*\n", huvud4, huvud5, huvud6);
    writer.Write(text.GetView());
    if (gvy != 0) {
      text.Format(L"%s\n%9.4f\n\n", kLevelRecord, gvy);
      writer.Write(text.GetView());
    }
    SupportLineWriter plain(&writer);
    for (int at = Home(); at == 0; at = (*this)++ == nullptr ? -1 : 0) {
      if (plain.Point(*pael)) continue;
      plain.Flush();
      const CString lines = FormatSupportPoint(*pael);
      writer.Write((konvertera != 0 ? ConvertWrittenLine(lines) : lines).GetView());
    }
    plain.Flush();
    writer.Write(L"*\n");
    good = writer.Commit();
  }
  if (good) return 0;
  ShowMessage(FormatForUser(L"Kan ej skapa/uppdatera stödpunkt : %s", target));
  return -1;
}

}  // namespace velmora
