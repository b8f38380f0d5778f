#include "velmora/platform/disk_watch.h"

#include <atomic>

namespace velmora {
namespace {

std::atomic<DiskWatch*> the_watch = nullptr;

}  // namespace

DiskWatch* SetDiskWatch(DiskWatch* watch) { return the_watch.exchange(watch); }

DiskWatch* CurrentDiskWatch() { return the_watch.load(std::memory_order_acquire); }

}  // namespace velmora
