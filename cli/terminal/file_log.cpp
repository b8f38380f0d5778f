#include "cli/terminal/file_log.h"

#include <mutex>
#include <set>
#include <string>

#include "cli/terminal/error.h"
#include "velmora/platform/disk_hook.h"

namespace velmora::cli {
namespace {

std::string NameOf(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(path, error);
  const std::u8string name = (error ? path : full.lexically_normal()).u8string();
  return {name.begin(), name.end()};
}

class FileLog final : public DiskHook {
 public:
  InjectedError Before(const DiskCall&, size_t*) override { return InjectedError::kNone; }
  void After(const DiskCall& call, bool done) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::string name = call.path.empty() ? "standard input" : NameOf(call.path);
    if (call.action == DiskAction::kOpenToRead && opened_.insert(name).second)
      Warn((done ? "reads " : "cannot open ") + name);
    if (call.action == DiskAction::kRename && done) Warn("writes " + NameOf(call.new_path));
    if (call.action == DiskAction::kRemove && done) Warn("removes " + name);
  }

 private:
  std::mutex mutex_;
  std::set<std::string> opened_;
};

}  // namespace

void LogFiles() {
  static FileLog log;
  SetDiskHook(&log);
}

}  // namespace velmora::cli
