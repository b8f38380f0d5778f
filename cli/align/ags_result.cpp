#include "cli/align/ags_result.h"

#include "cli/output/ending.h"
#include "cli/terminal/error.h"
#include "velmora/lists/list_source.h"

namespace velmora::cli {

bool AgsResult::IsWanted(const LocateOptions& options) {
  constexpr char kEnding[] = ".ags";
  const OutputOptions& output = options.output;
  if (EndingOf(output.file) != kEnding) return false;
  if (EndingOf(options.points) != kEnding)
    throw Refusal(
        At(output.file,
           "only a list in AGS can be written again as AGS; give --points an .ags file, or -o a name "
           "that ends in .csv, .json or .txt"));
  const char* const option = output.csv           ? "--csv"
                             : output.spreadsheet ? "--spreadsheet"
                             : output.json        ? "--json"
                             : output.km          ? "--km"
                                                  : nullptr;
  if (option != nullptr)
    throw Refusal(
        At(output.file, std::string(option) + " does not apply to AGS; omit it or change the name"));
  return true;
}

void AgsResult::Write(OutputFile& output) const {
  exchange::WriteAgs(ReadWholeList(list_), alignment_, places_,
                     [&](std::string_view bytes) { output.Write(bytes); });
}

}  // namespace velmora::cli
