#include "velmora/platform/disk_hook.h"

#include <atomic>

namespace velmora {
namespace {

std::atomic<DiskHook*> g_hook = nullptr;

}  // namespace

DiskHook* SetDiskHook(DiskHook* hook) { return g_hook.exchange(hook); }

DiskHook* CurrentDiskHook() { return g_hook.load(std::memory_order_acquire); }

}  // namespace velmora
