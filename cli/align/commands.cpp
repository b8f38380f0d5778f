#include "cli/align/commands.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <tuple>
#include <utility>

#include "cli/align/exchange_formats.h"
#include "cli/align/network_input.h"
#include "cli/align/option_values.h"
#include "cli/input/ordered_workers.h"
#include "cli/output/options.h"
#include "cli/terminal/completes.h"

namespace velmora::cli {
namespace {

void AddLocate(CLI::App* align) {
  auto options = std::make_shared<LocateOptions>();
  CLI::App* verb = align->add_subcommand("locate", "Map points to station and offset along the alignment");
  verb->add_option(
          "ROAD", options->roads,
          "Alignment file, single or combined with a profile; of several, of those in a folder (*.vl) "
          "and in a GeoPackage (.gpkg[:LAYER]), the nearest to each point")
      ->required()
      ->type_name("")
      ->expected(1, -1)
      ->check(CompletesFile(".vl .gpkg"));
  verb->add_option("--points", options->points,
                   "Points: CSV, AGS (.ags) or GeoPackage (.gpkg[:LAYER]) with id, northing, easting and, "
                   "where known, level")
      ->required()
      ->type_name("LIST");
  AddValue(verb, "--area", "LO:HI", "Only stations from LO to HI",
           [options](const std::string& text) { options->area = ToLimits(text, ToStation); });
  AddValue(verb, "--offsets", "L:R", "Only offsets from L (negative is left) to R, in metres",
           [options](const std::string& text) { options->offsets = ToLimits(text, ToNumber); });
  verb->add_flag("--keep-outside", options->keep_outside,
                 "With --area and --offsets: mark the points outside instead of leaving them out");
  CLI::Option* const max_offset = AddMaxOffset(verb, &options->max_offset);
  AddValue(verb, "--within", "M",
           "Every road whose offset is at most M metres, nearest first, a row for each; a point without one "
           "gets a row \"far from the road\"",
           [options](const std::string& text) { options->within = ToDistance(text); })
      ->excludes(max_offset);
  verb->add_option(
          "--mode", options->mode,
          "Search: 0 everything (default), 1 the same with a note on what the suite's search mode 1 misses, "
          "2 segments without vertices")
      ->check(CLI::Range(0, 2));
  options->threads = AllCores();
  verb->add_option("--threads", options->threads, "Number of threads (default: all cores)")
      ->check(CLI::Range(1, 256))
      ->type_name("N");
  AddListOptions(verb, PointRoles(), &options->list);
  AddOnlyOption(verb, &options->list);
  AddOutputOptions(verb, &options->output);
  AddStationOptions(verb, &options->output);
  verb->callback([options] {
    if (options->within || IsNetwork(options->roads)) return AlignLocateNetwork(*options);
    options->file = options->roads[0];
    AlignLocate(*options);
  });
}

void AddPlace(CLI::App* align) {
  auto options = std::make_shared<PlaceOptions>();
  CLI::App* verb = align->add_subcommand("place", "Stations and offsets to map points, with profile levels");
  AddAlignmentFile(verb, &options->file);
  verb->add_option("--stations", options->stations,
                   "Stations: CSV, AGS (.ags) or GeoPackage (.gpkg[:LAYER]) with id, station and offset")
      ->required()
      ->type_name("LIST");
  AddListOptions(verb, StationRoles(), &options->list);
  AddOnlyOption(verb, &options->list);
  AddOutputOptions(verb, &options->output);
  AddStationOptions(verb, &options->output);
  verb->callback([options] { AlignPlace(*options); });
}

void AddLevel(CLI::App* align) {
  auto options = std::make_shared<LevelOptions>();
  CLI::App* verb = align->add_subcommand("level", "Profile levels at stations");
  AddAlignmentFile(verb, &options->file);
  verb->add_option_function<std::vector<std::string>>(
          "--station",
          [options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) options->stations.push_back(ToStation(text));
          },
          "Stations, as 1250.5 or 1/250.500")
      ->required()
      ->type_name("S...");
  AddOutputOptions(verb, &options->output);
  AddStationOptions(verb, &options->output);
  verb->callback([options] { AlignLevel(*options); });
}

// The edits show the new points, or write the alignment with -o.
template <class Run>
std::shared_ptr<EditOptions> AddEdit(CLI::App* verb, Run run) {
  auto options = std::make_shared<EditOptions>();
  AddAlignmentFile(verb, &options->file);
  CLI::Option* to =
      verb->add_option("-o", options->to,
                       "Write the alignment to OUT, which may be FILE (default: show its points)")
          ->type_name("OUT")
          ->check(CompletesFile(".vl"));
  verb->add_flag("--force", options->force,
                 "Write even if lines are lost, or an arc moves by more than 1 mm");
  AddFormatOptions(verb, &options->output);
  for (const char* form : {"--csv", "--spreadsheet", "--json"}) to->excludes(verb->get_option(form));
  AddStationOptions(verb, &options->output);
  verb->callback([options, run] { run(*options); });
  return options;
}

void AddEdits(CLI::App* align) {
  CLI::App* stations =
      align->add_subcommand("stations", "Recompute all stations from a start station and the lengths");
  auto recompute = AddEdit(stations, AlignStations);
  AddValue(stations, "--start", "S", "Station of the first point", [recompute](const std::string& text) {
    recompute->start = ToStation(text);
  })->required();

  CLI::App* shift = align->add_subcommand("shift", "Shift all stations so that a point gets a given station");
  auto move = AddEdit(shift, AlignShift);
  AddValue(shift, "--at", "X,Y", "Northing and easting of the point, within 1 mm of a point of the alignment",
           [move](const std::string& text) { std::tie(move->x, move->y) = ToPair(text, ',', ToNumber); })
      ->required();
  AddValue(shift, "--station", "S", "Station that the point gets", [move](const std::string& text) {
    move->station = ToStation(text);
  })->required();

  CLI::App* extend = align->add_subcommand("extend", "Lengthen the alignment in a straight line at its ends");
  auto lengthen = AddEdit(extend, AlignExtend);
  const auto metres = [](double EditOptions::*end, const std::shared_ptr<EditOptions>& options) {
    return [end, options](const std::string& text) {
      (*options).*end = ToNumber(text);
      if ((*options).*end < 0) throw CLI::ValidationError("\"" + text + "\": a length cannot be negative");
      if ((*options).*end > 1e6) throw CLI::ValidationError("\"" + text + "\": give at most 1000000 metres");
    };
  };
  AddValue(extend, "--before", "M", "Metres added before the start", metres(&EditOptions::before, lengthen));
  AddValue(extend, "--after", "M", "Metres added after the end", metres(&EditOptions::after, lengthen));
}

void AddPlot(CLI::App* align) {
  auto options = std::make_shared<PlotOptions>();
  CLI::App* verb = align->add_subcommand("plot", "Draw plan and profile, with borings, as SVG");
  AddAlignmentFile(verb, &options->file);
  verb->add_option("--points", options->points, "Borings to draw: a list as for locate")->type_name("LIST");
  AddListOptions(verb, PointRoles(), &options->list);
  AddMaxOffset(verb, &options->max_offset);
  verb->add_option("-o", options->to, "SVG file to write (default: standard output)")->type_name("SVG");
  verb->add_flag("--km", options->km, "Stations as km/m (1/250.000)");
  verb->callback([options] { AlignPlot(*options); });
}

CLI::Validator CompletesRoad() {
  std::string endings = exchange::RoadFormatEndings();
  std::erase(endings, ',');
  return CompletesFile(endings);
}

double ToPositive(const std::string& text) {
  const double number = ToNumber(text);
  if (!(number > 0)) throw CLI::ValidationError("\"" + text + "\" is not above 0");
  return number;
}

void AddExport(CLI::App* align) {
  auto options = std::make_shared<ExportOptions>();
  CLI::App* verb = align->add_subcommand("export", "Write the road for CAD and GIS programs, arcs exact");
  AddAlignmentFile(verb, &options->file);
  verb->add_option("-o", options->to,
                   "File to write; the ending chooses the format: " + exchange::RoadFormatEndings())
      ->required()
      ->type_name("OUT")
      ->check(CompletesRoad());
  verb->add_option("--points", options->points, "Points to write with their places: a list as for locate")
      ->type_name("LIST");
  AddListOptions(verb, PointRoles(), &options->list);
  AddOnlyOption(verb, &options->list);
  AddValue(verb, "--stations", "M", "A mark every M metres of station",
           [options](const std::string& text) { options->stations = ToPositive(text); });
  verb->add_option("--srs", options->srs, "Code of the coordinate system, as 3006 (default: undefined)")
      ->check(CLI::Range(1, 999'999))
      ->type_name("CODE");
  AddValue(verb, "--chord-error", "MM",
           "Largest error of chords where a format also gives arcs as chords (1)",
           [options](const std::string& text) { options->chord_error = ToPositive(text); });
  AddMaxOffset(verb, &options->max_offset);
  verb->callback([options] { AlignExport(*options); });
}

void AddImport(CLI::App* align) {
  auto options = std::make_shared<ImportCommand>();
  exchange::ImportOptions* const formats = &options->formats;
  CLI::App* verb = align->add_subcommand("import", "Make an alignment file from a road of another program");
  verb->add_option("IN", options->file,
                   "File to read; the ending says its format: " + exchange::RoadFormatEndings())
      ->required()
      ->check(CompletesRoad());
  verb->add_option("-o", options->to, "Alignment file to write")->required()->type_name("VL");
  verb->add_option("--name", options->name, "Name of the alignment, where the file holds several")
      ->type_name("NAME");
  verb->add_option("--layer", formats->layer, "Layer of the alignment, in formats with layers")
      ->type_name("LAYER");
  const auto metres = [](const std::string& text) { return ToPositive(text) / 1000; };
  AddValue(verb, "--fit", "MM",
           "Arcs are split so that rewriting the file with four decimals moves them by at most MM (1)",
           [formats, metres](const std::string& text) { formats->fit = metres(text); });
  AddValue(verb, "--spirals-as-arcs", "MM", "Replace spirals by arcs within MM (default: refuse spirals)",
           [formats, metres](const std::string& text) { formats->spirals_as_arcs = metres(text); });
  verb->add_option_function<std::string>(
          "--feet",
          [formats](const std::string& foot) {
            formats->metres_per_foot = foot == "survey" ? 1200.0 / 3937.0 : 0.3048;
          },
          "Which foot a file in feet has (default: refuse feet)")
      ->check(CLI::IsMember({"international", "survey"}));
  AddValue(verb, "--start", "S", "Station of the first point, where the file has no stations (0)",
           [options](const std::string& text) { options->start = ToStation(text); });
  verb->add_option_function<std::string>(
          "--stations", [formats](const std::string&) { formats->internal_stations = true; },
          "Where the file has station equations: internal takes the continuous stations (default: refuse)")
      ->check(CLI::IsMember({"internal"}));
  verb->callback([options] { AlignImport(*options); });
}

void AddInfo(CLI::App* align) {
  auto options = std::make_shared<InfoOptions>();
  CLI::App* verb = align->add_subcommand("info", "Contents of the file, and the faults found in it");
  AddAlignmentFile(verb, &options->file);
  AddOutputOptions(verb, &options->output);
  AddStationOptions(verb, &options->output);
  verb->callback([options] { AlignInfo(*options); });
}

}  // namespace

void AddAlignCommands(CLI::App* align) {
  align->require_subcommand(1);
  AddInfo(align);
  AddLocate(align);
  AddPlace(align);
  AddLevel(align);
  AddEdits(align);
  AddPlot(align);
  AddExport(align);
  AddImport(align);
}

}  // namespace velmora::cli
