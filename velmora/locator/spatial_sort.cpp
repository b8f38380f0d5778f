#include "velmora/locator/spatial_sort.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace velmora {

SpatialSort::SpatialSort(const BoundingBox& extent, size_t cells, size_t most)
    : low_(extent.low),
      most_(most),
      points_(Take<Point>(most)),
      cells_(Take<std::uint32_t>(most)),
      answers_(Take<Answer>(most)),
      next_((most >> kBucketBits) + 1) {
  const double width = std::max(extent.high.h - extent.low.h, 1.0);
  const double height = std::max(extent.high.v - extent.low.v, 1.0);
  const auto wanted = static_cast<double>(cells);
  const double side = std::max(std::sqrt(width * height / wanted), std::max(width, height) / wanted);
  per_metre_ = 1 / side;
  columns_ = static_cast<int>(width / side) + 1;
  rows_ = static_cast<int>(height / side) + 1;
  starts_.reset(new (std::nothrow)
                    std::uint32_t[static_cast<size_t>(columns_) * static_cast<size_t>(rows_) + 1]);
}

void SpatialSort::Sort(const double* x, const double* y, size_t count) {
  for (size_t i = 0; i < next_.size(); ++i) next_[i] = static_cast<std::uint32_t>(i << kBucketBits);
  // std::max(0.0, x) is 0 where x is not a number.
  const double last_column = columns_ - 1;
  const double last_row = rows_ - 1;
  std::uint32_t* const cell = cells_.get();
  for (size_t i = 0; i < count; ++i) {
    const double column = std::min(std::max(0.0, (y[i] - low_.h) * per_metre_), last_column);
    const double row = std::min(std::max(0.0, (x[i] - low_.v) * per_metre_), last_row);
    cell[i] = static_cast<std::uint32_t>(static_cast<int>(column) * rows_ + static_cast<int>(row));
  }
  const size_t cells = static_cast<size_t>(columns_) * static_cast<size_t>(rows_);
  std::uint32_t* const starts = starts_.get();
  std::fill_n(starts, cells + 1, 0U);
  for (size_t i = 0; i < count; ++i) ++starts[cell[i] + 1];
  for (size_t i = 0; i < cells; ++i) starts[i + 1] += starts[i];
  constexpr size_t kAhead = 24;  // points to prefetch
  for (size_t i = 0; i < count; ++i) {
    VELMORA_PREFETCH_WRITE(&points_[starts[cell[std::min(i + kAhead, count - 1)]]]);
    points_[starts[cell[i]]++] = {x[i], y[i], static_cast<std::uint32_t>(i)};
  }
}

void SpatialSort::ScatterAnswers(size_t count, double* station, double* offset, int* result) const {
  for (size_t i = 0; i < count; ++i) {
    const Answer& answer = answers_[i];
    station[answer.from] = answer.station;
    offset[answer.from] = answer.offset;
    result[answer.from] = answer.result;
  }
}

bool AreScattered(const double* x, const double* y, size_t count, double close) {
  constexpr size_t kSample = 64;
  if (count < 2 * kSample) return false;
  size_t apart = 0;
  for (size_t k = 0; k < kSample; ++k) {
    const size_t i = k * (count / kSample);
    apart += std::fabs(x[i + 1] - x[i]) + std::fabs(y[i + 1] - y[i]) > close ? 1 : 0;
  }
  return apart > kSample / 2;
}

}  // namespace velmora
