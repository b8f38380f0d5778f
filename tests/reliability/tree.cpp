#include "tests/reliability/tree.h"

#include <fstream>
#include <iterator>

namespace velmora::testing {
namespace {

namespace fs = std::filesystem;

std::string BytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

fs::path In(const fs::path& root, const std::string& path) {
  return root / fs::path(std::u8string(path.begin(), path.end()));
}

}  // namespace

std::string Utf8Path(const fs::path& path) {
  const std::u8string text = path.generic_u8string();
  return {text.begin(), text.end()};
}

Tree ReadTree(const fs::path& root) {
  Tree tree;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
    TreeEntry& read = tree[Utf8Path(entry.path().lexically_relative(root))];
    read.folder = entry.is_directory();
    if (read.folder) continue;
    read.bytes = BytesOf(entry.path());
    read.modified = entry.last_write_time();
  }
  return tree;
}

void MakeTree(const fs::path& root, const Tree& tree) {
  const Tree now = ReadTree(root);
  for (auto at = now.rbegin(); at != now.rend(); ++at) {  // what is in a folder before the folder
    const auto& [path, entry] = *at;
    const auto wanted = tree.find(path);
    if (wanted == tree.end() || wanted->second.folder != entry.folder) fs::remove(In(root, path));
  }
  for (const auto& [path, entry] : tree) {
    const auto there = now.find(path);
    const bool same = there != now.end() && there->second == entry;
    if (entry.folder) {
      fs::create_directory(In(root, path));
      continue;
    }
    if (!same) std::ofstream(In(root, path), std::ios::binary) << entry.bytes;
    if (entry.modified && !(same && there->second.modified == entry.modified))
      fs::last_write_time(In(root, path), *entry.modified);
  }
}

}  // namespace velmora::testing
