#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "cli/project/commands.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"
#include "velmora/project/dir_entry.h"

namespace velmora::cli {
namespace {

struct Entry {
  FoundFile file;
  dirsorttype listed;  // for the order by name
};

// The entries that CDirSort lists, without "." and "..". Its records have sizes and dates that are rounded
// and end at 2 GB and at 2037.
std::vector<Entry> EntriesOf(const CString& pattern, bool folders) {
  const std::wstring_view ending = RequiredEnding(pattern.GetView());
  std::vector<Entry> entries;
  for (FoundFile& file : FindFiles(pattern)) {
    if (file.name == L"." || file.name == L".." || !EndsWithNoCase(file.name.GetView(), ending)) continue;
    if (file.status.kind == FileKind::kFolder && !folders) continue;
    Entry entry{std::move(file), {}};
    FillEntry(entry.file, &entry.listed);
    entries.push_back(std::move(entry));
  }
  return entries;
}

// Equal sizes and times are in the order by name.
void Sort(const std::string& by, std::vector<Entry>* entries) {
  std::stable_sort(entries->begin(), entries->end(),
                   [](const Entry& a, const Entry& b) { return CompareEntries(a.listed, b.listed, 1) > 0; });
  if (by == "name") return;
  const auto value = [&](const Entry& entry) {
    return by == "size" ? static_cast<std::int64_t>(entry.file.status.size) : entry.file.status.modified;
  };
  std::stable_sort(entries->begin(), entries->end(),
                   [&](const Entry& a, const Entry& b) { return value(a) < value(b); });
}

std::string Formatted(const char* format, int a, int b, int c = 0) {
  char text[48];
  std::snprintf(text, sizeof text, format, a, b, c);
  return text;
}

}  // namespace

void ProjectList(const ProjectOptions& options) {
  // A folder alone stands for all that is in it.
  CString pattern = PathFromSystem(options.folder);
  const bool whole_folder = IsFolder(pattern);
  if (whole_folder) pattern = JoinPath(pattern, L"*");
  const bool folders = options.folders || whole_folder;
  std::vector<Entry> entries = EntriesOf(pattern, folders);
  if (entries.empty()) {
    if (!folders && !EntriesOf(pattern, true).empty())
      throw Refusal(At(options.folder, "only folders match; --folders lists them"));
    throw Refusal(At(options.folder, whole_folder ? "the folder is empty"
                                                  : "nothing matches; check the folder and the wildcards"));
  }
  Sort(options.sort, &entries);
  if (options.descending) std::reverse(entries.begin(), entries.end());
  OutputFile output(options.output.file, {});
  RecordWriter records(output, options.output.Format(),
                       {{"name", "name"}, {"size", "size", true}, {"date", "date"}, {"time", "time"}});
  for (const Entry& entry : entries) {
    const FileTime& time = entry.file.status.modified_local;
    const bool known = time.month != 0;
    records.Row({ToUtf8(entry.file.name), static_cast<std::int64_t>(entry.file.status.size),
                 known ? Formatted("%04d-%02d-%02d", time.year, time.month, time.day) : "",
                 known ? Formatted("%02d.%02d", time.hour, time.minute) : ""});
  }
  records.Finish();
  output.Finish();
}

}  // namespace velmora::cli
