#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/align/point_list.h"
#include "cli/input/repeated_ids.h"
#include "cli/output/output_file.h"
#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/svg_canvas.h"

namespace velmora::cli {
namespace {

// `problem` describes the rows that are not points; empty when there are none.
std::vector<drawing::PlotBoring> ReadBorings(const PlotOptions& options, AlignmentInput* input,
                                             std::string* problem) {
  std::vector<drawing::PlotBoring> borings;
  PointList points(options.points, options.list);
  points.Report();
  const Placer placer(input, 0, std::nullopt);
  Progress progress("Placing borings", points.Size());
  RepeatedIds ids;
  std::uint64_t rows = 0;
  std::int64_t unreadable = 0;
  std::string first_problem;
  for (ListedPoint point; points.Next(&point);) {
    progress.Update(points.Consumed(), ++rows);
    ids.Add(point.id, point.line);
    if (!point.problem.empty()) {
      if (unreadable++ == 0) first_problem = At(options.points, point.line, point.problem);
      continue;
    }
    drawing::PlotBoring boring{point.id, point.northing, point.easting, point.level};
    if (input->plan.size() >= 2) {
      Placing placing;
      placer.Place(&point.northing, &point.easting, 1, &placing);
      boring.placed = placing.status == PlaceStatus::kOn;
      boring.station = placing.station;
      boring.offset = placing.offset;
    }
    borings.push_back(std::move(boring));
  }
  progress.Clear();
  ids.Report(options.points);
  if (unreadable > 0)
    *problem = first_problem + "; " + std::to_string(unreadable) +
               (unreadable == 1 ? " row is" : " rows are") + " not in the drawing, correct and run again";
  return borings;
}

}  // namespace

void AlignPlot(const PlotOptions& options) {
  if (options.file == "-" && options.points == "-")
    throw Refusal("only one of FILE and --points can be standard input");
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  drawing::PlotInput drawing;
  drawing.name = input.Name();
  drawing.file =
      options.file == "-" ? std::string() : PathForDisplay(NameOfPath(PathFromSystem(options.file)));
  drawing.km_stations = options.km;
  std::string problem;
  if (!options.points.empty()) drawing.borings = ReadBorings(options, &input, &problem);
  drawing.plan = std::move(input.plan);
  drawing.profile = std::move(input.profile);
  std::vector<std::string> inputs = {options.file};
  if (!options.points.empty()) inputs.push_back(options.points);
  OutputFile output(options.to, inputs);
  drawing::SvgCanvas canvas;
  drawing::DrawAlignment(drawing, canvas);
  output.Write(canvas.Finish());
  output.Finish();
  if (problem.empty()) return;
  Warn(problem);
  throw ExitWith{1};
}

}  // namespace velmora::cli
