#include "velmora/alignment/vag2.h"

#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/common/text_hooks.h"

namespace velmora {
namespace {

void Clear(CVaglinje* alignment) {
  if (alignment->Home() < 0) return;
  while (alignment->Delete() == 0) {
  }
}

}  // namespace

CVag2::CVag2() {
  plan.typ = kPlanType;
  profil.typ = kProfileType;
}

int CVag2::Init(const wchar_t* file) {
  Clear(&plan);
  Clear(&profil);
  if (file == nullptr) return 0;
  TextReader reader;
  bool good = reader.Open(file);
  if (good) {
    CopyToField(vlFil, NameOfPath(file).GetView());
    good = Read(reader, [](int, LineKind kind, const CString& line) {
             if (kind == LineKind::kUnreadable) ShowStatus(UnreadableLine(line));
           }) == 0;
  }
  if (good) return 0;
  ShowMessage(CannotOpenAlignment(file));
  return -1;
}

int CVag2::Read(TextReader& reader, const LineSink& sink) {
  Clear(&plan);
  Clear(&profil);
  // The second line can decide what the first one is.
  CString lines[2];
  int known = 0;
  while (known < 2 && reader.ReadLine(&lines[known])) {
    lines[known] = ConvertReadLine(lines[known]);
    ++known;
  }
  CombinedLines format(lines[0].GetView(), lines[1].GetView());
  CopyToField(vlNamn, format.Name().GetView());

  int number = 0;
  const auto take = [&](const CString& line) {
    kovltype point{};
    const LineKind kind = format.Next(line.GetView(), &point);
    if (kind == LineKind::kPlanPoint) plan.Ny(1, &point);
    if (kind == LineKind::kProfilePoint) profil.Ny(1, &point);
    sink(++number, kind, line);
  };
  for (int i = 0; i < known; ++i) take(lines[i]);
  for (CString line; known == 2 && reader.ReadLine(&line);) take(ConvertReadLine(line));

  if (reader.Failed()) {  // half an alignment must not pass for a whole one
    Clear(&plan);
    Clear(&profil);
  }
  plan.Reset();
  profil.Reset();
  return reader.Failed() ? -1 : 0;
}

int CVag2::Uppdat(const wchar_t* file) {
  int plan_points = 0;
  int profile_points = 0;
  plan.Where(&plan_points);
  profil.Where(&profile_points);
  if (plan_points == 0 && profile_points > 0) {
    CopyToField(profil.namn, FieldText(vlNamn));
    return profil.Uppdat(file);
  }
  TextWriter writer;
  bool good = writer.Begin(file);
  if (good) {
    bool first = true;
    for (int at = plan.Home(); at == 0; at = plan++ == nullptr ? -1 : 0, first = false)
      writer.Write(
          (first ? FormatFirstLine(*plan.pael, plan.typ, FieldText(vlNamn)) : FormatPoint(*plan.pael))
              .GetView());
    if (profile_points > 0) writer.Write(L"*\nProfil\n*\n");
    for (int at = profil.Home(); at == 0; at = profil++ == nullptr ? -1 : 0)
      writer.Write(FormatProfilePoint(*profil.pael).GetView());
    good = writer.Commit();
  }
  if (good) return 0;
  ShowMessage(CannotOpenAlignment(file));
  return -1;
}

}  // namespace velmora
