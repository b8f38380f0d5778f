#include "cli/points/show.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "cli/output/options.h"
#include "cli/output/records.h"
#include "cli/terminal/completes.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/stod_punkt.h"
#include "velmora/alignment/support_check.h"
#include "velmora/text/counted.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

struct ShowOptions {
  std::string file;
  OutputOptions output;
};

SupportCheck Check(const std::string& file, const CString& path) {
  TextReader reader;
  if (!reader.Open(path)) RefuseUnopened(file);
  SupportCheck check = CheckSupportPoints(&reader);
  if (check.has_header && !check.failed) return check;
  const Finding& why = check.findings.listed.front();
  throw Refusal(At(file, why.line, why.text));
}

void ShowPoints(const ShowOptions& options) {
  const CString path = PathFromSystem(options.file);
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (options.file == "-" || (status && status->kind == FileKind::kOther))
    throw Refusal("support points are read from a file on disk only; save them to one first");
  const SupportCheck check = Check(options.file, path);
  CStodPunkt points(path);
  int count = 0;
  points.Where(&count);
  const OutputFormat format = options.output.Format();
  OutputFile output(options.output.file, {options.file});
  if (format == OutputFormat::kTable) {
    const double header[] = {points.huvud1, points.huvud2, points.huvud3,
                             points.huvud4, points.huvud5, points.huvud6};
    std::string line = "Header ";
    for (const double value : header) line += " " + FormatShortest(value);
    output.Write(line + "\n");
    if (points.gvy != 0) output.Write("gvy     " + FormatFixed(points.gvy, 4) + "\n");
    output.Write("\n");
  }
  RecordWriter records(output, format, {{"name", "name"}, {"level", "level", true}});
  size_t point = 0;
  for (int at = points.Home(); at == 0; at = points++ == nullptr ? -1 : 0, ++point)
    records.Row({ToUtf8(points.pael->namn), point < check.has_level.size() && check.has_level[point]
                                                ? Cell(Number{points.pael->z, 4})
                                                : Cell()});
  records.Finish();
  output.Finish();
  if (check.findings.listed.empty()) return;
  const Finding& first = check.findings.listed.front();
  const auto without = std::count(check.has_level.begin(), check.has_level.end(), false);
  PrintError(At(
      options.file, first.line,
      first.text + (without == 0 ? "" : "; " + Counted(without, "point has", "points have") + " no level")));
  throw ExitWith{1};
}

}  // namespace

void AddPointsCommands(CLI::App* points) {
  points->require_subcommand(1);
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = points->add_subcommand("show", "The points of a support-point file, with their levels");
  verb->add_option("FILE", options->file, "Support-point file")->required()->check(CompletesFile(".stp"));
  AddOutputOptions(verb, &options->output);
  verb->callback([options] { ShowPoints(*options); });
}

}  // namespace velmora::cli
