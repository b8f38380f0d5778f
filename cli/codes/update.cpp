#include <algorithm>

#include "cli/codes/code_file_on_disk.h"
#include "cli/codes/commands.h"
#include "velmora/settings/miljkod_format.h"

namespace velmora::cli {
namespace {

std::vector<RequiredMiljkod> Missing(const CodeEntries& entries) {
  std::vector<RequiredMiljkod> missing;
  for (const RequiredMiljkod& code : kRequiredMiljkods) {
    const auto is_it = [&](const CodeEntry& entry) {
      return entry.section == code.section && entry.code == code.name;
    };
    if (std::none_of(entries.begin(), entries.end(), is_it)) missing.push_back(code);
  }
  return missing;
}

}  // namespace

void CodesUpdate(const CodesOptions& options) {
  CodeFileOnDisk codes(options, false);
  const std::vector<RequiredMiljkod> missing = Missing(codes.Entries());
  if (!missing.empty()) {
    codes.RequireRewritable(options.force);
    codes.Facade().MiljkodUppdatX();
    if (!Missing(CodeFileOnDisk(options, false).Entries()).empty()) RefuseUnwritten(codes.Path());
  }
  OutputFile sink(options.output.file);
  const OutputFormat format = options.output.Format();
  if (format == OutputFormat::kTable)
    sink.Write(codes.Where() +
               (missing.empty() ? ": every code that programs rely on is there\n" : ", added:\n\n"));
  if (format != OutputFormat::kTable || !missing.empty()) {
    RecordWriter records(sink, format, {{"section", "section"}, {"code", "code"}, {"text", "text"}});
    for (const RequiredMiljkod& code : missing)
      records.Row({std::string(kSections[static_cast<size_t>(code.section) - 1]), ToUtf8(code.name),
                   ToUtf8(code.text)});
    records.Finish();
  }
  sink.Finish();
}

}  // namespace velmora::cli
