// What the tests of this folder share: alignments whose cursors can be seen, random numbers, files.
#ifndef VELMORA_TESTS_ALIGNMENT_SHAPES_H_
#define VELMORA_TESTS_ALIGNMENT_SHAPES_H_

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/alignment/vaglinje.h"

namespace velmora {

// The records of a list, from the first.
template <class List>
auto PointsOf(List& list) {
  std::vector<std::decay_t<decltype(*list.pael)>> points;
  for (int at = list.Home(); at == 0; at = list++ == nullptr ? -1 : 0) points.push_back(*list.pael);
  return points;
}
// Points are x, y, bulge, station.
void AddPoints(CVaglinje* line, const std::vector<kovltype>& points);

// An alignment that shows where it stands: current point and mark as indices, -1 for none, and position.
class OpenLine : public CVaglinje {
 public:
  explicit OpenLine(const std::vector<kovltype>& points) { AddPoints(this, points); }
  std::vector<int> Cursors() const { return {IndexOf(aktuell), IndexOf(mark), pos}; }

 private:
  int IndexOf(const Node* wanted) const;
};

// A file of recorded/.
std::string RecordedFile(const std::string& name);

double Uniform(std::mt19937& random, double low, double high);

class AlignmentFiles : public testing::Test {
 protected:
  template <class Alignment>
  int Load(Alignment* alignment, std::string_view bytes) {
    WriteBytes(file_, bytes);
    return alignment->Init(file_);
  }

  TemporaryFolder folder_;
  CString file_ = folder_.File(L"A$P1.VL");
  RecordedMessages messages_;
};

}  // namespace velmora

#endif  // VELMORA_TESTS_ALIGNMENT_SHAPES_H_
