#include "tests/alignment/shapes.h"

#include <cmath>

namespace velmora {

void AddPoints(CVaglinje* line, const std::vector<kovltype>& points) {
  for (const kovltype& point : points) line->Ny(1, &point);
}

int OpenLine::IndexOf(const Node* wanted) const {
  int index = 0;
  for (const Node* node = forsta; node != nullptr; node = node->next, ++index)
    if (node == wanted) return index;
  return -1;
}

double Uniform(std::mt19937& random, double low, double high) {
  return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

testing::AssertionResult Near(const std::vector<double>& actual, const std::vector<double>& expected) {
  for (size_t i = 0; i < expected.size(); ++i)
    if (!(std::fabs(actual[i] - expected[i]) <= 1e-9))
      return testing::AssertionFailure() << "number " << i << " is " << actual[i] << ", not " << expected[i];
  return testing::AssertionSuccess();
}

}  // namespace velmora
