#include "cli/align/commands.h"
#include "cli/align/placed_borings.h"
#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/svg_canvas.h"
#include "velmora/lists/list_source.h"

namespace velmora::cli {

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
  const BoringList list = {options.points, options.list, options.max_offset, options.km};
  PlacedBorings borings;
  std::vector<std::string> inputs = {options.file};
  if (!list.file.empty()) {
    borings = ReadPlacedBorings(list, &input);
    inputs.push_back(FileOfList(list.file));
  }
  drawing.borings = std::move(borings.points);
  drawing.plan = std::move(input.plan);
  drawing.profile = std::move(input.profile);
  OutputFile output(options.to, inputs);
  drawing::SvgCanvas canvas;
  drawing::DrawAlignment(drawing, canvas);
  output.Write(canvas.Finish());
  output.Finish();
  ReportPlacedBorings(list, borings, "drawing");
}

}  // namespace velmora::cli
