// Points to be placed, from a list: one row at a time, or many.
#ifndef VELMORA_CLI_ALIGN_POINT_LIST_H_
#define VELMORA_CLI_ALIGN_POINT_LIST_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/input/columns.h"

namespace velmora::cli {

struct ListedPoint {
  std::int64_t line = 0;
  std::string id;
  double northing = 0;
  double easting = 0;
  std::optional<double> level;
  std::string problem;  // why the row is not a point; empty for a point
};

// Columns id, northing, easting and level, by header (id/namn, x/n/northing, y/e/easting, z/level and some
// more) or in that order.
class PointList {
 public:
  explicit PointList(const std::string& file);
  bool Next(ListedPoint* point);
  const RowReader& Rows() const { return list_.Rows(); }

  // For many rows at once: the first row, where it is a point and not a header, then the others in blocks
  // for PointsOfBlock, from any thread.
  bool TakeFirst(ListedPoint* point) { return list_.FirstIsData() && Next(point); }
  bool NextBlock(RowBlock* block) { return list_.NextBlock(block); }
  RowLayout Layout() const { return list_.Layout(); }

 private:
  ListReader list_;
};

// Appends the points of a block's rows.
void PointsOfBlock(const RowBlock& block, const RowLayout& layout, std::vector<ListedPoint>* points);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ALIGN_POINT_LIST_H_
