// What a disk holds after its power was cut.
//
// A file's bytes are sure once the file was flushed, a name (made, renamed, removed) once its folder was. Of
// what is not sure names are kept in the order they were made in, up to any of them: that is what journals
// promise, and a rename is never torn. Bytes may be kept, lost, cut short, or there without those before
// them. Where no folder can be flushed (Windows, whose disks write names to a journal soon after, in order)
// no name is ever sure.
#ifndef VELMORA_TESTS_RELIABILITY_POWER_CUT_H_
#define VELMORA_TESTS_RELIABILITY_POWER_CUT_H_

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "tests/reliability/tree.h"
#include "velmora/platform/disk_hook.h"

namespace velmora::testing {

// A call that was made and changed something. Paths as a Tree's.
struct DiskEvent {
  static constexpr size_t kAtEnd = static_cast<size_t>(-1);

  DiskAction action;
  std::string path;
  std::string new_path;    // of a rename
  std::string bytes;       // of a write
  size_t offset = kAtEnd;  // of a write
  bool truncates = false;  // a write of no bytes: the file ends at `offset`
};

class UnsureDisk {
 public:
  // All of it sure.
  explicit UnsureDisk(const Tree& tree);

  void Apply(const DiskEvent& event);
  // Every state that may be found if the power goes now; some of them may be equal.
  std::vector<Tree> States() const;

 private:
  struct Write {
    std::string bytes;
    size_t offset;
    bool truncates;
  };
  struct File {
    TreeEntry sure;
    std::vector<Write> unsure;
  };
  struct NameChange {
    size_t file;  // kGone: the name is removed
    std::string path;
    std::string former_path;  // of a rename
  };
  enum class Bytes { kKept, kLost, kCutShort, kLastTorn, kFirstMissing };
  static constexpr size_t kGone = static_cast<size_t>(-1);
  using Names = std::map<std::string, size_t>;

  static void Perform(const NameChange& change, Names* names);
  static void Perform(const Write& write, std::string* bytes);
  static std::string Content(const File& file, Bytes which);
  size_t Add(TreeEntry entry);
  void Change(const NameChange& change);
  void FlushFolder(const std::string& folder);

  std::vector<File> files_;
  Names names_;
  Names sure_names_;
  std::vector<NameChange> unsure_names_;
};

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_RELIABILITY_POWER_CUT_H_
