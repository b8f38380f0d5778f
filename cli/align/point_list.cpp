#include "cli/align/point_list.h"

namespace velmora::cli {
namespace {

enum PointRole : size_t { kId, kNorthing, kEasting, kLevel };

const std::vector<Role>& PointRoles() {
  static const std::vector<Role> roles = {
      {"id", {L"id", L"namn", L"name", L"punkt", L"borrhål", L"borehole", L"boring"}, false},
      {"northing", {L"northing", L"n", L"x", L"nord", L"north"}, true},
      {"easting", {L"easting", L"e", L"y", L"ost", L"öst", L"east"}, true},
      {"level", {L"level", L"z", L"nivå", L"niva", L"höjd", L"elevation"}, false}};
  return roles;
}

// From a row's fields, those of ListReader or of RowFields.
template <class Fields>
void TakePoint(const Fields& fields, ListedPoint* point) {
  const std::optional<double> northing = fields.Value(kNorthing);
  const std::optional<double> easting = fields.Value(kEasting);
  point->level = fields.Value(kLevel);
  point->northing = northing.value_or(0);
  point->easting = easting.value_or(0);
  const bool bad_level = !point->level && !fields.IsEmpty(kLevel);
  if (northing && easting && !bad_level) return;
  const PointRole bad = !northing ? kNorthing : !easting ? kEasting : kLevel;
  point->problem = NotANumber(PointRoles()[bad], fields.Utf8(bad));
}

}  // namespace

PointList::PointList(const std::string& file) : list_(file, PointRoles()) {}

bool PointList::Next(ListedPoint* point) {
  if (!list_.Next()) return false;
  *point = {};
  point->line = list_.Line();
  point->id = list_.Utf8(kId);
  TakePoint(list_, point);
  return true;
}

void PointsOfBlock(const RowBlock& block, const RowLayout& layout, std::vector<ListedPoint>* points) {
  RowFields fields(layout);
  ForEachLine(block, [&](std::string_view line, std::int64_t number) {
    if (!fields.Split(line, block.encoding, number)) return;
    ListedPoint& point = points->emplace_back();
    point.line = number;
    point.id = fields.Utf8(kId);
    TakePoint(fields, &point);
  });
}

}  // namespace velmora::cli
