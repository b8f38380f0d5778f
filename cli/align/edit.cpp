#include <cmath>

#include "cli/align/alignment_input.h"
#include "cli/align/check.h"
#include "cli/align/commands.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

void Open(const EditOptions& options, AlignmentInput* input) {
  if (options.to == "-")
    throw Refusal(
        "an alignment is written to a file only; give -o a file name, or omit -o to show the points");
  ReadAlignment(options.file, input);
  RequirePlan(*input);
  const bool in_place = options.to == options.file || SameFile(options.to, options.file);
  if (!options.to.empty() && in_place && input->bad_count > 0)
    throw Refusal(At(options.file, input->bad_lines[0].number,
                     "this line is not a point and would be lost (" + std::to_string(input->bad_count) +
                         " such lines in all); give -o another name, or remove it first"));
  if (!options.to.empty() && input->bad_count > 0)
    Warn(At(options.file, input->bad_lines[0].number,
            "this line is not a point and is left out (" + std::to_string(input->bad_count) +
                " such lines in all; velmora align info lists them)"));
}

void ShowPoints(const EditOptions& options, CVaglinje* plan) {
  OutputFile sink("");
  RecordWriter records(sink, options.output.Format(),
                       {{"point", "point", true},
                        {"station", "station", true},
                        {"northing", "northing", true},
                        {"easting", "easting", true},
                        {"bulge", "bulge", true}});
  std::int64_t number = 0;
  for (int at = plan->Home(); at == 0; at = (*plan)++ == nullptr ? -1 : 0) {
    const kovltype& point = *plan->pael;
    records.Row({++number, StationCell(point.sek, options.output.km), Number{point.x}, Number{point.y},
                 Number{point.bulge, 4}});
  }
  records.Finish();
  sink.Finish();
}

void WriteOrShow(const EditOptions& options, AlignmentInput* input) {
  if (options.to.empty()) {
    ShowPoints(options, &input->set.plan);
    return;
  }
  if (input->set.Uppdat(PathFromSystem(options.to)) < 0)
    throw Refusal(At(options.to,
                     "cannot be written (no such folder, write-protected, or the disk is full); nothing "
                     "was changed there"));
  const PlanMeasures now = MeasurePlan([&] {
    std::vector<kovltype> points;
    CVaglinje& plan = input->set.plan;
    for (int at = plan.Home(); at == 0; at = plan++ == nullptr ? -1 : 0) points.push_back(*plan.pael);
    return points;
  }());
  Warn(At(options.to, "written, stations " + StationText(now.lowest_station, options.output.km) + " to " +
                          StationText(now.highest_station, options.output.km)));
}

// The suite measures a segment by the bulge of its later point, so that its stations leave the lengths of
// the arcs wherever straights and arcs meet.
void WarnAboutArcs(const std::vector<kovltype>& points, CVaglinje* plan) {
  constexpr double kNoticed = 0.001;  // m
  double length = 0;
  double worst = 0;
  plan->Home();
  const double start = plan->pael->sek;
  for (size_t i = 0; i + 1 < points.size() && (*plan)++ != nullptr; ++i) {
    length += SegmentLength(points[i], points[i + 1]);
    worst = std::max(worst, std::fabs(plan->pael->sek - start - length));
  }
  if (worst > kNoticed)
    Warn("stations differ by up to " + FormatFixed(worst, 3) +
         " m from the true lengths of the arcs: the suite measures each segment by the bulge of its later "
         "point");
}

}  // namespace

void AlignStations(const EditOptions& options) {
  AlignmentInput input;
  Open(options, &input);
  input.set.plan.SektBerak(options.start);
  WarnAboutArcs(input.plan, &input.set.plan);
  if (!input.profile.empty())
    Warn(At(options.file, "the profile keeps its stations " +
                              StationText(input.profile.front().y, options.output.km) + " to " +
                              StationText(input.profile.back().y, options.output.km)));
  WriteOrShow(options, &input);
}

void AlignShift(const EditOptions& options) {
  AlignmentInput input;
  Open(options, &input);
  const double before = input.plan.front().sek;
  if (input.set.plan.SektKorr(options.x, options.y, options.station) < 0)
    throw Refusal(At(options.file, "no point within 1 mm of " + FormatFixed(options.x, 3) + "," +
                                       FormatFixed(options.y, 3) +
                                       "; give --at the northing and easting of a point"));
  // The profile runs by the same stations.
  input.set.plan.Home();
  const double shift = before - input.set.plan.pael->sek;
  CVaglinje& profile = input.set.profil;
  for (int at = profile.Home(); at == 0; at = profile++ == nullptr ? -1 : 0) {
    profile.pael->y -= shift;
    profile.pael->sek -= shift;
  }
  WriteOrShow(options, &input);
}

void AlignExtend(const EditOptions& options) {
  if (options.before == 0 && options.after == 0)
    throw Refusal("nothing to extend: give --before M, --after M or both");
  AlignmentInput input;
  Open(options, &input);
  if (input.Descending())
    throw Refusal(
        At(options.file,
           "its stations are descending; only an alignment with ascending stations can be extended"));
  for (size_t i = 1; i < input.plan.size(); ++i)
    if (!(input.plan[i].sek > input.plan[i - 1].sek))
      throw Refusal(
          At(options.file, input.plan_lines[i],
             "station " + StationText(input.plan[i].sek, options.output.km) +
                 " is not above the previous one, and the ends are located by station; recompute the "
                 "stations first (velmora align stations)"));
  if (input.set.plan.Extend(options.before, options.after) < 0)
    throw Refusal(At(options.file,
                     "a new end cannot be placed: half a metre of stations must lie on the alignment at "
                     "that end, and its points must not coincide"));
  Warn(
      "each new end point lies half a metre closer than its station says: the suite measures it from a "
      "point half a metre inside the alignment");
  WriteOrShow(options, &input);
}

}  // namespace velmora::cli
