// A folder with all it holds, in memory: read from the disk, and put back.
#ifndef VELMORA_TESTS_RELIABILITY_TREE_H_
#define VELMORA_TESTS_RELIABILITY_TREE_H_

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace velmora::testing {

struct TreeEntry {
  bool folder = false;
  std::string bytes;
  std::optional<std::filesystem::file_time_type> modified;  // nothing: any time will do

  bool operator==(const TreeEntry& other) const { return folder == other.folder && bytes == other.bytes; }
};

// By path from the root, with slashes, as UTF-8. A folder comes before what is in it.
using Tree = std::map<std::string, TreeEntry>;

std::string Utf8Path(const std::filesystem::path& path);
Tree ReadTree(const std::filesystem::path& root);
// Changes only what is different.
void MakeTree(const std::filesystem::path& root, const Tree& tree);

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_RELIABILITY_TREE_H_
