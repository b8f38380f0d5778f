#include <cmath>

#include "cli/align/commands.h"
#include "cli/align/exchange_formats.h"
#include "cli/align/placing.h"
#include "cli/align/swapped_points.h"
#include "cli/input/list_input.h"
#include "cli/output/creation_time.h"
#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/point_list.h"
#include "velmora/lists/repeated_ids.h"
#include "velmora/text/codepage.h"
#include "velmora/text/counted.h"

namespace velmora::cli {
namespace {

using exchange::LocatedPoint;

// The titles of the columns that the list carries, none of them one that the formats themselves write.
std::vector<std::string> OwnTitles(const ListLayout& layout) {
  std::vector<Column> ours;
  for (const char* key :
       {"fid", "geom", "kind", "name", "wkt", "profile", "id", "northing", "easting", "station", "offset",
        "side", "profile_level", "level", "difference", "status", "line"})
    ours.push_back({key, ""});
  const std::vector<Column> columns = WithCarried(layout, ours);
  std::vector<std::string> titles;
  for (size_t i = 0; i < layout.carried.size(); ++i) titles.push_back(columns[i].key);
  return titles;
}

void Place(const Placer& placer, std::vector<LocatedPoint>* points) {
  const size_t count = points->size();
  std::vector<double> northing(count);
  std::vector<double> easting(count);
  std::vector<Placing> placings(count);
  for (size_t i = 0; i < count; ++i) {
    northing[i] = (*points)[i].northing;
    easting[i] = (*points)[i].easting;
  }
  placer.Place(northing.data(), easting.data(), count, placings.data());
  for (size_t i = 0; i < count; ++i) {
    LocatedPoint& point = (*points)[i];
    point.status = StatusText(placings[i].status);
    if (!HasPlace(placings[i].status)) continue;
    point.station = placings[i].station;
    point.offset = placings[i].offset;
    point.profile_level = placings[i].profile_level;
  }
}

struct Borings {
  exchange::LocatedPoints located;
  std::string problem;  // the rows that are not points; empty when there are none
  bool most_swapped = false;
};

Borings ReadBorings(const ExportOptions& options, AlignmentInput* input) {
  Borings borings;
  PointList list(options.points, options.list);
  WarnOf(options.points, list.TakeNotes());
  borings.located.own_titles = OwnTitles(list.Layout());
  RepeatedIds ids;
  SwappedPoints swapped(MeasurePlan(input->plan).bounds);
  Progress progress("Reading points", list.Size());
  std::uint64_t rows = 0;
  std::int64_t unreadable = 0;
  for (RowBlock block; list.NextBlock(&block);) {
    std::vector<ListedPoint> points;
    CarriedFields carried(borings.located.own_titles.size());
    PointsOfBlock(block, list.Layout(), &points, &carried);
    progress.Update(list.Consumed(), rows += points.size());
    for (size_t i = 0; i < points.size(); ++i) {
      ListedPoint& point = points[i];
      ids.Add(point.id, point.line);
      if (!point.problem.empty()) {
        if (unreadable++ == 0) borings.problem = At(options.points, point.line, point.problem);
        continue;
      }
      swapped.Add(point.line, point.northing, point.easting);
      LocatedPoint& boring = borings.located.points.emplace_back();
      boring.id = std::move(point.id);
      boring.northing = point.northing;
      boring.easting = point.easting;
      boring.level = point.level;
      for (size_t column = 0; column < carried.Columns(); ++column)
        boring.own.emplace_back(carried.Field(i, column));
    }
  }
  progress.Clear();
  WarnOf(options.points, list.TakeNotes());
  WarnOf(options.points, ids.Note());
  swapped.Report(options.points, options.list);
  borings.most_swapped = swapped.AreMost();
  if (unreadable > 0)
    borings.problem +=
        "; " + Counted(unreadable, "row is", "rows are") + " not in the result, correct and run again";
  Place(Placer(input, 0, std::nullopt, options.max_offset), &borings.located.points);
  return borings;
}

}  // namespace

void AlignExport(const ExportOptions& options) {
  RequireOneStandardInput(options.file, options.points, "--points");
  if (options.to == "-") throw WrongUsage("an export is written to a file only; give -o a file name");
  const exchange::RoadFormat& format = FormatOf(options.to);
  AlignmentInput input;
  ReadPlan(options.file, &input);
  exchange::ExportInput road;
  road.created = CreationTime();
  road.srs = options.srs;
  road.chord_error = options.chord_error / 1000;
  const PlanMeasures measures = MeasurePlan(input.plan);
  auto stations = StationsEach(options.stations, input.plan);
  if (!stations)
    throw Refusal(At(options.file, "would get more than a million stations; give --stations a larger value"));
  road.stations = std::move(*stations);
  Borings borings;
  std::vector<std::string> inputs = {options.file};
  if (!options.points.empty()) {
    borings = ReadBorings(options, &input);
    road.borings = std::move(borings.located);
    inputs.push_back(FileOfList(options.points));
  }
  road.road = {input.Name(), std::move(input.plan), std::move(input.profile)};
  const std::string note = WriteRoad(format, road, options.to, inputs);
  Warn(At(options.to, "written, " + Counted(road.road.plan.size(), "point") + ", " +
                          Counted(measures.arcs, "arc") + ", " + LengthText(measures.length) +
                          (road.road.profile.empty() ? ""
                           : format.has_profile      ? ", with its profile"
                                                     : ", without its profile") +
                          (road.borings.points.empty()
                               ? ""
                               : ", " + Counted(road.borings.points.size(), "point") + " beside it")));
  if (!note.empty()) Warn(At(options.to, note));
  if (!borings.problem.empty()) PrintError(borings.problem);
  if (!borings.problem.empty() || borings.most_swapped) throw ExitWith{1};
}

}  // namespace velmora::cli
