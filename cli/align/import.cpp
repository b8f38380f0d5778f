#include <algorithm>
#include <cmath>

#include "cli/align/commands.h"
#include "cli/align/exchange_formats.h"
#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/exchange/alignment_text.h"
#include "velmora/exchange/import.h"
#include "velmora/text/counted.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

using exchange::ImportedRoad;

constexpr size_t kListed = 20;

// Why an alignment cannot be imported; null when it can.
const Finding* Obstacle(const ImportedRoad& road) {
  const auto found = std::find_if(road.findings.begin(), road.findings.end(),
                                  [](const Finding& finding) { return finding.misread; });
  return road.refused && found != road.findings.end() ? &*found : nullptr;
}

// The alignments of a file, for the choice with --name.
void List(const std::vector<ImportedRoad>& roads) {
  OutputFile output;
  RecordWriter records(
      output, OutputFormat::kTable,
      {{"name", "name", false}, {"length", "length", true}, {"stations", "stations", false}});
  for (const ImportedRoad& road : roads) {
    const std::vector<kovltype>& plan = road.road.plan;
    const PlanMeasures measures = MeasurePlan(plan);
    const bool stations = road.has_stations && !plan.empty();
    const Finding* const obstacle = Obstacle(road);
    records.Row({road.road.name, obstacle == nullptr ? Cell(Number{measures.length}) : Cell(),
                 obstacle != nullptr ? "refused: " + obstacle->text
                 : stations
                     ? StationText(plan.front().sek, false) + " to " + StationText(plan.back().sek, false)
                     : std::string("none")});
  }
  records.Finish();
  output.Finish();
}

ImportedRoad& Choose(const ImportCommand& options, std::vector<ImportedRoad>* roads) {
  if (roads->empty()) throw Refusal(At(options.file, "holds no alignment"));
  if (options.name.empty()) {
    if (roads->size() == 1) return roads->front();
    List(*roads);
    throw Refusal(At(options.file, "holds " + Counted(roads->size(), "alignment") +
                                       (std::all_of(roads->begin(), roads->end(), Obstacle)
                                            ? ", and all are refused"
                                            : "; choose one of these names with --name")));
  }
  const auto is_named = [&](const ImportedRoad& road) { return road.road.name == options.name; };
  const auto found = std::find_if(roads->begin(), roads->end(), is_named);
  if (found == roads->end()) {
    List(*roads);
    throw Refusal(At(options.file, "holds no alignment named " + Quoted(options.name)));
  }
  if (std::count_if(found, roads->end(), is_named) > 1)
    throw Refusal(At(options.file, "holds several alignments named " + Quoted(options.name) +
                                       "; give them different names there"));
  return *found;
}

// One line for each; the file is refused.
[[noreturn]] void RefuseFindings(const std::string& file, const ImportedRoad& road) {
  size_t shown = 0;
  size_t all = 0;
  for (const Finding& finding : road.findings) {
    if (!finding.misread) continue;
    if (++all > kListed) continue;
    ++shown;
    PrintError(At(file, finding.line, finding.text));
  }
  if (all > shown) PrintError("and " + std::to_string(all - shown) + " more");
  throw ExitWith{1};
}

void Report(const ImportCommand& options, const ImportedRoad& road) {
  const std::vector<kovltype>& plan = road.road.plan;
  const PlanMeasures measures = MeasurePlan(plan);
  OutputFile output;
  const auto write = [&](const std::string& label, const std::string& text) {
    output.Write(label + std::string(16 - label.size(), ' ') + text + "\n");
  };
  write("Name", exchange::NameForFile(road.road.name));
  write("Points", std::to_string(plan.size()));
  write("Arcs", std::to_string(measures.arcs));
  write("Length", LengthText(measures.length));
  write("Stations", StationText(plan.front().sek, false) + " to " + StationText(plan.back().sek, false));
  write("Profile", road.road.profile.empty() ? "none" : Counted(road.road.profile.size(), "point"));
  write("Largest error", FormatFixed(road.largest_error * 1000, 3) + " mm");
  write("Findings", road.findings.empty() ? "none" : std::to_string(road.findings.size()));
  for (size_t i = 0; i < road.findings.size(); ++i) {
    const Finding& finding = road.findings[i];
    const std::string text = finding.line > 0 ? At(options.file, finding.line, finding.text) : finding.text;
    output.Write("  " + Printable(text) + "\n");
  }
  output.Finish();
}

}  // namespace

void AlignImport(const ImportCommand& options) {
  const exchange::RoadFormat& format = FormatOf(options.file);
  if (!options.formats.layer.empty() && !format.has_layers)
    throw WrongUsage("--layer does not apply to " + std::string(format.ending));
  if (options.to.empty() || options.to == "-")
    throw WrongUsage("an alignment is written to a file only; give -o a file name");
  RequireEnding(options.to, "an alignment", {".vl"});
  std::vector<ImportedRoad> roads = ReadRoads(format, options.file, options.formats);
  ImportedRoad& road = Choose(options, &roads);
  if (options.start && road.has_stations && !road.refused)
    throw Refusal(At(options.file, "has stations of its own, which are kept; omit --start"));
  exchange::FinishImport(options.formats.fit, options.start.value_or(0), &road);
  if (road.refused) RefuseFindings(options.file, road);
  if (const std::string name = exchange::NameForFile(road.road.name); name != road.road.name)
    exchange::Note(0,
                   "the name " + Quoted(road.road.name) +
                       " has characters that an alignment file cannot hold; it becomes " + Quoted(name),
                   &road);
  OutputFile output(options.to, {options.file});
  exchange::WriteAlignment(road.road, [&](std::string_view bytes) { output.Write(bytes); });
  output.Finish();
  Report(options, road);
}

}  // namespace velmora::cli
