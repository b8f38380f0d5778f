// The nearest of several roads for many points: the search of one plan over all of them (MergedRoads), whose
// answers are chosen road by road.
#ifndef VELMORA_LOCATOR_NETWORK_SEARCH_H_
#define VELMORA_LOCATOR_NETWORK_SEARCH_H_

#include <vector>

#include "velmora/locator/merged_roads.h"
#include "velmora/locator/plan_search.h"

namespace velmora {

// A road's answer for a point. Its distance is the offset's magnitude.
struct RoadAnswer {
  int road;
  double station;
  double offset;

  // By distance, of equal ones by number.
  bool IsBefore(const RoadAnswer& other) const;
};

class NetworkSearch : public PlanSearch {
 public:
  NetworkSearch(const MergedRoads& merged, double no_station, int threads,
                const BatchRoutines& routines = FastestRoutines());

  // Adds the answers of the roads within `metres`, in no order.
  void AddWithin(PlanePoint p, double metres, std::vector<RoadAnswer>* answers) const;

 protected:
  StationOffset FindOne(PlanePoint p) const override;

 private:
  class Met;

  PointSearch SearchOf(std::uint32_t mark) const;
  bool IsInterior(std::uint32_t mark, size_t vertex) const;
  // Nothing when the road does not answer.
  std::optional<RoadAnswer> Conclude(std::uint32_t mark, const PointSearch& search, PlanePoint p) const;
  std::optional<RoadAnswer> NearestInCell(PackedCell cell, PlanePoint p) const;
  // The distance of the nearest foot on any road, infinite without one: the nearest road is not farther.
  double NearestFoot(PlanePoint p) const;
  // Calls consider(segment) for those of the leaf that may be nearer than `metres`, which may fall meanwhile.
  template <class Consider>
  void ForLeaf(size_t leaf, PlanePoint p, const double& metres, Consider consider) const;
  // Of every road within `metres`, or with `nearest` of those that may be the nearest.
  void SearchTrees(PlanePoint p, double metres, bool nearest, std::vector<RoadAnswer>* answers) const;

  double no_station_;
  std::vector<MergedRoads::VertexRange> ranges_;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_NETWORK_SEARCH_H_
