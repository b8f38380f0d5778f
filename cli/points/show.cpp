#include "cli/points/show.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/error.h"
#include "cli/options.h"
#include "cli/output/records.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

struct ShowOptions {
  std::string file;
  OutputOptions output;
};

void ShowPoints(const ShowOptions& options) {
  if (options.file == "-") throw Refusal("support points are read from a file, not from standard input");
  const CString path = PathFromSystem(options.file);
  TextReader reader;
  if (!reader.Open(path)) throw Refusal(At(options.file, "cannot be opened for reading; check the name"));
  CStodPunkt points(path);
  int count = 0;
  points.Where(&count);
  const OutputFormat format = options.output.Format();
  Sink sink(options.output.file, {options.file});
  if (format == OutputFormat::kTable) {
    const double header[] = {points.huvud1, points.huvud2, points.huvud3,
                             points.huvud4, points.huvud5, points.huvud6};
    std::string line = "Header ";
    for (const double value : header) line += " " + FormatShortest(value);
    sink.Write(line + "\n");
    if (points.gvy != 0) sink.Write("gvy     " + FormatFixed(points.gvy, 4) + "\n");
    sink.Write("\n");
  }
  RecordWriter records(sink, format, {{"name", "name"}, {"level", "level", true}});
  for (int at = points.Home(); at == 0; at = points++ == nullptr ? -1 : 0)
    records.Row({ToUtf8(points.pael->namn), Number{points.pael->z, 4}});
  records.Finish();
  sink.Finish();
}

}  // namespace

void AddPointsCommands(CLI::App& app) {
  CLI::App* points = app.add_subcommand("points", "Support points");
  points->require_subcommand(1);
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = points->add_subcommand("show", "The points of a support-point file, with their levels");
  verb->add_option("FILE", options->file, "Support-point file")->required();
  AddOutputOptions(verb, &options->output);
  verb->callback([options] { ShowPoints(*options); });
}

}  // namespace velmora::cli
