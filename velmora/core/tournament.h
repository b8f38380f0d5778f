// A knock-out tournament that ranks n candidates by a pairwise comparison.
//
// The ranking equals that of a selection sort in which a later candidate replaces the best so far only
// when the comparison puts it before that one: the left side of every match has the earlier candidate,
// so the comparisons have the same operands in the same order. This holds for every transitive
// comparison, also for one that answers "before" for equal candidates, as the descending listings do
// (equal candidates are then in reverse order). It takes n log n comparisons
// instead of n squared.
#ifndef VELMORA_CORE_TOURNAMENT_H_
#define VELMORA_CORE_TOURNAMENT_H_

#include <cstddef>
#include <utility>

namespace velmora {

// Leaves of the match tree: the smallest power of two that holds n.
constexpr size_t TournamentLeaves(size_t n) {
  size_t leaves = 1;
  while (leaves < n) leaves *= 2;
  return leaves;
}
// How many ints a tournament of n candidates needs: the match tree, then the ranking.
constexpr size_t TournamentSize(size_t n) { return 2 * TournamentLeaves(n) + n; }

// ComesBefore(later, earlier): whether candidate `later`, of the higher number, comes before `earlier`.
template <class ComesBefore>
class Tournament {
 public:
  // `space` holds TournamentSize(n) ints and outlives the tournament.
  Tournament(int* space, size_t n, ComesBefore comes_before)
      : matches_(space),
        placed_(space + 2 * TournamentLeaves(n)),
        leaves_(TournamentLeaves(n)),
        comes_before_(std::move(comes_before)) {
    for (size_t i = 0; i < leaves_; ++i) matches_[leaves_ + i] = i < n ? static_cast<int>(i) : kNobody;
    for (size_t match = leaves_ - 1; match > 0; --match) Play(match);
  }

  // Puts the best remaining candidate at `place`.
  void TakeWinner(size_t place) {
    const int winner = matches_[1];
    placed_[place] = winner;
    size_t match = leaves_ + static_cast<size_t>(winner);
    matches_[match] = kNobody;
    while ((match /= 2) > 0) Play(match);
  }
  // The candidate at a place.
  int Placed(size_t place) const { return placed_[place]; }

 private:
  static constexpr int kNobody = -1;

  void Play(size_t match) {
    const int earlier = matches_[2 * match];
    const int later = matches_[2 * match + 1];
    const bool later_wins = earlier == kNobody || (later != kNobody && comes_before_(later, earlier));
    matches_[match] = later_wins ? later : earlier;
  }

  int* matches_;
  int* placed_;
  size_t leaves_;
  ComesBefore comes_before_;
};

}  // namespace velmora

#endif  // VELMORA_CORE_TOURNAMENT_H_
