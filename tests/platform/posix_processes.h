// Processes of their own for tests: many that write at once, and some that are killed.
#ifndef VELMORA_TESTS_PLATFORM_POSIX_PROCESSES_H_
#define VELMORA_TESTS_PLATFORM_POSIX_PROCESSES_H_

#include <sys/types.h>

#include <functional>

#include "velmora/text/string.h"

namespace velmora {

// Runs `write` in `count` processes at once, the names "0", "1" and so on. All must succeed.
void RunTogether(int count, const std::function<bool(const CString& name)>& write);

// A process that takes turns until one fails or it is killed.
pid_t StartTurns(const std::function<bool()>& turn);
// Kills it; no turn may have failed before.
void Kill(pid_t process);

}  // namespace velmora

#endif  // VELMORA_TESTS_PLATFORM_POSIX_PROCESSES_H_
