// The verbs of `velmora align`.
#ifndef VELMORA_CLI_ALIGN_COMMANDS_H_
#define VELMORA_CLI_ALIGN_COMMANDS_H_

#include <optional>
#include <string>
#include <vector>

#include "cli/input/list_options.h"
#include "cli/output/records.h"
#include "velmora/alignment/station_area.h"
#include "velmora/exchange/road.h"

namespace CLI {
class App;
}

namespace velmora::cli {

void AddAlignCommands(CLI::App* align);

struct Limits {
  double low;
  double high;
};

inline constexpr double kMostOffset = 500;  // m; points farther away are reported as far from the road

struct LocateOptions {
  std::vector<std::string> roads;
  std::string file;  // of a single road
  std::string points;
  ListOptions list;
  double max_offset = kMostOffset;
  std::optional<double> within;   // m: every road in reach instead of the nearest
  std::optional<Limits> area;     // stations
  std::optional<Limits> offsets;  // left limit, right limit
  bool keep_outside = false;      // points outside them are marked and not left out
  int mode = 0;
  int threads = 1;
  OutputOptions output;
};

struct PlaceOptions {
  std::string file;
  std::string stations;
  ListOptions list;
  OutputOptions output;
};

struct LevelOptions {
  std::string file;
  std::vector<double> stations;
  OutputOptions output;
};

// Of the verbs that change an alignment.
struct EditOptions {
  std::string file;
  double start = 0;  // stations
  double x = 0;      // shift: the point, and its station
  double y = 0;
  double station = 0;
  double before = 0;  // extend, m
  double after = 0;
  std::string to;  // empty: the points are shown and nothing is written
  bool force = false;
  OutputOptions output;
};

struct PlotOptions {
  std::string file;
  std::string points;
  ListOptions list;
  double max_offset = kMostOffset;
  std::string to;
  bool km = false;
};

struct ExportOptions {
  std::string file;
  std::string to;
  std::string points;
  ListOptions list;
  double stations = 0;     // m between them; 0: none
  int srs = 0;             // code of the spatial reference; 0: undefined
  double chord_error = 1;  // mm
  double max_offset = kMostOffset;
};

struct ImportCommand {
  std::string file;
  std::string to;
  std::string name;  // of the alignment; empty: the only one
  std::optional<double> start;
  exchange::ImportOptions formats;
};

struct InfoOptions {
  std::string file;
  OutputOptions output;
};

void AlignInfo(const InfoOptions& options);
void AlignLocate(const LocateOptions& options);
// On the nearest of several roads, or on each in reach.
void AlignLocateNetwork(const LocateOptions& options);
void AlignPlace(const PlaceOptions& options);
void AlignLevel(const LevelOptions& options);
void AlignStations(const EditOptions& options);
void AlignShift(const EditOptions& options);
void AlignExtend(const EditOptions& options);
void AlignPlot(const PlotOptions& options);
void AlignExport(const ExportOptions& options);
void AlignImport(const ImportCommand& options);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_COMMANDS_H_
