// The look-ups in a plan a second time, for comparison to the last bit: one long-hand function an
// operation, on a vector with the current point and the mark as indices. Shares nothing with the library
// but the record.
#ifndef VELMORA_TESTS_ALIGNMENT_PLAIN_ALIGNMENT_H_
#define VELMORA_TESTS_ALIGNMENT_PLAIN_ALIGNMENT_H_

#include <cstddef>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora {

struct PlainAlignment {
  int Vag2xy(double sek, double avst, double* x, double* y);
  int Vagstv(double x, double y, double* sek, double* avst, int lage);
  static int Pldist(double x1, double y1, double x2, double y2, double px, double py, double* avst,
                    double* langs);
  static int Padist(const kovltype& a, const kovltype& b, double x, double y, double* langs, double* avst);

  std::vector<int> Cursors() const { return {current, mark, current + 1}; }
  const kovltype& At(int index) const { return p[static_cast<size_t>(index)]; }
  int Last() const { return static_cast<int>(p.size()) - 1; }
  bool Descending() const { return p.size() >= 2 && p[0].sek > p[1].sek; }

  std::vector<kovltype> p;
  int current = 0;
  int mark = -1;
};

}  // namespace velmora

#endif  // VELMORA_TESTS_ALIGNMENT_PLAIN_ALIGNMENT_H_
