// Stations and offsets of very many points: a snapshot of an alignment, searched instead of walked.
//
//   Locator locator(line);                                   // after Init; the alignment is then not needed
//   locator.Vagstv(x, y, count, sek, avst, result);          // arrays, from any number of threads
//
// Every answer is, to the last bit, the one that the alignment itself gives: results, stations, offsets,
// and the outputs where there is no answer, on every processor. Each operation takes one point, or arrays
// of `count` that do not overlap.
#ifndef VELMORA_LOCATOR_LOCATOR_H_
#define VELMORA_LOCATOR_LOCATOR_H_

#include <cstddef>
#include <memory>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/vaglinje.h"
#include "velmora/export.h"

namespace velmora {

// Immutable to its callers and safe to use from many threads at once. Look-ups cache what they computed
// about the ground near the line, within a limit that grows with the number of vertices: the first one at a
// place takes up to a microsecond, later ones some nanoseconds (docs/performance.md). With more than 65,000
// vertices they also keep the memory in which they sort scattered points, 52 bytes for each of a million of
// them or of two for each vertex.
class VELMORA_API Locator {
 public:
  // Copies the points, `typ` and Seknoll as they are now; the current point and the mark stay.
  explicit Locator(const CVaglinje& line);
  // From points in order and a type as CVaglinje's.
  Locator(std::vector<kovltype> points, int typ);
  ~Locator();
  // Takes over the other's points; the other may then only be assigned to or destroyed. @{
  Locator(Locator&&) noexcept;
  Locator& operator=(Locator&&) noexcept;
  // @}

  // Map point to station and offset, as CVaglinje::Vagstv with search mode 0. @{
  int Vagstv(double x, double y, double* sek, double* avst) const;
  void Vagstv(const double* x, const double* y, size_t count, double* sek, double* avst, int* result) const;
  // @}

  // Station and offset to map point, as CVaglinje::Vag2xy. @{
  int Vag2xy(double sek, double avst, double* x, double* y) const;
  void Vag2xy(const double* sek, const double* avst, size_t count, double* x, double* y, int* result) const;
  // @}

  // The level of a profile at a station, as CVaglinje::Vagprofz. @{
  int Vagprofz(double sek, double* z) const;
  void Vagprofz(const double* sek, size_t count, double* z, int* result) const;
  // @}

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_LOCATOR_H_
