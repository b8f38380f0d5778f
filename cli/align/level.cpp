#include <algorithm>

#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

// Why the profile has no level at a station, for a line at the end.
std::string WhyNoLevel(const AlignmentInput& input, double station, bool km) {
  const ProfileMeasures profile = MeasureProfile(input.profile);
  const double first = profile.first_station;
  const double last = profile.levels_end;
  if (first > last)
    return "the profile's stations descend from " + StationText(first, km) + " to " +
           StationText(profile.last_station, km) +
           "; levels are looked up by ascending stations, so that no station has one; list its points by "
           "ascending station";
  const std::string range = "the profile has levels from station " + StationText(first, km) +
                            " up to, not including, " + StationText(last, km);
  const auto looks_like = [&](double end) { return StationText(station, km) == StationText(end, km); };
  if (station == last) return range;
  if (station < first && looks_like(first))
    return range + "; " + FormatFixed(station, 9) + " is before " + FormatFixed(first, 9);
  if (station > last && looks_like(last))
    return range + "; " + FormatFixed(station, 9) + " is beyond " + FormatFixed(last, 9);
  if (station < first || station > last) return range;
  return "the profile's points give no level at station " + StationText(station, km) +
         "; velmora align info lists what is wrong with them";
}

}  // namespace

void AlignLevel(const LevelOptions& options) {
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  RequireProfile(input);
  WarnOfSkippedLines(input);
  OutputFile output(options.output.file, {options.file});
  RecordWriter records(output, options.output.Format(),
                       {{"station", "station", true}, {"level", "level", true}, {"status", "status"}});
  std::vector<std::string> problems;
  for (const double station : options.stations) {
    const std::optional<double> level = LevelAt(input, station);
    if (!level) {
      const std::string problem = WhyNoLevel(input, station, options.output.km);
      if (std::find(problems.begin(), problems.end(), problem) == problems.end()) problems.push_back(problem);
    }
    std::vector<Cell> cells(3);
    cells[0] = StationCell(station, options.output.km);
    if (level) cells[1] = Number{*level};
    cells[2] = std::string(level ? "on the profile" : "off the profile");
    records.Row(cells);
  }
  records.Finish();
  output.Finish();
  if (problems.empty()) return;
  for (const std::string& problem : problems) PrintError(At(options.file, problem));
  throw ExitWith{1};
}

}  // namespace velmora::cli
