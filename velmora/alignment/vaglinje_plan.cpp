#include <cmath>

#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/geometry.h"
#include "velmora/alignment/station_area.h"
#include "velmora/alignment/station_search.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/common/last_message.h"
#include "velmora/common/messages.h"

namespace velmora {
namespace {

constexpr double kIntoTheLine = 0.5;  // m from an end, where Extend measures its direction

PlanePoint InPlane(const kokotype& point) { return {point.ko1, point.ko2}; }

}  // namespace

int CVaglinje::Vag2xy(double sek, double avst, double* x, double* y) {
  if (typ == kProfileType) return -1;
  *x = *y = kNoCoordinate;
  const bool descending = IsDescending();
  if (Home() < 0) return -1;
  Set_mark();
  if (descending ? sek > pael->sek + kStationTolerance : sek < pael->sek - kStationTolerance) return -1;
  for (;;) {
    if ((*this)++ == nullptr) return -1;
    if (descending ? sek > pael->sek - kStationTolerance : pael->sek + kStationTolerance > sek) break;
    Set_mark();
  }
  const PlanePoint point = PointOnSegment(*pmark, *pael, sek, avst);
  *x = point.v;
  *y = point.h;
  return 0;
}

int CVaglinje::Pldist(double x1, double y1, double x2, double y2, double px, double py, double* avst,
                      double* langs) {
  if (typ == kProfileType) return -1;
  const Foot foot = FootOnStraight({x1, y1}, {x2, y2}, {px, py});
  if (foot.place != FootPlace::kDegenerate) {
    *avst = foot.offset;
    *langs = foot.along;
  }
  return static_cast<int>(foot.place);
}

int CVaglinje::Padist(kovltype* a, kovltype* b, double x, double y, double* langs, double* avst) {
  if (typ == kProfileType) return -1;
  const Foot foot = FootOnArc(InPlane(*a), a->bulge, InPlane(*b), {y, x});
  if (foot.place == FootPlace::kInside) {
    *langs = foot.along;
    *avst = foot.offset;
  }
  return static_cast<int>(foot.place);
}

int CVaglinje::Bulge_r(kokotype* a, kokotype* b, double* radie, double* k1, double* k2, int riktning) {
  if (riktning != 0) {
    const Arc arc = ArcFromBulge(InPlane(*a), InPlane(*b), a->bulge);
    *radie = arc.radius;
    *k1 = arc.centre.h;
    *k2 = arc.centre.v;
    return 0;
  }
  const std::optional<double> bulge = BulgeFromRadius(InPlane(*a), InPlane(*b), *radie);
  if (!bulge)
    ShowStatus(FormatForUser(L"%s %.2lf (%.2lf,%.2lf - %.2lf,%.2lf)", L"Fel (bulge->radie) radie:", *radie,
                             a->ko1, a->ko2, b->ko1, b->ko2));
  a->bulge = bulge.value_or(0.0);
  return 0;
}

int CVaglinje::Vagstv(double x, double y, double* sek, double* avst, int lage) {
  if (typ == kProfileType) return -1;
  *avst = 0;
  *sek = Seknoll;
  StationSearch search{IsDescending(), Seknoll};
  if (Home() < 0) return -1;
  Set_mark();
  Node* start = forsta;
  Node* last = nullptr;
  if (lage == 1) start = NarrowSearch(x, y, &last);
  const bool search_vertices = SearchSegments(x, y, lage, last, &search);
  *sek = search.station;
  *avst = search.offset;
  if (search_vertices && NearestVertex(x, y, start, search.best, sek, avst)) return 0;
  return search.Result();
}

// Skips what the distances to both ends seem to rule out. Returns where a vertex search starts and, in
// *last, the end point; the segment search continues from the current point and the mark exactly as they
// are left here, which need not be neighbours.
CVaglinje::Node* CVaglinje::NarrowSearch(double x, double y, Node** last) {
  const PlanePoint p{y, x};
  double ignored_x = 0;
  double ignored_y = 0;
  const double from_first = Distance(p, InPlane(*pael));
  Vag2xy(pael->sek + from_first, 0, &ignored_x, &ignored_y);
  (*this)--;
  (*this)--;
  Node* start = aktuell;

  End();
  *last = aktuell;
  const double station = pael->sek - Distance(p, InPlane(*pael));
  PlanePoint there{};
  Vag2xy(station, 0, &there.v, &there.h);
  const double limit = station + Distance(p, there);
  while (pael->sek <= limit && (*this)-- != nullptr) {
  }
  return start;
}

// Searches the segments (mark, current). Returns whether the vertices are to be searched too.
bool CVaglinje::SearchSegments(double x, double y, int lage, const Node* last, StationSearch* search) {
  bool one_more = false;
  for (size_t segment = 0; (*this)++ != nullptr; ++segment) {
    search->Consider(segment, *pmark, FootOnSegment(*pmark, *pael, {y, x}));
    if (lage == 1) {
      if (one_more || aktuell == last) return search->station > Sekkoll;
      one_more = search->station < Sekkoll;
    }
    Set_mark();
  }
  return lage == 0 || (lage == 1 && search->station > Sekkoll);
}

// Takes the vertex nearest to the point when it is nearer than `best` and no end of the alignment.
bool CVaglinje::NearestVertex(double x, double y, Node* start, double best, double* sek, double* avst) {
  const PlanePoint p{y, x};
  const Node* nearest = nullptr;
  double distance = 0;
  double offset = 0;
  for (int at = Set_aktel(&start->record); at == 0; at = (*this)++ == nullptr ? -1 : 0) {
    const double d = Distance(p, InPlane(*pael));
    if (nearest != nullptr && !(d < distance)) continue;
    nearest = aktuell;
    distance = d;
    offset = OffsetFromVertex(Previous(), *pael, p, d);
  }
  pos = antal;  // the walk ended at the last point, wherever it was counted from
  if (nearest == nullptr || !(best > distance) || nearest == forsta || nearest == sista) return false;
  *avst = offset;
  *sek = nearest->record.sek;
  return true;
}

int CVaglinje::Extend(double fore, double efter) {
  if (typ == kProfileType) return -1;
  // The unit vector from one plan point to another; zero when they coincide.
  const auto direction = [](const PlanePoint& from, const PlanePoint& to) {
    const double length = Distance(from, to);
    return length > 0 ? PlanePoint{(to.h - from.h) / length, (to.v - from.v) / length} : PlanePoint{0, 0};
  };
  const auto is_zero = [](const PlanePoint& u) { return u.h == 0 && u.v == 0; };
  PlanePoint p{};

  if (fore > 0) {
    if (Home() < 0) return -1;
    const kovltype first = *pael;
    if (Vag2xy(first.sek + kIntoTheLine, 0, &p.v, &p.h) < 0) return -1;
    const PlanePoint u = direction(InPlane(first), p);
    if (is_zero(u)) return -1;
    Home();
    const kovltype added{p.v - u.v * fore, p.h - u.h * fore, 0, first.sek - fore};
    Ny(0, &added);
  }
  if (efter > 0) {
    if (End() < 0) return -1;
    pael->bulge = 0;
    const kovltype last = *pael;
    if (Vag2xy(last.sek - kIntoTheLine, 0, &p.v, &p.h) < 0) return -1;
    const PlanePoint u = direction(p, InPlane(last));
    if (is_zero(u)) return -1;
    const kovltype added{p.v + u.v * efter, p.h + u.h * efter, 0, last.sek + efter};
    Ny(1, &added);
  }
  return 0;
}

int CVaglinje::PktIomr(double x, double y, double* sek, double* avst, int lage) {
  double station = 0;
  double offset = 0;
  if (Vagstv(x, y, &station, &offset, lage) < 0) return -1;
  if (!StationArea{omrSekMin, omrSekMax, omrAvstMin, omrAvstMax}.Holds(station, offset)) return -1;
  if (sek != nullptr) *sek = station;
  if (avst != nullptr) *avst = offset;
  return 0;
}

}  // namespace velmora
