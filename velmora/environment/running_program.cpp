#include "velmora/environment/running_program.h"

#include <ctime>
#include <iterator>

#include "velmora/common/paths.h"
#include "velmora/platform/process.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

// A command line split at the first blank outside double quotes.
struct Arguments {
  std::wstring_view program;
  std::wstring_view others;
};

Arguments SplitArguments(std::wstring_view line) {
  line = TrimBlanks(line);
  bool quoted = false;
  size_t end = 0;
  for (; end < line.size() && (quoted || !IsBlank(line[end])); ++end)
    if (line[end] == L'"') quoted = !quoted;
  return {line.substr(0, end), TrimBlanks(line.substr(end))};
}

CString ProgramOf(const CString& command_line) {
  constexpr wchar_t kExtension[] = L".EXE";
  const Arguments arguments = SplitArguments(command_line.GetView());
  if (arguments.others.empty()) return command_line;
  CString text = command_line;
  text = SortUpper(text.TrimLeft(L'"'));
  const int extension = text.Find(kExtension);
  if (extension < 0) return SortUpper(CString(arguments.program));
  return text.Left(extension + static_cast<int>(std::size(kExtension)) - 1);
}

}  // namespace

CString ProgramFolderFromCommandLine(const CString& command_line, bool parent) {
  CString folder;
  SplitPath(ProgramOf(command_line), &folder, nullptr);
  return parent ? folder.Left(folder.ReverseFind(L'\\')) : folder;
}

void ReplaceApplicationProfile(const CString& path) {
  if (!ApplicationProfile().IsEmpty()) SetApplicationProfile(path);
}

CString DateText(int years_since_1900, int month, int day) {
  CString text;
  text.Format(L"%4d-%02d-%02d", years_since_1900 + (years_since_1900 <= 79 ? 2000 : 1900), month, day);
  return text;
}

CString TodayText() {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  return local == nullptr ? CString() : DateText(local->tm_year, local->tm_mon + 1, local->tm_mday);
}

}  // namespace velmora
