// Rounds, medians, and a table of ratios with its JSON, for the benchmarks that have peers.
#ifndef VELMORA_BENCH_MEASURE_H_
#define VELMORA_BENCH_MEASURE_H_

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace velmora::bench {

// Processor time of this process, all threads: unlike the clock it does not run for other programs.
double Seconds(const std::function<void()>& action);
// Time by the clock, for several threads or programs.
double Elapsed(const std::function<void()>& action);
double Median(std::vector<double> values);
// How far the ratios of the rounds lie apart without the lowest and the highest, as a share of their median.
double Noise(std::vector<double> ratios);

// Processor, compiler and flags, in one line.
std::string Machine();

struct Figure {
  std::string name;
  double ours;  // in `unit`
  double theirs;
  std::string unit;
  std::string peer;
  double ratio;  // how many times the peer, above 1 is better
  double noise;  // of the ratio
};

// Takes the command line apart: "--name" sets a switch, "--name TEXT" a text. False when a word is neither.
// "--machine" prints Machine() and ends the program.
bool ReadOptions(int count, char** words, const std::map<std::string, bool*>& switches,
                 const std::map<std::string, std::string*>& texts);

// The median seconds of two actions that take turns; how many times theirs is ours, and that ratio's noise.
struct Pair {
  double ours;
  double theirs;
  double ratio;
  double noise;
};
using Measure = double (*)(const std::function<void()>& action);
Pair TakeTurns(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs,
               Measure measure = Seconds);

// The figures of a program: each is printed as it comes, and all are written at the end.
class Figures {
 public:
  void Head(const std::string& what) const;
  void Add(Figure figure);
  bool WriteJson(const std::string& file) const;

 private:
  std::vector<Figure> figures_;
};

}  // namespace velmora::bench

#endif  // VELMORA_BENCH_MEASURE_H_
