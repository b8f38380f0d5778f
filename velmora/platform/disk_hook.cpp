#include "velmora/platform/disk_hook.h"

#include <atomic>

namespace velmora {
namespace {

std::atomic<DiskHook*> g_hook = nullptr;

}  // namespace

DiskHook* SetDiskHook(DiskHook* hook) { return g_hook.exchange(hook); }

DiskHook* CurrentDiskHook() { return g_hook.load(std::memory_order_acquire); }

void ReportOpened(const std::filesystem::path& path, bool done) {
  if (DiskHook* const hook = CurrentDiskHook())
    hook->After({.action = DiskAction::kOpenToRead, .path = path, .new_path = {}, .bytes = {}}, done);
}

}  // namespace velmora
