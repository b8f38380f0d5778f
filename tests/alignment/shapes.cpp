#include "tests/alignment/shapes.h"

#include <cstdlib>

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

std::string RecordedFile(const std::string& name) {
  return std::string(std::getenv("VELMORA_RECORDED")) + "/" + name;
}

double Uniform(std::mt19937& random, double low, double high) {
  return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

}  // namespace velmora
