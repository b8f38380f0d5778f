#include <cstdint>
#include <string>
#include <unordered_map>

#include "cli/project/commands.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/project/dir_sort.h"

namespace velmora::cli {
namespace {

// The folder itself and the one it lies in, which a listing of folders has too.
bool IsDots(const dirsorttype& entry) {
  const std::wstring_view name = entry.namn;
  return name == L"." || name == L"..";
}

bool HasEntry(CDirSort* list) {
  int at = list->Home();
  while (at == 0 && IsDots(*list->pael)) at = (*list)++ == nullptr ? -1 : 0;
  return at == 0;
}

// A record's own size is rounded and wraps at 4 GB.
std::unordered_map<std::wstring, std::uint64_t> SizesOf(const CString& pattern) {
  std::unordered_map<std::wstring, std::uint64_t> sizes;
  for (const FoundFile& file : FindFiles(pattern)) sizes.emplace(file.name.GetView(), file.status.size);
  return sizes;
}

}  // namespace

void ProjectList(const ProjectOptions& options) {
  const int key = options.sort == "size" ? 2 : options.sort == "date" ? 3 : 1;
  CDirSort list;
  // A folder alone stands for all that is in it.
  CString pattern = PathFromSystem(options.folder);
  const bool whole_folder = IsFolder(pattern);
  if (whole_folder) pattern = JoinPath(pattern, L"*");
  const bool folders = options.folders || whole_folder;
  if (list.Init(pattern, key, 1, 0, folders ? 1 : 0) < 0)
    throw Refusal(At(options.folder, "too many files to list in memory"));
  if (!HasEntry(&list)) {
    if (!folders && list.Init(pattern, 0, 1, 0, 1) == 0 && HasEntry(&list))
      throw Refusal(At(options.folder, "only folders match; --folders lists them"));
    throw Refusal(At(options.folder, whole_folder ? "the folder is empty"
                                                  : "nothing matches; check the folder and the wildcards"));
  }
  OutputFile output(options.output.file);
  RecordWriter records(output, options.output.Format(),
                       {{"name", "name"}, {"size", "size", true}, {"date", "date"}, {"time", "time"}});
  const auto sizes = SizesOf(pattern);
  // Descending is the ascending order from its end: the library's own descending keys compare less.
  int at = options.descending ? list.End() : list.Home();
  while (at == 0) {
    const dirsorttype& entry = *list.pael;
    const auto size = sizes.find(entry.namn);
    std::vector<Cell> cells(4);
    cells[0] = ToUtf8(entry.namn);
    if (size != sizes.end()) cells[1] = static_cast<std::int64_t>(size->second);
    cells[2] = ToUtf8(entry.datum);
    cells[3] = ToUtf8(entry.tid);
    if (!IsDots(entry)) records.Row(cells);
    at = (options.descending ? list-- : list++) == nullptr ? -1 : 0;
  }
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
