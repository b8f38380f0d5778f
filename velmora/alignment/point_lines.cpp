#include "velmora/alignment/point_lines.h"

#include "velmora/text/fixed_digits.h"

namespace velmora {
namespace {

constexpr size_t kLongestLine = 4 * (kLongestPlain + 1) + 2;

}  // namespace

// False, with nothing written, when one of the numbers is not plain.
template <size_t kNumbers>
bool PointLineWriter::WritePlain(const std::array<double, 4>& numbers) {
  if (used_ + kLongestLine > block_.size()) Flush();
  char* at = WriteFourDecimals<kNumbers>(numbers, block_.data() + used_);
  if (at == nullptr) return false;
  at[-1] = '\r';
  *at++ = '\n';
  used_ = static_cast<size_t>(at - block_.data());
  return true;
}

void PointLineWriter::PlanPoint(const kovltype& point) {
  if (WritePlain<4>({point.x, point.y, point.bulge, point.sek})) return;
  Flush();
  writer_->Write(FormatPoint(point).GetView());
}

void PointLineWriter::ProfilePoint(const kovltype& point) {
  if (WritePlain<3>({point.x, point.y, point.bulge, 0})) return;
  Flush();
  writer_->Write(FormatProfilePoint(point).GetView());
}

void PointLineWriter::Flush() {
  writer_->WriteAscii({block_.data(), used_});
  used_ = 0;
}

}  // namespace velmora
