#include "cli/align/point_list.h"

#include "velmora/text/codepage.h"

namespace velmora::cli {
namespace {

enum PointRole : size_t { kId, kNorthing, kEasting, kLevel };

std::vector<Role> PointRoles() {
  return {{"id", {L"id", L"namn", L"name", L"punkt", L"borrhål", L"borehole", L"boring"}, false},
          {"northing", {L"northing", L"n", L"x", L"nord", L"north"}, true},
          {"easting", {L"easting", L"e", L"y", L"ost", L"öst", L"east"}, true},
          {"level", {L"level", L"z", L"nivå", L"niva", L"höjd", L"elevation"}, false}};
}

}  // namespace

PointList::PointList(const std::string& file) : list_(file, PointRoles()) {}

bool PointList::Next(ListedPoint* point) {
  if (!list_.Next()) return false;
  *point = {};
  point->line = list_.Line();
  point->id = Utf8FromWide(list_.Text(kId));
  const std::optional<double> northing = list_.Value(kNorthing);
  const std::optional<double> easting = list_.Value(kEasting);
  point->level = list_.Value(kLevel);
  point->northing = northing.value_or(0);
  point->easting = easting.value_or(0);
  if (!northing)
    point->problem = list_.Problem(kNorthing);
  else if (!easting)
    point->problem = list_.Problem(kEasting);
  else if (!point->level && !list_.Text(kLevel).empty())
    point->problem = list_.Problem(kLevel);
  return true;
}

}  // namespace velmora::cli
