// The nearest of very many roads, and stations and offsets on it: many alignments, one search.
//
//   Network network(roads);                              // the points of each road, in order
//   network.Vagstv(x, y, count, road, sek, avst);        // arrays, from any number of threads
//
// A road is known by its number, its position among those given. The nearest is the one whose answer has the
// smallest offset, without regard to side; of equal ones the one with the lowest number. Station and offset
// are, to the last bit, what the road's Locator answers. A road that does not answer for a point, as where
// the point is beyond its ends, is not near it however close its end is.
#ifndef VELMORA_LOCATOR_NETWORK_H_
#define VELMORA_LOCATOR_NETWORK_H_

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

// One road's answer for a point.
struct NetworkPlace {
  int road;     // its number, from 0
  double sek;   // station, m
  double avst;  // offset, m, signed as by CVaglinje::Vagstv
};

// Immutable to its callers and safe to use from many threads at once; caches as Locator does.
class VELMORA_API Network {
 public:
  // Copies the points; prepared by `threads` threads (0: one a processor). Roads of less than two points keep
  // their numbers and never answer.
  explicit Network(std::span<const std::vector<kovltype>> roads, int threads = 1);
  // From the plans of alignment files, plain or combined, read and prepared by `threads` threads. A
  // road's number is its file's position. `results` gets one value for each file: 0, or -1 for one that
  // cannot be read, is a pipe or a device, or has no plan of two points, which never answers.
  Network(std::span<const CString> files, int threads, int* results);
  ~Network();
  // Takes over the other's roads; the other may then only be assigned to or destroyed. @{
  Network(Network&&) noexcept;
  Network& operator=(Network&&) noexcept;
  // @}

  // Map point to the nearest road, the station and the offset. Returns 0; -1 when no road answers, with -1 in
  // *road, Seknoll in *sek and 0 in *avst.
  int Vagstv(double x, double y, int* road, double* sek, double* avst) const;
  // The same for arrays of `count` that do not overlap, with the results in `road` alone.
  void Vagstv(const double* x, const double* y, size_t count, int* road, double* sek, double* avst) const;

  // Every road that answers with an offset of at most `metres` to either side, nearest first.
  std::vector<NetworkPlace> Within(double x, double y, double metres) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace velmora

#endif  // VELMORA_LOCATOR_NETWORK_H_
