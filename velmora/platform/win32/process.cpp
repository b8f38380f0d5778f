#include "velmora/platform/process.h"

#include <algorithm>
#include <cwchar>
#include <mutex>
#include <optional>

#include "velmora/platform/types.h"

namespace velmora {
namespace {

struct Line {
  std::mutex mutex;
  size_t room = std::wcslen(GetCommandLineW());  // in the process's own buffer
  std::optional<CString> text;
};

Line& TheLine() {
  static Line line;
  return line;
}

}  // namespace

CString CommandLine() {
  Line& line = TheLine();
  const std::lock_guard<std::mutex> lock(line.mutex);
  return line.text ? *line.text : CString(GetCommandLineW());
}

// Where it fits it stands in the process's own buffer too, for programs that look there.
void SetCommandLine(const CString& text) {
  Line& line = TheLine();
  const std::lock_guard<std::mutex> lock(line.mutex);
  line.text = text;
  const std::wstring_view view = text.GetView();
  if (view.size() > line.room || view.find(L'\0') != std::wstring_view::npos) return;
  wchar_t* buffer = GetCommandLineW();
  *std::copy(view.begin(), view.end(), buffer) = L'\0';
}

}  // namespace velmora
