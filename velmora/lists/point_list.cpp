#include "velmora/lists/point_list.h"

#include "velmora/lists/block_rows.h"

namespace velmora {
namespace {

void TakePoint(const RowFields& fields, std::int64_t line, ListedPoint* point) {
  point->line = line;
  point->id = fields.Text(kPointId);
  point->problem.clear();
  if (!fields.Problem().empty()) point->problem = fields.Problem();
  point->northing = point->easting = 0;
  const bool has_northing = fields.Read(kNorthing, &point->northing);
  const bool has_easting = fields.Read(kEasting, &point->easting);
  point->level.reset();
  bool bad_level = false;
  if (!fields.Text(kLevel).empty()) {
    double level = 0;
    bad_level = !fields.Read(kLevel, &level);
    if (!bad_level) point->level = level;
  }
  if (!point->problem.empty() || (has_northing && has_easting && !bad_level)) return;
  const PointRole bad = !has_northing ? kNorthing : !has_easting ? kEasting : kLevel;
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
  for (BlockRows rows(block, layout); rows.Next();) {
    TakePoint(rows.Fields(), rows.Line(), &points->emplace_back());
    carried->Add(layout, rows.Fields());
  }
}

}  // namespace velmora
