// Files for tests, made and read without the library's own file functions.
#ifndef VELMORA_TESTS_SUPPORT_TEST_FILES_H_
#define VELMORA_TESTS_SUPPORT_TEST_FILES_H_

#include <string>
#include <string_view>
#include <vector>

#include "velmora/text/string.h"

namespace velmora {

// A folder of its own for one test, removed with all it holds at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // With backslashes, without one at the end.
  const CString& Path() const { return path_; }
  CString File(const CString& name) const { return path_ + L"\\" + name; }

 private:
  CString path_;
};

// Empty when there is no such file.
std::string ReadBytes(const CString& path);
void WriteBytes(const CString& path, std::string_view bytes);
void SetWriteProtected(const CString& path, bool write_protected);
// The names in a folder, sorted.
std::vector<CString> NamesIn(const CString& folder);

}  // namespace velmora

#endif  // VELMORA_TESTS_SUPPORT_TEST_FILES_H_
