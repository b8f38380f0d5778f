#include "sql/sqlite/road_cache.h"

#include <algorithm>
#include <new>

namespace velmora::sql {

void Check(velmora_status status, const velmora_error& error) {
  if (status == VELMORA_OK) return;
  if (status == VELMORA_NO_MEMORY) throw std::bad_alloc();
  std::string text;
  if (*error.file != '\0') text = std::string(error.file) + ": ";
  if (error.line > 0) text += "line " + std::to_string(error.line) + ": ";
  throw Refusal{text + error.text};
}

Road::Road(std::string_view bytes) : bytes_(bytes) {
  velmora_road* road;
  velmora_error error;
  Check(velmora_road_parse(bytes_.data(), bytes_.size(), &road, &error), error);
  road_.reset(road);
}

const LocateAnswer& Road::Locate(double northing, double easting) {
  if (located_ && northing == last_point_.northing && easting == last_point_.easting) return last_answer_;
  velmora_error error;
  located_ = false;
  Check(velmora_locate(road_.get(), 1, &northing, 0, &easting, 0, &last_answer_.station, 0,
                       &last_answer_.offset, 0, &last_answer_.result, 0, 0, 1, &error),
        error);
  located_ = true;
  last_point_ = {northing, easting};
  return last_answer_;
}

double Road::Level(double station) const {
  double level;
  velmora_error error;
  Check(velmora_level(road_.get(), 1, &station, 0, &level, 0, 1, &error), error);
  return level;
}

Point Road::PointAt(double station, double offset) const {
  Point point;
  std::int32_t result;
  velmora_error error;
  Check(velmora_place(road_.get(), 1, &station, 0, &offset, 0, &point.northing, 0, &point.easting, 0, &result,
                      0, 1, &error),
        error);
  return point;
}

std::string Road::Findings() const {
  constexpr std::size_t kMost = 100;
  std::string text;
  velmora_finding finding;
  for (std::size_t i = 0; i < kMost && i < velmora_road_finding(road_.get(), i, &finding); ++i) {
    if (i > 0) text += '\n';
    if (finding.line > 0) text += "line " + std::to_string(finding.line) + ": ";
    text += finding.text;
  }
  return text;
}

std::shared_ptr<Road> RoadCache::Get(std::string_view bytes) {
  constexpr std::size_t kMostRoads = 16;
  constexpr std::size_t kMostBytes = std::size_t{64} << 20;
  const auto found =
      std::find_if(roads_.begin(), roads_.end(), [&](const auto& road) { return road->Bytes() == bytes; });
  if (found != roads_.end()) {
    roads_.splice(roads_.begin(), roads_, found);
    return roads_.front();
  }
  roads_.push_front(std::make_shared<Road>(bytes));
  size_ += bytes.size();
  while (roads_.size() > 1 && (roads_.size() > kMostRoads || size_ > kMostBytes)) {
    size_ -= roads_.back()->Bytes().size();
    roads_.pop_back();
  }
  return roads_.front();
}

}  // namespace velmora::sql
