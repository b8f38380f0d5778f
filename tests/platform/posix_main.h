// The tests of this folder run themselves again as other programs.
#ifndef VELMORA_TESTS_PLATFORM_POSIX_MAIN_H_
#define VELMORA_TESTS_PLATFORM_POSIX_MAIN_H_

#include <sys/types.h>

#include <string>

namespace velmora {

inline constexpr wchar_t kRegistryWritersKey[] = L"Software\\Writers";
inline constexpr int kRegistryWrites = 5;

// Starts a program that writes `kRegistryWrites` values named after it to the key above, one that all
// writers share, and a sub-key of its name; its exit status is 0 when all went well.
pid_t StartRegistryWriter(const std::string& name);
// Starts a program that writes keys of its name to a profile.
pid_t StartProfileWriter(const std::string& name, const std::string& file);

}  // namespace velmora

#endif  // VELMORA_TESTS_PLATFORM_POSIX_MAIN_H_
