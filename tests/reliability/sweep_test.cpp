// Every operation that writes, with every call to the disk failing in every way, and with a power cut after
// every call: each file is wholly the old or wholly the new one, nothing else has changed, a failure is
// reported, and the next run completes the operation and leaves no temporary files.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <vector>

#include "tests/reliability/faulty_disk.h"
#include "tests/reliability/operations.h"
#include "tests/reliability/tree.h"
#include "tests/support/environment_variable.h"
#include "tests/support/run_command.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

using Files = std::map<std::string, std::string>;

// Calls after which an operation is long. The sanitizers, which take time, need fewer ways in which a call
// fails.
int LongFrom() {
  const char* const calls = std::getenv("VELMORA_LONG_FROM");
  return calls == nullptr ? 60 : std::atoi(calls);
}

struct Count {
  std::set<std::string> operations;
  int calls = 0;
  int faults = 0;
  int cuts = 0;
  int states = 0;
} the_count;

// Prints at the end what was done.
class Figures : public ::testing::Environment {
 public:
  // A folder in memory saves the time of thousands of flushes.
  void SetUp() override {
    const std::string folder = PathFromEnvironment("VELMORA_TEST_FOLDER");
    if (folder.empty()) return;
    for (const wchar_t* name : {L"TMP", L"TMPDIR"})
      variables_.push_back(std::make_unique<EnvironmentVariable>(name, PathFromSystem(folder)));
  }
  void TearDown() override {
    std::printf("%zu operations, %d calls, %d faults, %d power cuts with %d states of the disk\n",
                the_count.operations.size(), the_count.calls, the_count.faults, the_count.cuts,
                the_count.states);
  }

 private:
  std::vector<std::unique_ptr<EnvironmentVariable>> variables_;
};
const ::testing::Environment* const kFigures = ::testing::AddGlobalTestEnvironment(new Figures);

// Left by an interrupted replacement, until the next one.
bool IsTemporary(const std::string& path) {
  return path.ends_with(".velmora-new") || path.ends_with(".velmora-ini") || path.ends_with(".tmp");
}

// Times do not count.
Files Contents(const Tree& tree) {
  Files files;
  for (const auto& [path, entry] : tree) files[path] = entry.folder ? "folder" : "=" + entry.bytes;
  return files;
}

Files WithoutTemporaries(Files files) {
  std::erase_if(files, [](const auto& file) { return IsTemporary(file.first); });
  return files;
}

std::string At(const Files& files, const std::string& path) {
  const auto found = files.find(path);
  return found == files.end() ? "(none)" : "=" + found->second;
}

class Sweep : public ::testing::TestWithParam<Operation> {
 protected:
  Sweep() : disk_(scene_.Root()) {
    the_count.operations.insert(op_.name);
    SetDiskOfDatabases(op_.registry == Registry::kUnused ? nullptr : &disk_);
    disk_.Begin({});
    op_.prepare(scene_);
    tree_ = ReadTree(scene_.Root());
    before_ = View();
    // The reference for all that follows: what it does, and that a second run changes nothing.
    disk_.Begin({});
    told_ = Run();
    events_ = disk_.Events();
    calls_ = disk_.Calls();
    after_ = View();
    told_again_ = Run();
  }
  ~Sweep() override { SetDiskOfDatabases(nullptr); }

  Files View() { return scene_.View(op_.registry); }
  std::string Run() { return scene_.Told(op_.run.made(scene_)); }

  // Whether each file is the old or the new one. `whole`: every file is of the same kind.
  ::testing::AssertionResult IsOldOrNew(const Files& files, bool whole) const {
    std::set<std::string> paths;
    for (const Files* some : {&before_, &after_, &files})
      for (const auto& [path, bytes] : *some) paths.insert(path);
    bool all_old = true;
    bool all_new = true;
    for (const std::string& path : paths) {
      const std::string is = At(files, path);
      const bool old = is == At(before_, path);
      const bool fresh = is == At(after_, path);
      if (!old && !fresh && !(IsTemporary(path) && At(before_, path) == "(none)"))
        return ::testing::AssertionFailure()
               << path << " is neither the old nor the new one: " << is.substr(0, 300);
      if (old || fresh) all_old = all_old && old, all_new = all_new && fresh;
    }
    if (whole && !all_old && !all_new)
      return ::testing::AssertionFailure() << "some files are old and some new";
    return ::testing::AssertionSuccess();
  }

  // Without faults.
  void ExpectTheNextRunToFinish(bool settles) {
    disk_.Begin({});
    Run();
    const Files files = View();
    EXPECT_TRUE(settles ? files == after_ : bool{IsOldOrNew(files, false)})
        << "the next run does not finish it";
    for (const auto& [path, bytes] : files) EXPECT_TRUE(!IsTemporary(path)) << path;
  }

  // False when there are fewer calls.
  bool TryFault(const Fault& fault) {
    MakeTree(scene_.Root(), tree_);
    disk_.Begin(fault);
    const std::string told = Run();
    if (disk_.Calls() < fault.at) return false;
    ++the_count.faults, ++tried_;
    const DiskAction failed = disk_.ActionOf(fault.at);
    disk_.Begin({});
    const Files files = View();
    if (told == op_.done && WithoutTemporaries(files) == after_) {
      ++succeeded_;
      // A database repeats it later.
      if (fault.error != InjectedError::kTransient && fault.most == kAll &&
          op_.registry == Registry::kUnused) {
        EXPECT_TRUE(failed != DiskAction::kWrite && failed != DiskAction::kFlush) << "it is not on the disk";
      }
    } else {
      EXPECT_TRUE(std::count(op_.failures.begin(), op_.failures.end(), told) == 1) << told;
      EXPECT_TRUE(IsOldOrNew(files, !op_.several)) << told;
      // A reported failure has changed nothing.
      if (told != op_.done && !op_.several) {
        for (const auto& [path, bytes] : before_) EXPECT_EQ(At(files, path), At(before_, path)) << told;
      }
      seen_.insert(told);
    }
    if (!fault.lasting && failed != DiskAction::kRemove) {
      EXPECT_TRUE(files == WithoutTemporaries(files)) << "something is left that could have been removed";
    }
    ExpectTheNextRunToFinish(op_.settles);
    return true;
  }

  void SweepFaults(const Fault& kind, std::string_view name) {
    for (Fault fault = kind; !HasFailure(); ++fault.at) {
      const ::testing::ScopedTrace trace(
          __FILE__, __LINE__,
          std::string(name) + ", call " + std::to_string(fault.at) + (fault.lasting ? " and later" : ""));
      if (!TryFault(fault)) break;
    }
  }

  Files FilesAfter(const Tree& state) {
    MakeTree(scene_.Root(), state);
    disk_.Begin({});
    return View();
  }

  const Operation& op_ = GetParam();
  Scene scene_;
  FaultyDisk disk_;
  Tree tree_;
  Files before_, after_;
  std::string told_, told_again_;
  std::vector<DiskEvent> events_;
  int calls_ = 0;
  int succeeded_ = 0;
  std::set<std::string> seen_;
  int tried_ = 0;
};

TEST_P(Sweep, EveryCallFailsInEveryWay) {
  ASSERT_EQ(told_, op_.done);
  ASSERT_NE(before_, after_);
  ASSERT_EQ(View(), after_) << "a second run changes something";
  // The registry of Windows has no hook.
  if (calls_ == 0 && !Promises().database_is_a_file && op_.registry != Registry::kUnused) return;
  ASSERT_GT(calls_, 0);
  using enum InjectedError;
  // On Windows a denial may be another program's hold on the file and is waited for, up to seconds.
  const bool all = !Promises().denials_are_waited_for || op_.name == "ReplaceAFile";
  // The many calls of a long operation are the same ones again and again.
  const bool is_long = calls_ > LongFrom();
  for (const bool lasting : {false, true}) {
    if (!is_long || lasting) SweepFaults({.at = 1, .lasting = lasting, .error = kFull}, "full");
    if (!is_long || !lasting) SweepFaults({.at = 1, .lasting = lasting, .error = kFailing}, "failing");
    if (!is_long && (all || !lasting)) SweepFaults({.at = 1, .lasting = lasting, .error = kDenied}, "denied");
  }
  const int failed = tried_ - succeeded_;
  // On Windows only opening and renaming wait for another program's hold on a file.
  if (!is_long && !Promises().denials_are_waited_for)
    SweepFaults({.at = 1, .error = kTransient}, "interrupted");
  if (!is_long) SweepFaults({.at = 1, .most = 1}, "one byte written");
  EXPECT_EQ(tried_ - succeeded_, failed) << "a transient error made it fail";
  // The disk gets full within a write.
  if (!is_long) SweepFaults({.at = 1, .lasting = true, .error = kFull, .most = 1}, "full after one byte");
  for (const std::string& stray : disk_.Strays()) ADD_FAILURE() << stray << " was changed";
  // Some come from the registry only.
  if (op_.registry == Registry::kUnused || Promises().database_is_a_file) {
    for (const std::string& failure : op_.failures)
      EXPECT_TRUE(seen_.contains(failure)) << "never seen: " << failure;
  }
  the_count.calls += calls_;
}

TEST_P(Sweep, PowerCutAfterEveryCall) {
  UnsureDisk disk(tree_);
  std::set<Files> seen;
  for (size_t made = 0; !HasFailure(); ++made) {
    ++the_count.cuts;
    for (const Tree& state : disk.States()) {
      const ::testing::ScopedTrace trace(__FILE__, __LINE__, "after " + std::to_string(made) + " changes");
      if (made == events_.size() && Promises().folders_are_flushed && !op_.forgets) {
        EXPECT_TRUE(FilesAfter(state) == after_) << "it was reported as done and may get lost";
      }
      if (!seen.insert(Contents(state)).second) continue;
      ++the_count.states;
      EXPECT_TRUE(IsOldOrNew(FilesAfter(state), !op_.several));
      ExpectTheNextRunToFinish(true);
    }
    if (made == events_.size()) break;
    disk.Apply(events_[made]);
  }
}

INSTANTIATE_TEST_SUITE_P(Every, Sweep, ::testing::ValuesIn(AllOperations()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace velmora::testing
