#include "tests/alignment/shapes.h"

#include <sstream>

namespace velmora {

std::vector<kovltype> Points(const std::string& text) {
  std::vector<kovltype> points;
  std::istringstream all(text);
  for (std::string one; std::getline(all, one, ';');) {
    std::istringstream numbers(one);
    kovltype point{};
    if (numbers >> point.x >> point.y >> point.bulge >> point.sek) points.push_back(point);
  }
  return points;
}

std::vector<kovltype> PointsOf(CVaglinje& line) {
  std::vector<kovltype> points;
  for (int at = line.Home(); at == 0; at = line++ == nullptr ? -1 : 0) points.push_back(*line.pael);
  return points;
}

void AddPoints(CVaglinje* line, const std::vector<kovltype>& points) {
  for (const kovltype& point : points) line->Ny(1, &point);
}

int OpenLine::IndexOf(const Node* wanted) const {
  int index = 0;
  for (const Node* node = forsta; node != nullptr; node = node->next, ++index)
    if (node == wanted) return index;
  return -1;
}

}  // namespace velmora
