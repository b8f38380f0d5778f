// Points to be placed, from a list: one row at a time, or many.
#ifndef VELMORA_LISTS_POINT_LIST_H_
#define VELMORA_LISTS_POINT_LIST_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/lists/carried_fields.h"
#include "velmora/lists/list_reader.h"

namespace velmora {

struct ListedPoint {
  ListedPoint() = default;
  ListedPoint(std::int64_t its_line, std::string_view its_id) : line(its_line), id(its_id) {}

  std::int64_t line = 0;
  std::string id;
  double northing = 0;
  double easting = 0;
  std::optional<double> level;
  std::string problem;  // why the row is not a point; empty for a point
};

// Columns id, northing, easting and level.
class PointList {
 public:
  PointList(const std::string& file, const ListOptions& options, size_t block_size = RowReader::kBlockSize)
      : list_(file, PointRoles(), options, block_size) {}
  bool Next(ListedPoint* point);
  Findings TakeNotes() { return list_.TakeNotes(); }

  // For many rows at once: blocks for PointsOfBlock, from any thread.
  bool NextBlock(RowBlock* block) { return list_.NextBlock(block); }
  const ListLayout& Layout() const { return list_.Layout(); }

  std::uint64_t Size() const { return list_.Size(); }
  std::uint64_t Consumed() const { return list_.Consumed(); }

 private:
  ListReader list_;
};

// Appends the points of a block's rows, and the fields carried with them.
void PointsOfBlock(const RowBlock& block, const ListLayout& layout, std::vector<ListedPoint>* points,
                   CarriedFields* carried);

}  // namespace velmora

#endif  // VELMORA_LISTS_POINT_LIST_H_
