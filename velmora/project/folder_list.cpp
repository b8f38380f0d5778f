#include "velmora/project/folder_list.h"

#include <algorithm>

#include "velmora/common/folder_levels.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

constexpr size_t kShownOfRefusedLine = 255;

// A line of separators is the project itself.
ListedFolder FolderOf(std::int64_t number, std::wstring_view line) {
  const std::wstring_view name = line.substr(std::min(line.find_first_not_of(L"\\/"), line.size()));
  if (name.empty() || StaysInsideFolder(name)) return {number, CString(name), true};
  return {number, CString(line.substr(0, kShownOfRefusedLine)), false};
}

}  // namespace

FolderList ReadFolderList(const CString& file) {
  FolderList list;
  TextReader reader;
  if (!reader.Open(file)) return list;
  CString line;
  std::int64_t number = 1;
  for (; reader.ReadLine(&line); ++number) {
    if (line.IsEmpty()) continue;
    ListedFolder folder = FolderOf(number, line.GetView());
    if (list.folders.size() == kMostListedFolders) {
      list.unread = std::move(folder);
      return list;
    }
    list.folders.push_back(std::move(folder));
  }
  if (reader.Failed()) list.unread = ListedFolder{number, CString(), false};
  return list;
}

Findings CheckFolderList(const FolderList& list) {
  Findings findings;
  const auto named = [](const ListedFolder& folder) { return "the folder " + Quoted(ToUtf8(folder.name)); };
  for (const ListedFolder& folder : list.folders)
    if (!folder.allowed)
      findings.push_back(
          {folder.line,
           named(folder) + " is not made: it leads out of the project or is not a valid folder name"});
  if (list.unread)
    findings.push_back({list.unread->line,
                        list.unread->name.IsEmpty()
                            ? "cannot be read from here on; is it a folder list?"
                            : named(*list.unread) + " and what follows are not read; is it a folder list?"});
  return findings;
}

}  // namespace velmora
