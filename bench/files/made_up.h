// The settings of the benchmarks of files, and the road and folder that they make up.
#ifndef VELMORA_BENCH_FILES_MADE_UP_H_
#define VELMORA_BENCH_FILES_MADE_UP_H_

#include <string>
#include <vector>

#include "velmora/alignment/alignment_point.h"

namespace velmora::bench {

struct FileSettings {
  bool small = false;
  std::string json;
  std::string folder = "/dev/shm";
  std::string velmora;
};

// Ends the program when it does not hold.
void Require(bool good, const char* what);

// A plan with arcs, its digits as in files.
std::vector<kovltype> MadeUpPlan(int count);

// A folder below another, removed at the end.
class BenchFolder {
 public:
  explicit BenchFolder(const std::string& parent);
  ~BenchFolder();
  BenchFolder(const BenchFolder&) = delete;
  BenchFolder& operator=(const BenchFolder&) = delete;
  std::string File(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace velmora::bench

#endif  // VELMORA_BENCH_FILES_MADE_UP_H_
