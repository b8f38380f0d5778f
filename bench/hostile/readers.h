// Everything of velmora that reads a file, each as a function of a project's folder with one file in it.
#ifndef VELMORA_BENCH_HOSTILE_READERS_H_
#define VELMORA_BENCH_HOSTILE_READERS_H_

#include <functional>
#include <string>
#include <vector>

#include "velmora/text/string.h"

namespace velmora::bench {

struct Reader {
  std::string name;
  std::string file;  // below the project's folder
  std::function<void(const CString& folder)> read;
  // What else must be in the folder, by name.
  std::vector<std::pair<std::string, std::string>> beside = {};
};

std::vector<Reader> Readers();

}  // namespace velmora::bench

#endif  // VELMORA_BENCH_HOSTILE_READERS_H_
