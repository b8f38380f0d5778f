#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/geometry.h"
#include "velmora/alignment/vaglinje.h"

namespace velmora {

int CVaglinje::Vagprofz(double sek, double* z) {
  *z = kNoCoordinate;
  if (typ == kPlanType || Home() < 0) return -1;
  Set_mark();
  if (pael->y > sek) return -1;
  for (;;) {
    if ((*this)++ == nullptr) return -1;
    if (pael->y > sek) break;
    Set_mark();
  }
  *z = LevelOnSegment(*pmark, *pael, sek);
  return 0;
}

int CVaglinje::SektBerak(double start) {
  if (typ == kProfileType) return -1;
  if (Home() < 0) return 0;
  double station = start;
  pael->sek = station;
  Set_mark();
  while ((*this)++ != nullptr) {
    const PlanePoint point = InPlane(*pael);
    const PlanePoint before = InPlane(*pmark);
    station += IsStraight(pael->bulge) ? Distance(before, point) : ArcLength(point, before, pael->bulge);
    pael->sek = station;
    Set_mark();
  }
  return 0;
}

int CVaglinje::SektKorr(double x, double y, double sek) {
  constexpr double kAtPoint = 0.001;  // m
  if (typ == kProfileType || antal < 1) return -1;
  bool found = false;
  double shift = 0;
  for (int at = Home(); at == 0; at = (*this)++ == nullptr ? -1 : 0) {
    if (!(Distance(InPlane(*pael), {y, x}) < kAtPoint)) continue;
    shift = pael->sek - sek;
    found = true;
  }
  if (!found) return -1;
  for (int at = Home(); at == 0; at = (*this)++ == nullptr ? -1 : 0) pael->sek -= shift;
  return 0;
}

}  // namespace velmora
