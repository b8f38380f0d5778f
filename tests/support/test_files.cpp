#include "tests/support/test_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <system_error>

#include "velmora/platform/files.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

fs::path SystemPathOf(const CString& path) {
  const std::string name = PathForDisplay(path);
  return {std::u8string(name.begin(), name.end())};
}

CString PathOf(const fs::path& path) {
  const std::u8string name = path.u8string();
  return PathFromSystem(std::string(name.begin(), name.end()));
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  fs::path folder;
  do {
    folder = fs::temp_directory_path() / ("velmora-test-" + std::to_string(random()));
  } while (!fs::create_directory(folder));
  path_ = PathOf(folder);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  const fs::path folder = SystemPathOf(path_);
  for (auto at = fs::recursive_directory_iterator(folder, ignored); at != fs::end(at); at.increment(ignored))
    if (!at->is_symlink(ignored))
      fs::permissions(at->path(), fs::perms::owner_write, fs::perm_options::add, ignored);
  fs::remove_all(folder, ignored);
}

std::string ReadBytes(const CString& path) {
  std::ifstream file(SystemPathOf(path), std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

void WriteBytes(const CString& path, std::string_view bytes) {
  std::ofstream file(SystemPathOf(path), std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void SetWriteProtected(const CString& path, bool write_protected) {
  constexpr fs::perms kAll = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  fs::permissions(SystemPathOf(path), write_protected ? kAll : fs::perms::owner_write,
                  write_protected ? fs::perm_options::remove : fs::perm_options::add);
}

std::vector<CString> NamesIn(const CString& folder) {
  std::vector<CString> names;
  for (const auto& entry : fs::directory_iterator(SystemPathOf(folder)))
    names.push_back(PathOf(entry.path().filename()));
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace velmora
