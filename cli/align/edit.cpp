#include <algorithm>
#include <cmath>

#include "cli/align/alignment_input.h"
#include "cli/align/commands.h"
#include "cli/context/losses.h"
#include "cli/output/ending.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/rewrite_losses.h"
#include "velmora/alignment/station_text.h"
#include "velmora/platform/files.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

void Open(const EditOptions& options, AlignmentInput* input) {
  if (options.to == "-")
    throw Refusal(
        "an alignment is written to a file only; give -o a file name, or omit -o to show the points");
  std::vector<std::string> endings = {".vl"};
  if (const std::string own = EndingOf(options.file); !own.empty() && own != ".vl") endings.push_back(own);
  RequireEnding(options.to, "an alignment", endings);
  ReadAlignment(options.file, input);
  RequirePlan(*input);
  if (options.to.empty()) return WarnOfSkippedLines(*input);
  if (input->tail && !IsSameFile(PathFromSystem(options.file), PathAsSpelled(options.to)))
    input->losses.Add({0, "holds text after an end-of-file character (1A), which is never read"});
  RefuseLosses(options.file, input->losses.listed, options.force, input->losses.left_out);
}

void ShowPoints(const EditOptions& options, const CVaglinje& plan) {
  OutputFile output;
  RecordWriter records(output, options.output.Format(),
                       {{"point", "point", true},
                        {"station", "station", true},
                        {"northing", "northing", true},
                        {"easting", "easting", true},
                        {"bulge", "bulge", true}});
  std::int64_t number = 0;
  for (const kovltype& point : plan.Points())
    records.Row({++number, StationCell(point.sek, options.output.km), Number{point.x}, Number{point.y},
                 Number{point.bulge, 4}});
  records.Finish();
  output.Finish();
}

// What writing the bulges changes, for a user; empty when nothing that shows. Throws a Refusal, unless
// forced, when it is much.
std::string RoundingOfBulges(const std::vector<kovltype>& plan, const std::vector<kovltype>& profile,
                             const EditOptions& options) {
  constexpr double kNoticed = 0.00005;  // m, as coordinates are rounded
  constexpr double kMost = 0.001;
  const ArcShift in_plan = LargestArcShift(plan);
  const ArcShift in_profile = LargestArcShift(profile);
  const bool of_plan = in_plan.metres >= in_profile.metres;
  const ArcShift& largest = of_plan ? in_plan : in_profile;
  if (largest.metres < kNoticed) return "";
  const std::string rounding = "four decimals of its bulge move the middle of the " +
                               std::string(of_plan ? "" : "profile's ") + "arc at station " +
                               StationText((of_plan ? plan : profile)[largest.point].sek, options.output.km) +
                               " by " + FormatFixed(largest.metres * 1000, 1) + " mm";
  if (largest.metres > kMost && !options.force)
    throw Refusal(At(options.file, rounding + ", so nothing was written; write anyway with --force"));
  return "; " + rounding;
}

// A station or coordinate that is too large for a number would be written as a word that is not read.
void RequireFinite(const EditOptions& options, const std::string& what, const std::vector<kovltype>& points) {
  for (size_t i = 0; i < points.size(); ++i)
    if (const kovltype& p = points[i];
        !std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.bulge) || !std::isfinite(p.sek))
      throw Refusal(
          At(options.file, what + std::to_string(i + 1) +
                               " would get a station or coordinate that is too large, so nothing was "
                               "written; correct the points in an editor"));
}

void WriteOrShow(const EditOptions& options, AlignmentInput* input) {
  if (options.to.empty()) {
    ShowPoints(options, input->set.plan);
    return;
  }
  const std::vector<kovltype> points = input->set.plan.Points();
  const std::vector<kovltype> profile = input->set.profil.Points();
  RequireFinite(options, "point ", points);
  RequireFinite(options, "profile point ", profile);
  const std::string rounding = RoundingOfBulges(points, profile, options);
  if (input->set.Uppdat(PathAsSpelled(options.to)) < 0) RefuseUnwritable(options.to);
  const PlanMeasures now = MeasurePlan(points);
  Warn(At(options.to, "written, stations " + StationText(now.lowest_station, options.output.km) + " to " +
                          StationText(now.highest_station, options.output.km) + rounding));
}

// The suite measures a segment by the bulge of its later point, so that its stations differ from the lengths
// of the arcs wherever straights and arcs meet. An arc that ends beside an axis through its centre is
// measured from a quarter of the circle away.
void WarnAboutArcs(const AlignmentInput& input) {
  constexpr double kNoticed = 0.001;  // m
  const std::vector<kovltype> points = input.set.plan.Points();
  const StationErrors errors = FindStationErrors(points);
  if (!(errors.greatest > kNoticed)) return;
  std::string text =
      "stations differ by up to " + FormatFixed(errors.greatest, 3) + " m from the lengths along the line";
  if (errors.later_bulge) {
    const size_t to = *errors.later_bulge + 1;
    text += ": the suite measures each segment by the bulge of its later point, first that to line " +
            std::to_string(input.plan_lines[to]) +
            (std::fabs(points[to].bulge) >= 1 ? ", as an arc of half a circle or more" : "");
  }
  if (errors.beside_axis) {
    text += errors.later_bulge ? "; and" : ": the suite measures";
    text +=
        " an arc that ends beside an axis through its centre a quarter of the circle too long or too short, "
        "first that to line " +
        std::to_string(input.plan_lines[*errors.beside_axis + 1]);
  }
  Warn(At(input.file, text));
}

// How far inside an end the point lies from which the suite measures a new end point there: half a metre of
// stations. Refuses a length that would lead back into the alignment.
double InsideEnd(AlignmentInput* input, bool start, double length) {
  constexpr double kHalfMetre = 0.5;
  constexpr double kLeastRemaining = 0.01;  // m between the old end and the new one
  constexpr double kSlack = 1e-6;           // m
  const kovltype& end = start ? input->plan.front() : input->plan.back();
  PlanePoint inside{};
  if (input->set.plan.Vag2xy(end.sek + (start ? kHalfMetre : -kHalfMetre), 0, &inside.v, &inside.h) < 0)
    return 0;
  const double distance = Distance(InPlane(end), inside);
  // Rounded up to what is printed.
  const double least = std::ceil((std::max(kHalfMetre, distance) + kLeastRemaining - kSlack) * 1000) / 1000;
  if (length > 0 && length < least - kSlack)
    throw Refusal(At(input->file,
                     FormatShortest(length) + " m " + (start ? "before the start" : "after the end") +
                         " would fold the line back or leave the end where it is: the suite measures the "
                         "new end from a point " +
                         LengthText(distance) + " inside the alignment; give at least " + LengthText(least)));
  return distance;
}

}  // namespace

void AlignStations(const EditOptions& options) {
  AlignmentInput input;
  Open(options, &input);
  input.set.plan.SektBerak(options.start);
  WarnAboutArcs(input);
  if (!input.profile.empty()) {
    const ProfileMeasures profile = MeasureProfile(input.profile);
    Warn(At(options.file, "the profile keeps its stations " +
                              StationText(profile.first_station, options.output.km) + " to " +
                              StationText(profile.last_station, options.output.km)));
  }
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
  // The profile has the same stations.
  const double shift = before - input.set.plan.Points().front().sek;
  CVaglinje& profile = input.set.profil;
  for (int at = profile.Home(); at == 0; at = profile++ == nullptr ? -1 : 0) {
    profile.pael->y -= shift;
    profile.pael->sek -= shift;
  }
  WriteOrShow(options, &input);
}

void AlignExtend(const EditOptions& options) {
  if (options.before == 0 && options.after == 0)
    throw WrongUsage("nothing to extend: give --before M, --after M or both");
  AlignmentInput input;
  Open(options, &input);
  if (IsDescending(input.plan))
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
  const double inside_start = InsideEnd(&input, true, options.before);
  const double inside_end = InsideEnd(&input, false, options.after);
  if (input.set.plan.Extend(options.before, options.after) < 0)
    throw Refusal(At(options.file,
                     "a new end cannot be placed: half a metre of stations must lie on the alignment at "
                     "that end, and its points must not coincide"));
  const auto report = [](const char* end, double length, double inside) {
    if (length > 0)
      Warn("the new " + std::string(end) + " lies " + LengthText(length - inside) + " from the old one, " +
           LengthText(inside) +
           " nearer than its station says: the suite measures it from a point half a metre "
           "of stations inside the alignment");
  };
  report("start", options.before, inside_start);
  report("end", options.after, inside_end);
  WriteOrShow(options, &input);
}

}  // namespace velmora::cli
