// Alignments from short text and at random, for the tests of this folder.
#ifndef VELMORA_TESTS_ALIGNMENT_SHAPES_H_
#define VELMORA_TESTS_ALIGNMENT_SHAPES_H_

#include <random>
#include <string>
#include <vector>

#include "velmora/alignment/vaglinje.h"

namespace velmora {

// "x y bulge sek; x y bulge sek; ..."
std::vector<kovltype> Points(const std::string& text);
std::vector<kovltype> PointsOf(CVaglinje& line);
void AddPoints(CVaglinje* line, const std::vector<kovltype>& points);
inline void AddPoints(CVaglinje* line, const std::string& text) { AddPoints(line, Points(text)); }

// An alignment whose current point and mark can be seen, as indices; -1 for none.
class OpenLine : public CVaglinje {
 public:
  explicit OpenLine(const std::vector<kovltype>& points = {}) { AddPoints(this, points); }
  int CurrentIndex() const { return IndexOf(aktuell); }
  int MarkIndex() const { return IndexOf(mark); }

 private:
  int IndexOf(const Node* wanted) const;
};

inline double Uniform(std::mt19937& random, double low, double high) {
  return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

}  // namespace velmora

#endif  // VELMORA_TESTS_ALIGNMENT_SHAPES_H_
