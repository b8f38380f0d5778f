// An installation for tests: folders and a registry of its own, and everything of the process that the
// environment changes put back at the end.
#ifndef VELMORA_TESTS_ENVIRONMENT_INSTALLED_H_
#define VELMORA_TESTS_ENVIRONMENT_INSTALLED_H_

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "tests/support/environment_variable.h"
#include "tests/support/print_text.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/test_files.h"
#include "velmora/environment/registry.h"

namespace velmora {

inline constexpr wchar_t kShellFolders[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
inline constexpr wchar_t kDist[] = L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\DIST\\sv";
inline constexpr wchar_t kReleaseKey[] = L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\RELEASE\\sv";
inline constexpr wchar_t kR20[] = L"SOFTWARE\\Wow6432Node\\Quorval\\Zennik\\Velmora\\R20\\sv";
// Below the test's folder.
inline constexpr wchar_t kShared[] = L"all\\Quorval\\Zennik\\Velmora\\sv";
inline constexpr wchar_t kUser[] = L"user\\Quorval\\Zennik\\Velmora\\R20\\sv";
inline constexpr wchar_t kFormerUser[] = L"user\\Brovald\\Zennik\\Velmora\\R20\\sv";

// A registry value for one test. The one that was there before, or its absence and that of the keys
// above it, comes back.
class RegistryValue {
 public:
  RegistryValue(HKEY root, const CString& key, const CString& name, const CString& value);
  ~RegistryValue();
  RegistryValue(const RegistryValue&) = delete;
  RegistryValue& operator=(const RegistryValue&) = delete;

 private:
  CRegistry registry_;
  CString key_;
  CString name_;
  std::optional<CString> previous_;
  std::vector<CString> made_;  // keys, the deepest first
};

// Begins with nothing installed.
class Installed : public ::testing::Test {
 protected:
  Installed();
  ~Installed() override;

  void Register(HKEY root, const CString& key, const CString& name, const CString& value) {
    registry_.push_back(std::make_unique<RegistryValue>(root, key, name, value));
  }
  // For the user and for all users.
  void RegisterDataFolders();
  // Relative to the test's folder; the folders on the way are made. Returns the full path.
  CString MakeFolders(const CString& folder) const;
  CString MakeFile(const CString& path, std::string_view bytes) const;
  // A Velmora.ini with this section SYSTEM.
  CString MakeIni(const CString& folder, const std::string& lines = "") const {
    return MakeFile(folder + L"\\Velmora.ini", "[SYSTEM]\r\n" + lines);
  }
  CString At(const CString& path) const { return folder_.File(path); }
  std::string UserBytes(const CString& name) const { return ReadBytes(At(kUser) + L"\\" + name); }

  TemporaryFolder folder_;
  RecordedMessages messages_;

 private:
  std::vector<std::unique_ptr<EnvironmentVariable>> variables_;
  std::vector<std::unique_ptr<RegistryValue>> registry_;
  CString command_line_;
  CString profile_;
};

}  // namespace velmora

#endif  // VELMORA_TESTS_ENVIRONMENT_INSTALLED_H_
