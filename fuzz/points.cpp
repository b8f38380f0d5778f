// Lists of points: row by row, and in blocks as several threads read them.
#include "cli/terminal/error.h"
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "velmora/lists/list_error.h"
#include "velmora/lists/point_list.h"
#include "velmora/platform/files.h"

namespace velmora::fuzz {
namespace {

using Points = std::vector<ListedPoint>;

bool SamePoint(const ListedPoint& a, const ListedPoint& b) {
  return a.line == b.line && a.id == b.id && a.problem == b.problem &&
         a.level.has_value() == b.level.has_value() && Same(a.northing, b.northing) &&
         Same(a.easting, b.easting) && Same(a.level.value_or(0), b.level.value_or(0));
}

Points RowByRow(const std::string& file) {
  PointList list(file, {});
  Points points;
  for (ListedPoint point; list.Next(&point);) points.push_back(point);
  return points;
}

Points InBlocks(const std::string& file) {
  constexpr size_t kFewBytes = 64;  // so that rows with line breaks lie at the ends of blocks
  PointList list(file, {}, kFewBytes);
  Points points;
  const ListLayout& layout = list.Layout();
  CarriedFields carried(layout.carried.size());
  for (RowBlock block; list.NextBlock(&block);) PointsOfBlock(block, layout, &points, &carried);
  for (size_t i = 0; i < points.size() * carried.Columns(); ++i)
    Require(carried.Field(i / carried.Columns(), i % carried.Columns()).size() <= kLongestRow, "a field");
  return points;
}

// What a refusal says, empty without one.
template <class Read>
std::string Try(Read read, const std::string& file, Points* points) {
  try {
    *points = read(file);
  } catch (const ListError& error) {
    const std::string& what = error.text;
    Require(what == cli::Printable(what) && !what.empty(), "a refusal is one line");
    return what;
  }
  return {};
}

}  // namespace

void Run(const Input& input) {
  const CString path = Put(L"points.csv", input.File());
  const std::string file = PathForDisplay(path);
  Points rows;
  Points blocks;
  Require(Try(RowByRow, file, &rows) == Try(InBlocks, file, &blocks), "both ways refuse the same");
  Require(std::equal(rows.begin(), rows.end(), blocks.begin(), blocks.end(), SamePoint),
          "both ways read the same");
  Require(rows.size() <= LinesOf(path).size(), "no more points than lines");
  for (const ListedPoint& point : rows)
    Require(point.problem == cli::Printable(point.problem), "a problem is one line");
}

}  // namespace velmora::fuzz
