#include "velmora/lists/point_list.h"

namespace velmora {
namespace {

void TakePoint(const RowFields& fields, std::int64_t line, ListedPoint* point) {
  const std::optional<double> northing = fields.Value(kNorthing);
  const std::optional<double> easting = fields.Value(kEasting);
  point->line = line;
  point->id = fields.Text(kPointId);
  point->level = fields.Value(kLevel);
  point->northing = northing.value_or(0);
  point->easting = easting.value_or(0);
  point->problem = fields.Problem();
  const bool bad_level = !point->level && !fields.Text(kLevel).empty();
  if (!point->problem.empty() || (northing && easting && !bad_level)) return;
  const PointRole bad = !northing ? kNorthing : !easting ? kEasting : kLevel;
  point->problem = NotANumber(PointRoles()[bad], fields.Text(bad));
}

}  // namespace

bool PointList::Next(ListedPoint* point) {
  if (!list_.Next()) return false;
  TakePoint(list_.Fields(), list_.Line(), point);
  return true;
}

void PointsOfBlock(const RowBlock& block, const ListLayout& layout, std::vector<ListedPoint>* points,
                   CarriedFields* carried) {
  RowFields fields(layout);
  ForEachRow(block, layout.separator, [&](const Row& row) {
    if (!fields.Split(row, block.encoding)) return;
    TakePoint(fields, row.line, &points->emplace_back());
    carried->Add(layout, fields);
  });
}

}  // namespace velmora
