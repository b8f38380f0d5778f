#include "cli/error.h"
#include "cli/project/commands.h"
#include "velmora/platform/files.h"
#include "velmora/project/dir_sort.h"

namespace velmora::cli {

void ProjectList(const ProjectOptions& options) {
  const int key = options.sort == "size" ? 2 : options.sort == "date" ? 3 : 1;
  CDirSort list;
  if (list.Init(PathFromSystem(options.folder), key, 1, 0, options.folders ? 1 : 0) < 0)
    throw Refusal(At(options.folder, "too many files to list in memory"));
  if (list.Where() < 0)
    throw Refusal(At(options.folder, "nothing matches; check the folder and the wildcards"));
  Sink sink(options.output.file);
  RecordWriter records(sink, options.output.Format(),
                       {{"name", "name"}, {"size", "size", true}, {"date", "date"}, {"time", "time"}});
  // Falling is the rising order from its end: the library's own falling keys compare less.
  int at = options.falling ? list.End() : list.Home();
  while (at == 0) {
    const dirsorttype& entry = *list.pael;
    records.Row({ToUtf8(entry.namn), static_cast<std::int64_t>(entry.filstorlek), ToUtf8(entry.datum),
                 ToUtf8(entry.tid)});
    at = (options.falling ? list-- : list++) == nullptr ? -1 : 0;
  }
  records.Finish();
  sink.Finish();
}

}  // namespace velmora::cli
