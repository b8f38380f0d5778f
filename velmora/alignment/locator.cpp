#include "velmora/alignment/locator.h"

#include <algorithm>
#include <utility>

#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/geometry.h"
#include "velmora/alignment/near_kernel.h"
#include "velmora/alignment/near_table.h"
#include "velmora/alignment/plan_snapshot.h"
#include "velmora/alignment/station_index.h"

namespace velmora {
namespace {

// What ends the walk of Vag2xy: in the second point and on, the first value above the station, both with
// their signs turned where stations fall.
std::vector<double> PlanEnds(const std::vector<kovltype>& points, bool descending) {
  std::vector<double> ends;
  for (size_t i = 1; i < points.size(); ++i)
    ends.push_back(descending ? -(points[i].sek - kStationTolerance) : points[i].sek + kStationTolerance);
  return ends;
}

std::vector<double> ProfileEnds(const std::vector<kovltype>& points) {
  std::vector<double> ends;
  for (size_t i = 1; i < points.size(); ++i) ends.push_back(points[i].y);
  return ends;
}

}  // namespace

struct Locator::State {
  State(std::vector<kovltype> points, int type, InstructionSet set)
      : typ(type),
        plan(std::move(points), CVaglinje::Seknoll),
        near(plan, NearRoutinesFor(set).distances),
        plan_stations(PlanEnds(plan.Points(), plan.Descending())),
        profile_stations(ProfileEnds(plan.Points())),
        kernel(NearRoutinesFor(set).find) {}

  NearView View() const {
    return {near.Grid(),
            near.Slots(),
            near.Squares(),
            plan.H(),
            plan.V(),
            plan.Inverse(),
            plan.Pads(),
            plan.Stations(),
            &plan,
            &near,
            plan.Points().size() - 1,
            plan.Descending()};
  }

  // What the table tells plainly; where it had too little to tell, once more after it was added to.
  void FindNear(const NearView& view, const double* x, const double* y, size_t count, double* sek,
                double* avst, int* result) const {
    std::fill_n(result, count, kNearUnsolved);
    if (near.Slots() == nullptr) return;
    kernel(view, x, y, count, sek, avst, result);
    const auto unsolved = static_cast<size_t>(std::count(result, result + count, kNearUnsolved));
    if (unsolved < 3 || unsolved < count / 8) return;
    const size_t known = near.Tiles();
    for (size_t i = 0; i < count; ++i)
      if (result[i] == kNearUnsolved) near.Square({y[i], x[i]});
    if (near.Tiles() != known) kernel(view, x, y, count, sek, avst, result);
  }

  // Among the candidates of the point's square where that holds, else by the trees.
  StationOffset Find(PlanePoint p) const {
    const NearSquare square = near.Slots() == nullptr ? 0 : near.Square(p);
    const double reach = NearReach(square);
    if (reach > 0) {
      PointSearch search = plan.NewSearch();
      SegmentRun single{};
      for (const SegmentRun& run : near.Runs(square, &single)) {
        for (size_t i = run.first; i < size_t{run.first} + run.count; ++i) {
          plan.SeeSegment(i, p, &search);
          search.SeeVertex(i, Distance(p, plan.At(i)));
        }
        const size_t end = size_t{run.first} + run.count;
        search.SeeVertex(end, Distance(p, plan.At(end)));
      }
      const bool vertex_answers = search.feet.best > search.vertex_distance && plan.IsInterior(search.vertex);
      if ((vertex_answers ? search.vertex_distance : search.feet.best) < reach)
        return plan.Conclude(search, p);
    }
    return plan.Find(p);
  }

  int typ;
  PlanSnapshot plan;
  NearTable near;
  StationIndex plan_stations;
  StationIndex profile_stations;
  NearKernel kernel;
};

Locator::Locator(const CVaglinje& line) : Locator(line.Points(), line.typ) {}

Locator::Locator(std::vector<kovltype> points, int typ, InstructionSet set)
    : state_(std::make_unique<State>(std::move(points), typ, set)) {}

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
  const NearView view = state_->View();
  for (size_t done = 0; done < count; done += kNearBlock) {
    const size_t block = std::min(kNearBlock, count - done);
    state_->FindNear(view, x + done, y + done, block, sek + done, avst + done, result + done);
    for (size_t i = done; i < done + block; ++i) {
      if (result[i] != kNearUnsolved) continue;
      const StationOffset found = state_->Find({y[i], x[i]});
      result[i] = found.result;
      sek[i] = found.station;
      avst[i] = found.offset;
    }
  }
}

int Locator::Vag2xy(double sek, double avst, double* x, double* y) const {
  if (state_->typ == kProfileType) return -1;
  *x = *y = kNoCoordinate;
  const std::vector<kovltype>& points = state_->plan.Points();
  if (points.size() < 2) return -1;
  const bool descending = state_->plan.Descending();
  const double first = points[0].sek;
  if (descending ? sek > first + kStationTolerance : sek < first - kStationTolerance) return -1;
  const size_t segment = state_->plan_stations.FirstAbove(descending ? -sek : sek);
  if (segment + 1 >= points.size()) return -1;
  const PlanePoint point = PointOnSegment(points[segment], points[segment + 1], sek, avst);
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
  const std::vector<kovltype>& points = state_->plan.Points();
  if (state_->typ == kPlanType || points.size() < 2 || points[0].y > sek) return -1;
  const size_t segment = state_->profile_stations.FirstAbove(sek);
  if (segment + 1 >= points.size()) return -1;
  *z = LevelOnSegment(points[segment], points[segment + 1], sek);
  return 0;
}

void Locator::Vagprofz(const double* sek, size_t count, double* z, int* result) const {
  for (size_t i = 0; i < count; ++i) result[i] = Vagprofz(sek[i], &z[i]);
}

}  // namespace velmora
