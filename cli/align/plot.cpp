#include "cli/align/commands.h"
#include "cli/align/placed_borings.h"
#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/svg_canvas.h"
#include "velmora/lists/list_source.h"

namespace velmora::cli {

void AlignPlot(const PlotOptions& options) {
  RequireOneStandardInput(options.file, options.points, "--points");
  RequireEnding(options.to, "a drawing", {".svg"});
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  WarnOfSkippedLines(input);
  drawing::PlotInput drawing;
  drawing.name = input.Name();
  drawing.file = input.FileName();
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
