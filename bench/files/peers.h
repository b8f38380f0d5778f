// Files of numbers as a program without velmora would read and write them at best: fast_float over a mapped
// file into a vector, std::to_chars into a buffer that goes to write(2). Nobody's file is kept safe, nothing
// is flushed to disk.
#ifndef VELMORA_BENCH_FILES_PEERS_H_
#define VELMORA_BENCH_FILES_PEERS_H_

#include <string>
#include <vector>

#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/stod_punkt.h"

namespace velmora::bench {

// Lines of four numbers; "*", a line and "*" lead over to lines of three.
struct Points {
  std::vector<kovltype> plan;
  std::vector<kovltype> profile;
};
Points ReadPoints(const std::string& file);
void WritePoints(const std::string& file, const Points& points);

// Behind a header of seven lines.
std::vector<stdpkttype> ReadSupportPoints(const std::string& file);
void WriteSupportPoints(const std::string& file, const std::vector<stdpkttype>& points);

}  // namespace velmora::bench

#endif  // VELMORA_BENCH_FILES_PEERS_H_
