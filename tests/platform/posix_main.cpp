#include "tests/platform/posix_main.h"

#include <gtest/gtest.h>
#include <spawn.h>
#include <unistd.h>

#include <vector>

#include "velmora/platform/files.h"
#include "velmora/platform/profile.h"
#include "velmora/platform/registry_store.h"

namespace velmora {
namespace {

constexpr const char* kRegistryWriter = "--write-registry";
constexpr const char* kProfileWriter = "--write-profile";

pid_t StartAgain(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "/proc/self/exe");
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  pid_t process = -1;
  EXPECT_EQ(posix_spawn(&process, argv[0], nullptr, nullptr, argv.data(), environ), 0);
  return process;
}

CString Numbered(const CString& name, int number) {
  CString numbered;
  numbered.Format(L"%s-%d", name, number);
  return numbered;
}

int WriteRegistry(const CString& name) {
  for (int i = 0; i < kRegistryWrites; ++i) {
    if (!SetRegistryText(HKEY_CURRENT_USER, kRegistryWritersKey, Numbered(name, i), name)) return 1;
    if (!SetRegistryText(HKEY_CURRENT_USER, kRegistryWritersKey, L"shared", name)) return 1;
  }
  RegistryKey key;
  return key.Create(HKEY_CURRENT_USER, CString(kRegistryWritersKey) + L"\\" + name, KEY_READ) == kRegistryDone
             ? 0
             : 1;
}

int WriteProfileKeys(const CString& name, const CString& file) {
  for (int i = 0; i < 3; ++i)
    if (!WriteProfile(L"Writers", Numbered(name, i), name, file)) return 1;
  return 0;
}

}  // namespace

pid_t StartRegistryWriter(const std::string& name) { return StartAgain({kRegistryWriter, name}); }

pid_t StartProfileWriter(const std::string& name, const std::string& file) {
  return StartAgain({kProfileWriter, name, file});
}

}  // namespace velmora

int main(int argc, char** argv) {
  using namespace velmora;
  const std::vector<std::string> arguments(argv, argv + argc);
  if (argc == 3 && arguments[1] == kRegistryWriter) return WriteRegistry(FromUtf8(arguments[2]));
  if (argc == 4 && arguments[1] == kProfileWriter)
    return WriteProfileKeys(FromUtf8(arguments[2]), PathFromSystem(arguments[3]));
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
