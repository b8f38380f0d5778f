#include "cli/align/exchange_formats.h"

#include "cli/output/output_file.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/platform/files.h"

namespace velmora::cli {

const exchange::RoadFormat& FormatOf(const std::string& file) {
  std::string why;
  if (const auto* const format = exchange::RoadFormatOf(EndingOfName(file), &why)) return *format;
  throw Refusal(At(file, (why.empty() ? "the ending chooses the format" : why) +
                             "; use a name that ends in one of " + exchange::RoadFormatEndings()));
}

std::vector<exchange::ImportedRoad> ReadRoads(const exchange::RoadFormat& format, const std::string& file,
                                              const exchange::ImportOptions& options) {
  std::vector<exchange::ImportedRoad> roads;
  if (const auto problem = format.read(PathFromSystem(file), options, &roads))
    throw Refusal(At(file, problem->line, problem->text));
  return roads;
}

std::string WriteRoad(const exchange::RoadFormat& format, const exchange::ExportInput& input,
                      const std::string& to, const std::vector<std::string>& inputs) {
  OutputFile output(to, inputs);
  std::string note;
  const std::string problem = format.write(
      input, [&](std::string_view bytes) { output.Write(bytes); }, &note);
  if (!problem.empty()) throw Refusal(At(to, problem));
  output.Finish();
  return note;
}

}  // namespace velmora::cli
