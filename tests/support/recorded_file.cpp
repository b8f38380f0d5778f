#include "tests/support/recorded_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace velmora::testing {

void PlayRecorded(const std::string& path,
                  const std::function<std::string(const std::string& name, const Lines& lines)>& play) {
  const bool record = std::getenv("VELMORA_RECORD") != nullptr;
  std::ifstream file(path, std::ios::binary);
  std::string all, name, expected;
  Lines lines;
  const auto finish = [&] {
    const std::string played =
        lines.empty() ? "" : play(name.substr(std::min<size_t>(3, name.size())), lines);
    const auto differ = std::mismatch(played.begin(), played.end(), expected.begin(), expected.end()).first;
    const auto line = std::string_view(played.begin(), differ).rfind('\n') + 1;
    EXPECT_TRUE(record || played == expected)
        << path << ", " << name << "\nexpected: " << expected.substr(line, 500)
        << "\nis now: " << played.substr(line, 500);
    all += (name.empty() ? "" : name + "\n") + played;
    lines.clear();
    expected.clear();
  };
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with("== ")) {
      finish();
      name = line;
    } else {
      lines.push_back(line);
      expected += line + "\n";
    }
  }
  finish();
  EXPECT_GT(std::count(all.begin(), all.end(), '\n'), 50) << path;
  file.close();
  if (record) std::ofstream(path, std::ios::binary) << all;
}

}  // namespace velmora::testing
