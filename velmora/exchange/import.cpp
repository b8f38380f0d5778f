#include "velmora/exchange/import.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "velmora/alignment/checks.h"
#include "velmora/alignment/station_text.h"
#include "velmora/exchange/arcs.h"

namespace velmora::exchange {
namespace {

// What a check of the written file finds in its points.
void NoteFaults(BoundedFindings (*check)(const std::vector<kovltype>&, const std::vector<int>&),
                const std::vector<kovltype>& points, const char* what, ImportedRoad* road) {
  std::vector<int> numbers(points.size());
  std::iota(numbers.begin(), numbers.end(), 1);
  for (const Finding& fault : check(points, numbers).listed) {
    const kovltype& point = points[static_cast<size_t>(fault.line) - 1];
    Note(0,
         "point " + std::to_string(fault.line) + what + " at station " + StationText(point.sek, false) +
             ": " + fault.text,
         road);
  }
}

}  // namespace

void Note(std::int64_t line, std::string text, ImportedRoad* road) {
  if (road->findings.size() < kMostRoadFindings)
    road->findings.push_back({line, std::move(text), false, false});
}

void Refuse(std::int64_t line, std::string text, ImportedRoad* road) {
  road->refused = true;
  if (road->findings.size() < kMostRoadFindings)
    road->findings.push_back({line, std::move(text), true, true});
}

void FinishImport(double fit, double start, ImportedRoad* road) {
  if (road->refused) return;
  std::vector<kovltype>& plan = road->road.plan;
  std::vector<kovltype>& profile = road->road.profile;
  if (plan.size() < 2) {
    Refuse(0, "has no plan of two points or more", road);
    return;
  }
  if (!road->has_stations) SetStations(start, &plan);
  auto split = SplitArcs(plan, fit);
  auto split_profile = SplitArcs(profile, fit);
  if (!split || !split_profile) {
    Refuse(0,
           "its arcs would need more than " + std::to_string(kMostSplits) +
               " further points, or a number in it is too large; give --fit a larger value",
           road);
    return;
  }
  road->largest_error = std::max(road->largest_error, LargestDistance(plan, *split));
  plan = std::move(*split);
  profile = std::move(*split_profile);
  for (kovltype& point : profile) point.sek = point.y;
  NoteFaults(CheckPlan, plan, "", road);
  NoteFaults(CheckProfile, profile, " of the profile", road);
}

}  // namespace velmora::exchange
