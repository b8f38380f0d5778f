// A place in the registry for one test, and a registry of its own where that is possible.
#ifndef VELMORA_TESTS_SUPPORT_TEST_REGISTRY_H_
#define VELMORA_TESTS_SUPPORT_TEST_REGISTRY_H_

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <utility>
#include <vector>

#include "tests/support/environment_variable.h"
#include "tests/support/test_files.h"
#include "velmora/platform/registry_store.h"

namespace velmora {

// Removes a key with everything below it.
inline void RemoveRegistryTree(HKEY root, const CString& path) {
  std::vector<CString> names;
  {
    RegistryKey key;
    if (key.Open(root, path, KEY_READ) != kRegistryDone) return;
    key.ListKeys(&names);
  }
  for (const CString& name : names) RemoveRegistryTree(root, path + L"\\" + name);
  DeleteRegistryKey(root, path);
}

// Keys below Base() of any root are the test's and are removed at the end.
class TestRegistry : public ::testing::Test {
 protected:
  TestRegistry() : file_(L"VELMORA_REGISTRY", folder_.File(L"registry.db")) {
    base_.Format(L"Software\\velmora-test-%08x", static_cast<unsigned>(std::random_device()()));
  }
  ~TestRegistry() override {
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) RemoveRegistryTree(root, base_);
  }

  const CString& Base() const { return base_; }
  CString Key(const CString& name) const { return base_ + L"\\" + name; }
  // The whole text of a value; "?" when it cannot be read.
  static CString TextOf(HKEY root, const CString& path, const CString& name, int access = KEY_READ) {
    char bytes[4096] = {};
    size_t size = 0;
    RegistryKey key;
    if (key.Open(root, path, access) != kRegistryDone || key.Read(name, bytes, &size) != kRegistryDone)
      return L"?";
    return RegistryText(std::string_view(bytes, size));
  }

  TemporaryFolder folder_;
  EnvironmentVariable file_;

 private:
  CString base_;
};

}  // namespace velmora

#endif  // VELMORA_TESTS_SUPPORT_TEST_REGISTRY_H_
