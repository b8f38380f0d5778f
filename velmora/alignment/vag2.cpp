#include "velmora/alignment/vag2.h"

#include "velmora/alignment/combined_reader.h"
#include "velmora/common/messages.h"
#include "velmora/common/paths.h"
#include "velmora/common/text_hooks.h"

namespace velmora {
namespace {

void Clear(CVaglinje* alignment) { alignment->Init(nullptr); }

}  // namespace

CVag2::CVag2() {
  plan.typ = kPlanType;
  profil.typ = kProfileType;
}

// `report` as a LineReport; inlined, so that one that ignores points costs nothing.
template <class Report>
int CVag2::ReadLines(TextReader& reader, Report report) {
  Clear(&plan);
  Clear(&profil);
  const CString name = ReadCombined(
      reader,
      [this](LineKind kind, const kovltype& point) {
        (kind == LineKind::kPlanPoint ? plan : profil).Ny(1, &point);
      },
      report);
  CopyToField(vlNamn, name.GetView());
  if (reader.Failed()) {  // half an alignment must not pass for a whole one
    Clear(&plan);
    Clear(&profil);
  }
  plan.Reset();
  profil.Reset();
  return reader.Failed() ? -1 : 0;
}

int CVag2::Init(const wchar_t* file) {
  Clear(&plan);
  Clear(&profil);
  if (file == nullptr) return 0;
  TextReader reader;
  bool good = reader.Open(file);
  if (good) {
    CopyToField(vlFil, NameOfPath(file).GetView());
    good = ReadLines(reader, [](int, LineKind kind, const CString& line) {
             if (kind == LineKind::kUnreadable) ShowStatus(UnreadableLine(line));
           }) == 0;
  }
  if (good) return 0;
  ShowMessage(CannotOpenAlignment(file));
  return -1;
}

int CVag2::Read(TextReader& reader, const LineReport& report) { return ReadLines(reader, report); }

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
    PointLineWriter lines(&writer);
    if (plan.Home() == 0) writer.Write(FormatFirstLine(*plan.pael, plan.typ, FieldText(vlNamn)).GetView());
    if (plan_points > 0)
      while (plan++ != nullptr) lines.PlanPoint(*plan.pael);
    lines.Flush();
    if (profile_points > 0) writer.Write(L"*\nProfil\n*\n");
    for (int at = profil.Home(); at == 0; at = profil++ == nullptr ? -1 : 0) lines.ProfilePoint(*profil.pael);
    lines.Flush();
    good = writer.Commit();
  }
  if (good) return 0;
  ShowMessage(CannotOpenAlignment(file));
  return -1;
}

}  // namespace velmora
