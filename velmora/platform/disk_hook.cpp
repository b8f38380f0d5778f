#include "velmora/platform/disk_hook.h"

#include <atomic>

namespace velmora {
namespace {

std::atomic<DiskHook*> the_watch = nullptr;

}  // namespace

DiskHook* SetDiskHook(DiskHook* watch) { return the_watch.exchange(watch); }

DiskHook* CurrentDiskWatch() { return the_watch.load(std::memory_order_acquire); }

}  // namespace velmora
