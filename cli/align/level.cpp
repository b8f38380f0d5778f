#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"

namespace velmora::cli {

void AlignLevel(const LevelOptions& options) {
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  RequireProfile(input);
  OutputFile output(options.output.file, {options.file});
  RecordWriter records(output, options.output.Format(),
                       {{"station", "station", true}, {"level", "level", true}, {"status", "status"}});
  bool all = true;
  for (const double station : options.stations) {
    const std::optional<double> level = LevelAt(input, station);
    all = all && level;
    std::vector<Cell> cells(3);
    cells[0] = StationCell(station, options.output.km);
    if (level) cells[1] = Number{*level};
    cells[2] = std::string(level ? "on the profile" : "off the profile");
    records.Row(cells);
  }
  records.Finish();
  output.Finish();
  if (all) return;
  Warn(At(options.file,
          "the profile has levels from station " + StationText(input.profile.front().y, options.output.km) +
              " up to, not including, " + StationText(input.profile.back().y, options.output.km)));
  throw ExitWith{1};
}

}  // namespace velmora::cli
