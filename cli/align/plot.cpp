#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/align/swapped_points.h"
#include "cli/input/list_notes.h"
#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/svg_canvas.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/point_list.h"
#include "velmora/lists/repeated_ids.h"

namespace velmora::cli {
namespace {

struct Borings {
  std::vector<drawing::PlotBoring> drawn;
  std::string problem;             // the rows that are not points; empty when there are none
  std::vector<std::string> notes;  // on those that are
  bool most_swapped = false;
};

Borings ReadBorings(const PlotOptions& options, AlignmentInput* input) {
  Borings borings;
  PointList points(options.points, options.list);
  WarnOf(options.points, points.TakeNotes());
  const Placer placer(input, 0, std::nullopt, options.max_offset);
  Progress progress("Placing borings", points.Size());
  RepeatedIds ids;
  std::uint64_t rows = 0;
  std::int64_t unreadable = 0;
  std::int64_t too_far = 0;
  std::string first_problem;
  std::string first_far;
  Corrections corrections;
  SwappedPoints swapped(MeasurePlan(input->plan).bounds);
  for (ListedPoint point; points.Next(&point);) {
    progress.Update(points.Consumed(), ++rows);
    ids.Add(point.id, point.line);
    if (!point.problem.empty()) {
      if (unreadable++ == 0) first_problem = At(options.points, point.line, point.problem);
      continue;
    }
    drawing::PlotBoring boring{point.id, point.northing, point.easting, point.level};
    if (input->plan.size() >= 2) {
      swapped.Add(point.line, point.northing, point.easting);
      Placing placing;
      placer.Place(&point.northing, &point.easting, 1, &placing);
      corrections.Add(point.line, point.northing, point.easting, placing, &placer);
      boring.placed = placing.status == PlaceStatus::kOn;
      boring.too_far = placing.status == PlaceStatus::kFar;
      boring.station = placing.station;
      boring.offset = placing.offset;
      if (boring.too_far && too_far++ == 0)
        first_far = At(options.points, point.line, "offset " + OffsetText(placing.offset));
    }
    borings.drawn.push_back(std::move(boring));
  }
  progress.Clear();
  WarnOf(options.points, points.TakeNotes());
  WarnOf(options.points, ids.Note());
  if (unreadable > 0)
    borings.problem = first_problem + "; " + std::to_string(unreadable) +
                      (unreadable == 1 ? " row is" : " rows are") +
                      " not in the drawing, correct and run again";
  swapped.Report(options.points, options.list);
  borings.most_swapped = swapped.AreMost();
  if (const auto note = corrections.Note(options.points, options.km)) borings.notes.push_back(*note);
  if (too_far > 0)
    borings.notes.push_back(first_far + " is far from the road; " + std::to_string(too_far) +
                            (too_far == 1 ? " boring is" : " borings are") +
                            " not in the profile (--max-offset gives the greatest offset)");
  return borings;
}

}  // namespace

void AlignPlot(const PlotOptions& options) {
  if (options.file == "-" && options.points == "-")
    throw WrongUsage("only one of FILE and --points can be standard input");
  RequireEnding(options.to, "a drawing", {".svg"});
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  drawing::PlotInput drawing;
  drawing.name = input.Name();
  drawing.file =
      options.file == "-" ? std::string() : PathForDisplay(NameOfPath(PathFromSystem(options.file)));
  drawing.km_stations = options.km;
  drawing.max_offset = options.max_offset;
  Borings borings;
  if (!options.points.empty()) borings = ReadBorings(options, &input);
  drawing.borings = std::move(borings.drawn);
  drawing.plan = std::move(input.plan);
  drawing.profile = std::move(input.profile);
  std::vector<std::string> inputs = {options.file};
  if (!options.points.empty()) inputs.push_back(FileOfList(options.points));
  OutputFile output(options.to, inputs);
  drawing::SvgCanvas canvas;
  drawing::DrawAlignment(drawing, canvas);
  output.Write(canvas.Finish());
  output.Finish();
  for (const std::string& note : borings.notes) Warn(note);
  if (borings.problem.empty() && !borings.most_swapped) return;
  if (!borings.problem.empty()) Warn(borings.problem);
  throw ExitWith{1};
}

}  // namespace velmora::cli
