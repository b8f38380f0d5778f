#include "cli/align/placed_borings.h"
#include "cli/output/output_file.h"
#include "cli/output/records.h"
#include "cli/report/commands.h"
#include "cli/report/forms.h"
#include "cli/report/setup.h"
#include "cli/report/stamp.h"
#include "cli/report/table.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/scale.h"
#include "velmora/lists/list_source.h"
#include "velmora/platform/files.h"
#include "velmora/text/counted.h"

namespace velmora::cli {
namespace {

void ShowSetup(const ReportSetup& setup) {
  OutputFile output;
  RecordWriter records(output, OutputFormat::kTable, {{"key", "key"}, {"value", "value"}, {"from", "from"}});
  for (const SetupLine& line : setup.lines) records.Row({line.key, line.value, line.from});
  records.Finish();
  output.Finish();
}

std::string NameWithoutEnding(const std::string& file) {
  const std::string name = PathForDisplay(NameOfPath(PathFromSystem(file)));
  const size_t dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

// Among the project's drawings.
std::string UsualOutput(const ReportOptions& options, const ReportSetup& setup) {
  if (setup.drawing_folder.empty())
    throw WrongUsage("-o OUT is needed, as the road's file is not in a project with a folder for drawings");
  if (options.file == "-") throw WrongUsage("-o OUT is needed with a road from standard input");
  const std::string form = options.form.empty() ? UsualForm().name : options.form;
  return PathForDisplay(
      JoinPath(PathFromSystem(setup.drawing_folder), FromUtf8(NameWithoutEnding(options.file) + "." + form)));
}

std::string Written(const std::vector<std::string>& files, const ReportForm& form,
                    const ReportOptions& options, const drawing::Report& report,
                    const drawing::ReportSummary& summary) {
  std::string text = "written";
  if (files.size() > 1) text += ", and on to " + files.back();
  if (!form.sheets) {
    const size_t rows = report.table.rows.size();
    return At(files.front(), text + ", " + Counted(rows, "boring"));
  }
  if (form.OnMap(options)) {
    text += ", in map coordinates";
  } else {
    text += ", " + Counted(summary.sheets, "sheet") + " " + ToUtf8(CString(report.setup.format.namn));
  }
  if (summary.scale > 0) text += ", " + drawing::ScaleText(summary.scale);
  if (summary.height_scale > 0) text += ", heights " + drawing::ScaleText(summary.height_scale);
  return At(files.front(), text);
}

}  // namespace

void MakeReport(const ReportOptions& given) {
  ReportOptions options = given;
  RequireOneStandardInput(options.file, options.points, "--points");
  ReportSetup setup = FindReportSetup(options);
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  drawing::Report report;
  report.road.name = input.Name();
  report.road.file = input.FileName();
  report.stamp = ReadStamp(options.fields, report.road.name, &setup);
  if (options.to.empty() && (!options.show || !setup.drawing_folder.empty())) {
    options.to = UsualOutput(options, setup);
    setup.lines.push_back({"output", options.to, "the project's drawings"});
  } else if (!options.to.empty()) {
    setup.lines.push_back({"output", options.to, "-o"});
  }
  if (options.show) return ShowSetup(setup);
  const ReportForm& form = FormOf(options);
  if (!form.one_file && options.to == "-")
    throw WrongUsage(std::string("a report as ") + form.name + " is a file a sheet; give -o a file name");
  if (!form.sheets && options.points.empty())
    throw WrongUsage(std::string("a report as ") + form.name +
                     " is the table of the borings; give --points LIST");
  WarnOfSkippedLines(input);

  report.setup = setup.sheets;
  report.date = setup.date;
  report.author = setup.author;
  report.road.km_stations = options.km;
  report.road.max_offset = options.max_offset;
  const BoringList list = {options.points, options.list, options.max_offset, options.km};
  PlacedBorings borings;
  std::vector<std::string> inputs = {options.file};
  if (!setup.stamp_file.empty()) inputs.push_back(setup.stamp_file);
  if (!list.file.empty()) {
    borings = ReadPlacedBorings(list, &input);
    report.table = MakeReportTable(borings, setup.sheets.decimals, options.km);
    inputs.push_back(FileOfList(list.file));
  }
  report.road.borings = std::move(borings.points);
  // An unreadable row is in the table and among the borings without a place.
  for (const PlacedBorings::UnreadableRow& row : borings.unreadable) {
    drawing::PlotBoring& boring = report.road.borings.emplace_back();
    boring.id = row.id;
    boring.northing = boring.easting = std::numeric_limits<double>::quiet_NaN();
    boring.status = "unreadable row (line " + std::to_string(row.line) + ")";
  }
  report.road.plan = std::move(input.plan);
  report.road.profile = std::move(input.profile);
  if (form.sheets) {
    const drawing::ReportSize size = drawing::SizeOfReport(report);
    if (size.strips > drawing::kMostReportStrips)
      throw Refusal(
          At(options.file, "would take more than " + std::to_string(drawing::kMostReportStrips) +
                               " sheets at " + drawing::ScaleText(size.scale) +
                               "; give --scale a larger number or MAX, or part of the road with --stations"));
    if (size.strips == 0 && options.stations && (!report.road.plan.empty() || !report.road.profile.empty()))
      throw Refusal(At(options.file, "has none of the stations of --stations"));
  }
  drawing::ReportSummary summary;
  const std::vector<std::string> files = form.write(report, options, inputs, &summary);
  if (options.to != "-") {
    for (const std::string& note : summary.notes) Warn(At(files.front(), note));
    Warn(Written(files, form, options, report, summary));
  }
  ReportPlacedBorings(list, borings, form.sheets ? "drawing" : "table");
}

}  // namespace velmora::cli
