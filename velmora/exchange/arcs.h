// Arcs and stations of plans and profiles, for the exchange formats. Pure functions on points.
//
// A plan's segment is the arc that its bulge describes, of any sweep below a full circle; one whose bulge is
// at most kStraightBulge is straight. Within a segment station grows with length.
#ifndef VELMORA_EXCHANGE_ARCS_H_
#define VELMORA_EXCHANGE_ARCS_H_

#include <optional>
#include <span>
#include <vector>

#include "velmora/alignment/geometry.h"

namespace velmora::exchange {

// The point at `fraction` of the length from `a` to `b`.
PlanePoint PointAlong(const kovltype& a, const kovltype& b, double fraction);
// Of the arc from `a` through `middle` to `b`: tan(sweep / 4), 0 where the three are on one line. Nothing
// where `a` and `b` coincide, or `middle` lies on their line outside them.
std::optional<double> BulgeThrough(PlanePoint a, PlanePoint middle, PlanePoint b);

// Splits arcs into equal parts, so that a bulge rounded to four decimals moves the middle of its arc by at
// most `fit` metres and every arc is below half a circle. An arc that holds this already is kept, and its
// bulge rounded where that moves it by no more than a thousandth of a millimetre. Stations are interpolated
// by length. Nothing when a number is not finite or more than kMostSplits points would be added.
inline constexpr size_t kMostSplits = 1'000'000;
std::optional<std::vector<kovltype>> SplitArcs(std::span<const kovltype> points, double fit);

// Sets the stations of a plan from `start` and the lengths.
void SetStations(double start, std::vector<kovltype>* plan);

// The first point of a profile whose station is not above that of the point before it, from 0; the number of
// points when there is none.
size_t FirstNotAhead(std::span<const kovltype> profile);

// The largest distance between points at equal lengths along two plans, each metre; wider apart where a plan
// is longer than 1,000 km. Infinite when one of them has no second point.
double LargestDistance(std::span<const kovltype> a, std::span<const kovltype> b);

// The ends of chords that depart from the plan by at most `error` metres, with stations in `sek`; their
// bulges are 0. At most kMostChords for each arc.
inline constexpr int kMostChords = 10'000;
std::vector<kovltype> Chords(std::span<const kovltype> plan, double error);

// A station's place on a plan.
struct Tick {
  double station;
  PlanePoint at;
  double direction;  // of travel along the list, radians
};
// The stations that lie on the plan, in the order of the plan's segments.
std::vector<Tick> TicksAt(std::span<const kovltype> plan, std::span<const double> stations);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_ARCS_H_
