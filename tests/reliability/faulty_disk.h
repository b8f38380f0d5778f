// A disk on which a call can be made to fail.
#ifndef VELMORA_TESTS_RELIABILITY_FAULTY_DISK_H_
#define VELMORA_TESTS_RELIABILITY_FAULTY_DISK_H_

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/reliability/power_cut.h"
#include "velmora/platform/disk_hook.h"

namespace velmora::testing {

inline constexpr size_t kAll = static_cast<size_t>(-1);

// At the call of this number, counted from 1; 0: no call fails.
struct Fault {
  int at = 0;
  bool lasting = false;  // and at every later one
  InjectedError error = InjectedError::kNone;
  size_t most = kAll;  // the first call does not fail but writes this many bytes at most
};

// What the disks of this system do.
struct DiskPromises {
  bool database_is_a_file;      // the registry's, whose calls pass the faulty disk too
  bool folders_are_flushed;     // so that names are sure
  bool denials_are_waited_for;  // another program may hold the file
};

// The process's disk hook for as long as it lives.
class FaultyDisk : public DiskHook {
 public:
  explicit FaultyDisk(std::filesystem::path root) : root_(std::move(root)), previous_(SetDiskHook(this)) {}
  ~FaultyDisk() override { SetDiskHook(previous_); }
  FaultyDisk(const FaultyDisk&) = delete;
  FaultyDisk& operator=(const FaultyDisk&) = delete;

  void Begin(const Fault& fault);
  // Since Begin: how many calls there were, in which action each, and what those that were made changed.
  int Calls() const { return static_cast<int>(actions_.size()); }
  DiskAction ActionOf(int call) const { return actions_.at(static_cast<size_t>(call) - 1); }
  const std::vector<DiskEvent>& Events() const { return events_; }
  // Changes of something that does not lie below the root.
  const std::vector<std::string>& Strays() const { return strays_; }

  InjectedError Before(const DiskCall& call, size_t* count) override;
  void After(const DiskCall& call, bool done) override;
  // For databases, which write anywhere in a file and truncate it.
  void Wrote(const std::filesystem::path& path, std::string_view bytes, size_t offset, bool truncates);

 private:
  std::string RelativePath(const std::filesystem::path& path);

  std::filesystem::path root_;
  DiskHook* previous_;
  Fault fault_;
  std::vector<DiskAction> actions_;
  std::vector<DiskEvent> events_;
  std::vector<std::string> strays_;
};

// Of this system, in posix/ and win32/.
DiskPromises Promises();
// The calls of all databases pass this disk from now on; null: none does.
void SetDiskOfDatabases(FaultyDisk* disk);

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_RELIABILITY_FAULTY_DISK_H_
