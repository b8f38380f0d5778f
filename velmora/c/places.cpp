#include <algorithm>
#include <cstring>
#include <limits>
#include <thread>

#include "velmora/c/handles.h"
#include "velmora/platform/in_threads.h"

namespace c = velmora::c;

namespace velmora::c {
namespace {

// Elements of an array that are not a row of aligned doubles are copied, so many at a time.
constexpr size_t kBlock = size_t{1} << 16;
constexpr size_t kLeastPerThread = 4096;
constexpr int kMostThreads = 1024;

// An array of the caller.
template <class Element>
class Array {
 public:
  Array(Element* first, ptrdiff_t step, const char* what, size_t count)
      : first_(reinterpret_cast<Byte*>(first)),
        step_(step == 0 ? static_cast<ptrdiff_t>(sizeof(Element)) : step) {
    Require(first != nullptr || count == 0, what);
  }

  // The elements from `begin` on where they lie; null when they have to be copied.
  Element* Direct(size_t begin) const {
    const bool plain = step_ == static_cast<ptrdiff_t>(sizeof(Element)) &&
                       reinterpret_cast<std::uintptr_t>(first_) % alignof(Element) == 0;
    return plain ? reinterpret_cast<Element*>(At(begin)) : nullptr;
  }
  template <class Value>
  void Gather(size_t begin, size_t count, Value* to) const {
    for (size_t i = 0; i < count; ++i) std::memcpy(&to[i], At(begin + i), sizeof(Value));
  }
  template <class Value>
  void Scatter(const Value* from, size_t begin, size_t count) const {
    for (size_t i = 0; i < count; ++i) std::memcpy(At(begin + i), &from[i], sizeof(Value));
  }

 private:
  using Byte = std::conditional_t<std::is_const_v<Element>, const char, char>;
  Byte* At(size_t i) const { return first_ + static_cast<ptrdiff_t>(i) * step_; }

  Byte* first_;
  ptrdiff_t step_;
};

using In = Array<const double>;
using Out = Array<double>;

// The elements of a part of an array in a row.
class Input {
 public:
  Input(const In& array, size_t begin, size_t count) : data_(array.Direct(begin)) {
    if (data_ != nullptr) return;
    copy_.resize(count);
    array.Gather(begin, count, copy_.data());
    data_ = copy_.data();
  }
  const double* Data() const { return data_; }

 private:
  const double* data_;
  std::vector<double> copy_;
};

template <class Element>
class Output {
 public:
  // Without an array the elements are dropped.
  Output(const Array<Element>* array, size_t begin, size_t count)
      : array_(array), begin_(begin), data_(array == nullptr ? nullptr : array->Direct(begin)) {
    if (data_ != nullptr) return;
    copy_.resize(count);
    data_ = copy_.data();
  }
  Element* Data() const { return data_; }
  void Finish() const {
    if (array_ != nullptr && !copy_.empty()) array_->Scatter(copy_.data(), begin_, copy_.size());
  }

 private:
  const Array<Element>* array_;
  size_t begin_;
  Element* data_;
  std::vector<Element> copy_;
};

// Calls work(begin, count) for parts of [0, count) in several threads; of at most `most` elements each.
template <class Work>
void InThreads(size_t count, size_t most, int threads, const Work& work) {
  Require(threads >= 0 && threads <= kMostThreads, "the number of threads is not from 0 to 1024");
  const size_t all =
      threads > 0 ? static_cast<size_t>(threads) : std::max<size_t>(1, std::thread::hardware_concurrency());
  const size_t used = std::clamp<size_t>(count / kLeastPerThread, 1, all);
  velmora::InThreads(used, static_cast<int>(used), [&](size_t part) {
    const size_t end = count / used * (part + 1) + (part + 1 == used ? count % used : 0);
    for (size_t begin = count / used * part; begin < end; begin += std::min(most, end - begin))
      work(begin, std::min(most, end - begin));
  });
}

size_t Most(bool direct, size_t count) { return direct ? std::max<size_t>(count, 1) : kBlock; }

}  // namespace
}  // namespace velmora::c

const char* velmora_place_text(int32_t place) {
  return velmora::PlaceText(static_cast<velmora::PlaceResult>(place));
}

velmora_status velmora_locate(const velmora_road* road, size_t count, const double* northing,
                              ptrdiff_t northing_step, const double* easting, ptrdiff_t easting_step,
                              double* station, ptrdiff_t station_step, double* offset, ptrdiff_t offset_step,
                              int32_t* place, ptrdiff_t place_step, uint32_t flags, int threads,
                              velmora_error* error) {
  return c::Guarded(error, [&] {
    c::Require(road != nullptr, "the road is null");
    c::RequireFlags(flags, VELMORA_SEARCHED);
    const c::In northings(northing, northing_step, "northing is null", count);
    const c::In eastings(easting, easting_step, "easting is null", count);
    const c::Out stations(station, station_step, "station is null", count);
    const c::Out offsets(offset, offset_step, "offset is null", count);
    const c::Array<int32_t> places(place, place_step, "", place == nullptr ? 0 : count);
    const auto locate = (flags & VELMORA_SEARCHED) != 0 ? &velmora::RoadPlacer::LocateAsSearched
                                                        : &velmora::RoadPlacer::Locate;
    const bool direct = northings.Direct(0) && eastings.Direct(0) && stations.Direct(0) &&
                        offsets.Direct(0) && place != nullptr && places.Direct(0);
    c::InThreads(count, c::Most(direct, count), threads, [&](size_t begin, size_t size) {
      const c::Input n(northings, begin, size);
      const c::Input e(eastings, begin, size);
      const c::Output s(&stations, begin, size);
      const c::Output o(&offsets, begin, size);
      const c::Output p(place == nullptr ? nullptr : &places, begin, size);
      (road->places.*locate)(n.Data(), e.Data(), size, s.Data(), o.Data(), p.Data());
      s.Finish();
      o.Finish();
      p.Finish();
    });
  });
}

velmora_status velmora_place(const velmora_road* road, size_t count, const double* station,
                             ptrdiff_t station_step, const double* offset, ptrdiff_t offset_step,
                             double* northing, ptrdiff_t northing_step, double* easting,
                             ptrdiff_t easting_step, int32_t* place, ptrdiff_t place_step, int threads,
                             velmora_error* error) {
  return c::Guarded(error, [&] {
    c::Require(road != nullptr, "the road is null");
    const c::In stations(station, station_step, "station is null", count);
    const c::In offsets(offset, offset_step, "offset is null", count);
    const c::Out northings(northing, northing_step, "northing is null", count);
    const c::Out eastings(easting, easting_step, "easting is null", count);
    const c::Array<int32_t> places(place, place_step, "", place == nullptr ? 0 : count);
    c::InThreads(count, c::kBlock, threads, [&](size_t begin, size_t size) {
      const c::Input s(stations, begin, size);
      const c::Input o(offsets, begin, size);
      const c::Output n(&northings, begin, size);
      const c::Output e(&eastings, begin, size);
      const c::Output p(place == nullptr ? nullptr : &places, begin, size);
      road->places.Place(s.Data(), o.Data(), size, n.Data(), e.Data(), p.Data());
      n.Finish();
      e.Finish();
      p.Finish();
    });
  });
}

velmora_status velmora_level(const velmora_road* road, size_t count, const double* station,
                             ptrdiff_t station_step, double* level, ptrdiff_t level_step, int threads,
                             velmora_error* error) {
  return c::Guarded(error, [&] {
    c::Require(road != nullptr, "the road is null");
    const c::In stations(station, station_step, "station is null", count);
    const c::Out levels(level, level_step, "level is null", count);
    c::InThreads(count, c::kBlock, threads, [&](size_t begin, size_t size) {
      const c::Input s(stations, begin, size);
      const c::Output l(&levels, begin, size);
      for (size_t i = 0; i < size; ++i)
        if (!road->levels || road->levels->Vagprofz(s.Data()[i], &l.Data()[i]) < 0)
          l.Data()[i] = std::numeric_limits<double>::quiet_NaN();
      l.Finish();
    });
  });
}
