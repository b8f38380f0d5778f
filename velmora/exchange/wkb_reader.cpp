#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "velmora/exchange/curve_builder.h"
#include "velmora/exchange/wkb.h"
#include "velmora/exchange/wkb_types.h"

namespace velmora::exchange {
namespace {

constexpr int kDeepest = 2;  // of nesting: MULTICURVE, COMPOUNDCURVE, its part

struct Coordinates {
  double x = 0, y = 0, z = 0, m = 0;
};

class BlobReader {
 public:
  explicit BlobReader(std::string_view bytes) : rest_(bytes) {}

  // What comes after the GeoPackage header; false when that is damaged or the geometry is empty.
  bool SkipHeader() {
    constexpr size_t kFixed = 8;
    if (rest_.size() < kFixed || !rest_.starts_with("GP")) return false;
    const auto flags = static_cast<unsigned char>(rest_[3]);
    constexpr size_t kBoundsSizes[] = {0, 32, 48, 48, 64};
    const unsigned bounds = flags >> 1 & 7U;
    if (bounds >= std::size(kBoundsSizes) || rest_.size() < kFixed + kBoundsSizes[bounds]) return false;
    constexpr unsigned kEmpty = 16;
    rest_.remove_prefix(kFixed + kBoundsSizes[bounds]);
    return (flags & kEmpty) == 0;
  }

  // The type of the next geometry, without what says which coordinates its points have. 0 on damage.
  std::uint32_t Type() {
    if (rest_.empty()) return 0;
    little_ = rest_[0] == 1;
    rest_.remove_prefix(1);
    std::uint32_t type = 0;
    if (!Integer(&type)) return 0;
    constexpr std::uint32_t kExtendedLevels = 0x8000'0000U;
    constexpr std::uint32_t kExtendedMeasures = 0x4000'0000U;
    constexpr std::uint32_t kThousand = 1000;
    const std::uint32_t plain = type & 0xFFFFU;
    levels_ = (type & kExtendedLevels) != 0 || plain / kThousand == 1 || plain / kThousand == 3;
    measures_ = (type & kExtendedMeasures) != 0 || plain / kThousand == 2 || plain / kThousand == 3;
    return plain % kThousand;
  }

  bool Integer(std::uint32_t* number) {
    std::uint64_t value = 0;
    if (!Take(sizeof *number, &value)) return false;
    *number = static_cast<std::uint32_t>(value);
    return true;
  }

  bool Point(Coordinates* point) {
    return Real(&point->x) && Real(&point->y) && (!levels_ || Real(&point->z)) &&
           (!measures_ || Real(&point->m));
  }

  bool Levels() const { return levels_; }
  bool Measures() const { return measures_; }

 private:
  bool Take(size_t size, std::uint64_t* value) {
    if (rest_.size() < size) return false;
    if (little_)
      std::memcpy(value, rest_.data(), size);  // as the processor has them
    else
      for (size_t i = 0; i < size; ++i) *value = *value << 8 | static_cast<unsigned char>(rest_[i]);
    rest_.remove_prefix(size);
    return true;
  }
  bool Real(double* number) {
    std::uint64_t bits = 0;
    if (!Take(sizeof *number, &bits)) return false;
    *number = std::bit_cast<double>(bits);
    return true;
  }

  std::string_view rest_;
  bool little_ = true;
  bool levels_ = false;
  bool measures_ = false;
};

class LineReader {
 public:
  explicit LineReader(std::string_view blob) : blob_(blob) {}

  BlobLine Read() {
    if (!blob_.SkipHeader()) {
      error_ = "is empty or damaged";
    } else {
      ReadGeometry(0);
    }
    if (!error_.empty()) return {{}, false, error_};
    const bool has_stations = curve_.HasStations();
    return {curve_.Take(), has_stations, {}};
  }

 private:
  void ReadGeometry(int depth) {
    const std::uint32_t type = blob_.Type();
    std::uint32_t count = 0;
    if (type == 0 || !blob_.Integer(&count)) return Fail("is damaged");
    switch (type) {
      case kLineString:
        return ReadPoints(count, false);
      case kCircularString:
        return ReadPoints(count, true);
      case kCompoundCurve:
      case kMultiLineString:
      case kMultiCurve:
        if (depth == kDeepest || count == 0) return Fail("is damaged");
        for (std::uint32_t i = 0; i < count && error_.empty(); ++i) ReadGeometry(depth + 1);
        return;
      default:
        return Fail("is not a line");
    }
  }

  void ReadPoints(std::uint32_t count, bool arcs) {
    if (count < 2) return Fail("has fewer than two points");
    if (arcs && count % 2 == 0) return Fail("has an arc without its end");
    CurvePoint point;
    if (!Point(&point) || !Join(curve_.Start(point))) return;
    for (std::uint32_t i = 1; i < count; i += arcs ? 2 : 1) {
      CurvePoint end;
      if (!Point(&point) || (arcs && !Point(&end))) return;
      if (!Join(arcs ? curve_.ArcTo(point, end) : curve_.LineTo(point))) return;
    }
  }

  bool Point(CurvePoint* point) {
    Coordinates read;
    if (!blob_.Point(&read)) {
      error_ = "is damaged";
    } else if (!std::isfinite(read.x) || !std::isfinite(read.y)) {
      error_ = "has a point without coordinates";
    }
    point->at = {read.x, read.y};
    if (blob_.Measures() && std::isfinite(read.m)) point->station = read.m;
    return error_.empty();
  }

  bool Join(bool joined) {
    if (!joined) error_ = "cannot be an alignment: " + curve_.Problem();
    return joined;
  }
  void Fail(const char* why) { error_ = why; }

  BlobReader blob_;
  CurveBuilder curve_;
  std::string error_;
};

}  // namespace

BlobLine ReadLineBlob(std::string_view blob) { return LineReader(blob).Read(); }

std::optional<BlobPoint> ReadPointBlob(std::string_view blob) {
  BlobReader reader(blob);
  if (!reader.SkipHeader()) return {};
  std::uint32_t type = reader.Type();
  std::uint32_t count = 0;
  if (type == kMultiPoint && reader.Integer(&count) && count == 1) type = reader.Type();
  Coordinates point;
  if (type != kPoint || !reader.Point(&point) || !std::isfinite(point.x) || !std::isfinite(point.y))
    return {};
  BlobPoint read{point.x, point.y, {}};
  if (reader.Levels() && std::isfinite(point.z)) read.level = point.z;
  return read;
}

}  // namespace velmora::exchange
