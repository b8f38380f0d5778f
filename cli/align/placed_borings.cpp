#include "cli/align/placed_borings.h"

#include "cli/align/placing.h"
#include "cli/align/swapped_points.h"
#include "cli/input/list_input.h"
#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/lists/point_list.h"
#include "velmora/lists/repeated_ids.h"
#include "velmora/text/counted.h"

namespace velmora::cli {
namespace {

void PlacePoints(const BoringList& list, const std::vector<std::int64_t>& lines, AlignmentInput* input,
                 PlacedBorings* borings) {
  const size_t count = borings->points.size();
  borings->profile_levels.resize(count);
  if (input->plan.size() < 2) return;
  std::vector<double> northing(count);
  std::vector<double> easting(count);
  for (size_t i = 0; i < count; ++i) {
    northing[i] = borings->points[i].northing;
    easting[i] = borings->points[i].easting;
  }
  const Placer placer(input, 0, std::nullopt, list.max_offset);
  std::vector<Placing> placings(count);
  placer.Place(northing.data(), easting.data(), count, placings.data());
  SwappedPoints swapped(MeasurePlan(input->plan).bounds);
  Corrections corrections;
  std::int64_t too_far = 0;
  std::string first_far;
  for (size_t i = 0; i < count; ++i) {
    const Placing& placing = placings[i];
    swapped.Add(lines[i], northing[i], easting[i]);
    corrections.Add(lines[i], northing[i], easting[i], placing, &placer);
    drawing::PlotBoring& boring = borings->points[i];
    boring.placed = placing.status == PlaceStatus::kOn;
    boring.too_far = placing.status == PlaceStatus::kFar;
    boring.station = placing.station;
    boring.offset = placing.offset;
    boring.status = StatusText(placing.status);
    borings->profile_levels[i] = placing.profile_level;
    if (boring.too_far && too_far++ == 0)
      first_far = At(list.file, lines[i], "offset " + OffsetText(placing.offset));
  }
  swapped.Report(list.file, list.list);
  borings->most_swapped = swapped.AreMost();
  if (const auto note = corrections.Note(list.file, list.km)) borings->notes.push_back(*note);
  if (too_far > 0)
    borings->notes.push_back(first_far + " is far from the road; " +
                             Counted(too_far, "boring is", "borings are") +
                             " not in the profile (--max-offset gives the greatest offset)");
}

}  // namespace

PlacedBorings ReadPlacedBorings(const BoringList& list, AlignmentInput* input) {
  PlacedBorings borings;
  PointList points(list.file, list.list);
  WarnOf(list.file, points.TakeNotes());
  for (const ListLayout::Carried& carried : points.Layout().carried)
    borings.own_titles.push_back(carried.title);
  borings.decimal = points.Layout().decimal;
  std::vector<std::int64_t> lines;
  RepeatedIds ids;
  Progress progress("Reading borings", points.Size());
  std::uint64_t rows = 0;
  for (RowBlock block; points.NextBlock(&block);) {
    std::vector<ListedPoint> read;
    CarriedFields carried(borings.own_titles.size());
    PointsOfBlock(block, points.Layout(), &read, &carried);
    progress.Update(points.Consumed(), rows += read.size());
    for (size_t i = 0; i < read.size(); ++i) {
      ListedPoint& point = read[i];
      ids.Add(point.id, point.line);
      if (!point.problem.empty()) {
        borings.unreadable.push_back({std::move(point.id), point.line, std::move(point.problem)});
        continue;
      }
      borings.points.push_back({std::move(point.id), point.northing, point.easting, point.level});
      lines.push_back(point.line);
      std::vector<std::string>& own = borings.own.emplace_back();
      for (size_t column = 0; column < carried.Columns(); ++column)
        own.emplace_back(carried.Field(i, column));
    }
  }
  progress.Clear();
  WarnOf(list.file, points.TakeNotes());
  WarnOf(list.file, ids.Note());
  PlacePoints(list, lines, input, &borings);
  return borings;
}

void ReportPlacedBorings(const BoringList& list, const PlacedBorings& borings, const std::string& result) {
  for (const std::string& note : borings.notes) Warn(note);
  if (const size_t count = borings.unreadable.size(); count > 0)
    PrintError(At(list.file, borings.unreadable.front().line,
                  borings.unreadable.front().problem + "; " + Counted(count, "row is", "rows are") +
                      " not in the " + result + ", correct and run again"));
  if (!borings.unreadable.empty() || borings.most_swapped) throw ExitWith{1};
}

}  // namespace velmora::cli
