#include <geos_c.h>

#include <cmath>

#include "bench/locator/peers.h"

namespace velmora {
namespace {

class GeosPeer : public Peer {
 public:
  explicit GeosPeer(const std::vector<kovltype>& road) : geos_(GEOS_init_r()) {
    GEOSCoordSequence* line = GEOSCoordSeq_create_r(geos_, static_cast<unsigned>(road.size()), 2);
    for (unsigned i = 0; i < road.size(); ++i) GEOSCoordSeq_setXY_r(geos_, line, i, road[i].y, road[i].x);
    line_ = GEOSGeom_createLineString_r(geos_, line);
    prepared_ = GEOSPrepare_r(geos_, line_);
  }
  ~GeosPeer() override {
    GEOSPreparedGeom_destroy_r(geos_, prepared_);
    GEOSGeom_destroy_r(geos_, line_);
    GEOS_finish_r(geos_);
  }
  GeosPeer(const GeosPeer&) = delete;
  GeosPeer& operator=(const GeosPeer&) = delete;

  std::string Name() const override { return "GEOS prepared"; }
  void Locate(const Places& places, size_t count, double* station, double* offset) const override {
    for (size_t i = 0; i < count; ++i) {
      GEOSGeometry* point = GEOSGeom_createPointFromXY_r(geos_, places.y[i], places.x[i]);
      GEOSCoordSequence* both = GEOSPreparedNearestPoints_r(geos_, prepared_, point);
      double h = 0;
      double v = 0;
      GEOSCoordSeq_getXY_r(geos_, both, 0, &h, &v);
      station[i] = 0;
      offset[i] = std::hypot(places.y[i] - h, places.x[i] - v);
      GEOSCoordSeq_destroy_r(geos_, both);
      GEOSGeom_destroy_r(geos_, point);
    }
  }

 private:
  GEOSContextHandle_t geos_;
  GEOSGeometry* line_;
  const GEOSPreparedGeometry* prepared_;
};

}  // namespace

std::unique_ptr<Peer> MakeGeosPeer(const std::vector<kovltype>& road) {
  return std::make_unique<GeosPeer>(road);
}

}  // namespace velmora
