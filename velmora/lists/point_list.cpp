#include "velmora/lists/point_list.h"

#include "velmora/lists/block_rows.h"

namespace velmora {
namespace {

// Of a point that has its line and id.
void TakePlace(const RowFields& fields, ListedPoint* point) {
  const bool has_northing = fields.Read(kNorthing, &point->northing);
  const bool has_easting = fields.Read(kEasting, &point->easting);
  bool bad_level = false;
  if (!fields.IsEmpty(kLevel)) {
    double level = 0;
    bad_level = !fields.Read(kLevel, &level);
    if (!bad_level) point->level = level;
  }
  if (!fields.Problem().empty()) point->problem = fields.Problem();
  if (!fields.Problem().empty() || (has_northing && has_easting && !bad_level)) return;
  const PointRole bad = !has_northing ? kNorthing : !has_easting ? kEasting : kLevel;
  point->problem = NotANumber(PointRoles()[bad], fields.Text(bad));
}

}  // namespace

bool PointList::Next(ListedPoint* point) {
  if (!list_.Next()) return false;
  *point = ListedPoint(list_.Line(), list_.Fields().Text(kPointId));
  TakePlace(list_.Fields(), point);
  return true;
}

void PointsOfBlock(const RowBlock& block, const ListLayout& layout, std::vector<ListedPoint>* points,
                   CarriedFields* carried) {
  for (BlockRows rows(block, layout); rows.Next();) {
    TakePlace(rows.Fields(), &points->emplace_back(rows.Line(), rows.Fields().Text(kPointId)));
    carried->Add(layout, rows.Fields());
  }
}

}  // namespace velmora
