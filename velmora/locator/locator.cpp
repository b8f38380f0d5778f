#include "velmora/locator/locator.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/geometry.h"
#include "velmora/locator/plan_search.h"
#include "velmora/locator/station_index.h"

namespace velmora {
namespace {

std::vector<double> ProfileEnds(const std::vector<kovltype>& points) {
  std::vector<double> ends;
  for (size_t i = 1; i < points.size(); ++i) ends.push_back(points[i].y);
  return ends;
}

}  // namespace

struct Locator::State {
  // Made when first asked for.
  struct Stations {
    template <class Make>
    const StationIndex& From(const std::vector<kovltype>& points, const Make& make) {
      std::call_once(once, [&] { index = StationIndex(make(points)); });
      return index;
    }

    std::once_flag once;
    StationIndex index;
  };

  State(std::vector<kovltype> all, int type)
      : typ(type), points(std::move(all)), search(PlanSnapshot(points, CVaglinje::Seknoll)) {}

  int typ;
  std::vector<kovltype> points;
  PlanSearch search;
  Stations plan_stations;
  Stations profile_stations;
};

Locator::Locator(const CVaglinje& line) : Locator(line.Points(), line.typ) {}

Locator::Locator(std::vector<kovltype> points, int typ)
    : state_(std::make_unique<State>(std::move(points), typ)) {}

Locator::~Locator() = default;
Locator::Locator(Locator&&) noexcept = default;
Locator& Locator::operator=(Locator&&) noexcept = default;

int Locator::Vagstv(double x, double y, double* sek, double* avst) const {
  int result = -1;
  Vagstv(&x, &y, 1, sek, avst, &result);
  return result;
}

void Locator::Vagstv(const double* x, const double* y, size_t count, double* sek, double* avst,
                     int* result) const {
  if (state_->typ == kProfileType) {
    std::fill_n(result, count, -1);
    return;
  }
  state_->search.Find(x, y, count, sek, avst, result);
}

int Locator::Vag2xy(double sek, double avst, double* x, double* y) const {
  if (state_->typ == kProfileType) return -1;
  *x = *y = kNoCoordinate;
  const std::vector<kovltype>& points = state_->points;
  const std::optional<size_t> segment =
      SegmentAtStation(points, state_->plan_stations.From(points, PlanStations), sek);
  if (!segment) return -1;
  const PlanePoint point = PointOnSegment(points[*segment], points[*segment + 1], sek, avst);
  *x = point.v;
  *y = point.h;
  return 0;
}

void Locator::Vag2xy(const double* sek, const double* avst, size_t count, double* x, double* y,
                     int* result) const {
  for (size_t i = 0; i < count; ++i) result[i] = Vag2xy(sek[i], avst[i], &x[i], &y[i]);
}

int Locator::Vagprofz(double sek, double* z) const {
  *z = kNoCoordinate;
  const std::vector<kovltype>& points = state_->points;
  if (state_->typ == kPlanType || points.size() < 2 || points[0].y > sek) return -1;
  const size_t segment = state_->profile_stations.From(points, ProfileEnds).FirstAbove(sek);
  if (segment + 1 >= points.size()) return -1;
  *z = LevelOnSegment(points[segment], points[segment + 1], sek);
  return 0;
}

void Locator::Vagprofz(const double* sek, size_t count, double* z, int* result) const {
  for (size_t i = 0; i < count; ++i) result[i] = Vagprofz(sek[i], &z[i]);
}

}  // namespace velmora
