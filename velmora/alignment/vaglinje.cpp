#include "velmora/alignment/vaglinje.h"

namespace velmora {

double CVaglinje::Seknoll = 9999999.9;
double CVaglinje::Sekkoll = 9999999.0;

int CVaglinje::Reset() {
  constexpr double kHalfWidth = 30.0;  // m
  if (antal < 1) {
    omrSekMin = omrSekMax = omrAvstMin = omrAvstMax = 0;
    return -1;
  }
  Set_mark();
  Home();
  omrSekMin = pael->sek;
  omrAvstMin = -kHalfWidth;
  End();
  omrSekMax = pael->sek;
  omrAvstMax = kHalfWidth;
  Goto_mark();
  return 0;
}

std::vector<kovltype> CVaglinje::Points() const {
  std::vector<kovltype> points;
  points.reserve(static_cast<size_t>(antal));
  for (const Node* node = forsta; node != nullptr; node = node->next) points.push_back(node->record);
  return points;
}

int CVaglinje::Vagnu(double* x, double* y, double* sek) {
  if (typ == 10 || Set_pael() < 0) return -1;
  *x = pael->x;
  *y = pael->y;
  *sek = pael->sek;
  return 0;
}

bool CVaglinje::IsDescending() const {
  return forsta != nullptr && forsta->next != nullptr && forsta->record.sek > forsta->next->record.sek;
}

const kovltype* CVaglinje::Previous() const {
  return aktuell == nullptr || aktuell->previous == nullptr ? nullptr : &aktuell->previous->record;
}

}  // namespace velmora
