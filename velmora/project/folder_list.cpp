#include "velmora/project/folder_list.h"

#include "velmora/common/folder_levels.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/quoted.h"

namespace velmora {
namespace {

constexpr int kShownOfRefusedLine = 255;

// Leading separators are ignored, because the name is joined to the project's path. A line of separators is
// the project itself.
bool IsAllowed(std::wstring_view name) {
  name.remove_prefix(std::min(name.find_first_not_of(L"\\/"), name.size()));
  return name.empty() || StaysInsideFolder(name);
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
    const bool allowed = IsAllowed(line.GetView());
    ListedFolder folder{number, allowed ? line : line.Left(kShownOfRefusedLine), allowed};
    if (list.folders.size() == kMostListedFolders) {
      list.unread = folder;
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
