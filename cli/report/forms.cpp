#include "cli/report/forms.h"

#include <algorithm>

#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "cli/output/records.h"
#include "cli/report/cairo_canvas.h"
#include "cli/report/creation_time.h"
#include "cli/report/progress_canvas.h"
#include "cli/report/table.h"
#include "cli/report/xlsx_table.h"
#include "cli/terminal/error.h"
#include "velmora/drawing/dxf_canvas.h"
#include "velmora/drawing/html_report.h"
#include "velmora/drawing/svg_canvas.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

using drawing::Report;
using drawing::ReportSummary;
using Inputs = std::vector<std::string>;

std::string WriteOne(const std::string& to, const Inputs& inputs, std::string_view bytes) {
  OutputFile output(to, inputs);
  output.Write(bytes);
  output.Finish();
  return to;
}

// "plan-07.svg" of "plan.svg" with twelve sheets; "plan.svg" itself with one.
std::string NameOfSheet(const std::string& to, size_t sheet, size_t sheets) {
  if (sheets == 1) return to;
  const std::string ending = EndingOf(to);
  std::string number = std::to_string(sheet + 1);
  number.insert(0, std::to_string(sheets).size() - number.size(), '0');
  return to.substr(0, to.size() - ending.size()) + "-" + number + to.substr(to.size() - ending.size());
}

ReportSummary DrawSheets(const Report& report, drawing::Canvas& canvas) {
  ProgressCanvas with_progress(canvas, drawing::SizeOfReport(report).sheets);
  return drawing::DrawReport(report, with_progress);
}

Inputs WriteSvg(const Report& report, const ReportOptions& options, const Inputs& inputs,
                ReportSummary* summary) {
  drawing::SvgCanvas canvas;
  *summary = DrawSheets(report, canvas);
  const std::vector<std::string> sheets = canvas.FinishSheets();
  Inputs files;
  for (size_t i = 0; i < sheets.size(); ++i)
    files.push_back(WriteOne(NameOfSheet(options.to, i, sheets.size()), inputs, sheets[i]));
  return files;
}

Inputs WriteHtml(const Report& report, const ReportOptions& options, const Inputs& inputs,
                 ReportSummary* summary) {
  drawing::SvgCanvas canvas;
  *summary = DrawSheets(report, canvas);
  return {WriteOne(options.to, inputs, drawing::HtmlReport(report, *summary, canvas.FinishSheets()))};
}

DocumentFacts FactsOf(const Report& report) {
  return {report.road.name.empty() ? "Road without a name" : report.road.name, report.author, CreationTime()};
}

Inputs WritePdf(const Report& report, const ReportOptions& options, const Inputs& inputs,
                ReportSummary* summary) {
  OutputFile output(options.to, inputs);
  const auto canvas = MakePdfCanvas(FactsOf(report), [&](std::string_view bytes) { output.Write(bytes); });
  *summary = DrawSheets(report, *canvas);
  canvas->Finish();
  output.Finish();
  return {options.to};
}

Inputs WritePng(const Report& report, const ReportOptions& options, const Inputs& inputs,
                ReportSummary* summary) {
  constexpr double kDotsPerInch = 200;
  const size_t sheets = drawing::SizeOfReport(report).sheets;
  Inputs files;
  const auto canvas = MakePngCanvas(kDotsPerInch, [&](std::string_view bytes) {
    files.push_back(WriteOne(NameOfSheet(options.to, files.size(), sheets), inputs, bytes));
  });
  *summary = DrawSheets(report, *canvas);
  canvas->Finish();
  return files;
}

// In map coordinates, or as sheets.
Inputs WriteDxf(const Report& report, const ReportOptions& options, const Inputs& inputs,
                ReportSummary* summary) {
  OutputFile output(options.to, inputs);
  drawing::DxfCanvas canvas =
      options.paper ? drawing::DxfCanvas() : drawing::DxfCanvas(drawing::PositionOfReportMap(report));
  *summary = options.paper ? DrawSheets(report, canvas) : drawing::DrawReportMap(report, canvas);
  canvas.Finish([&](std::string_view bytes) { output.Write(bytes); });
  output.Finish();
  return {options.to};
}

Inputs WriteWorkbook(const Report& report, const ReportOptions& options, const Inputs& inputs,
                     ReportSummary*) {
  OutputFile output(options.to, inputs);
  WriteXlsx(report.table, FactsOf(report), [&](std::string_view bytes) { output.Write(bytes); });
  output.Finish();
  return {options.to};
}

Inputs WriteCsv(const Report& report, const ReportOptions& options, const Inputs& inputs, ReportSummary*) {
  OutputFile output(options.to, inputs);
  std::vector<Column> columns;
  for (const drawing::ReportColumn& column : report.table.columns)
    columns.push_back({KeyOfColumn(column.title), column.title});
  RecordWriter records(output, OutputFormat::kCsv, columns);
  std::vector<Cell> cells;
  for (const std::vector<drawing::ReportCell>& row : report.table.rows) {
    cells.clear();
    for (size_t i = 0; i < row.size(); ++i) {
      if (const double* number = std::get_if<double>(&row[i])) {
        // The list's own numbers as it has them, ours with the decimals of align locate.
        const int decimals = report.table.columns[i].decimals;
        cells.push_back(i < kReportColumns ? Cell(Number{*number, decimals})
                                           : Cell(FormatFixed(*number, decimals)));
      } else if (const std::string* text = std::get_if<std::string>(&row[i])) {
        cells.emplace_back(*text);
      } else {
        cells.emplace_back();
      }
    }
    records.Row(cells);
  }
  records.Finish();
  output.Finish();
  return {options.to};
}

const char* WritesIt() { return nullptr; }

constexpr ReportForm kForms[] = {
    {"pdf", true, true, WhyNoCairo, WritePdf},  {"html", true, true, WritesIt, WriteHtml},
    {"dxf", true, true, WritesIt, WriteDxf},    {"svg", false, true, WritesIt, WriteSvg},
    {"png", false, true, WhyNoCairo, WritePng}, {"xlsx", true, false, WhyNoXlsx, WriteWorkbook},
    {"csv", true, false, WritesIt, WriteCsv},
};

std::string FormNames() {
  std::string names;
  for (const ReportForm& form : kForms)
    if (form.why_not() == nullptr) names += (names.empty() ? "." : ", .") + std::string(form.name);
  return names;
}

}  // namespace

const ReportForm& UsualForm() {
  return *std::find_if(std::begin(kForms), std::end(kForms),
                       [](const ReportForm& form) { return form.why_not() == nullptr; });
}

const ReportForm& FormOf(const ReportOptions& options) {
  const std::string ending = EndingOf(options.to);
  const std::string name = !options.form.empty() ? options.form : ending.empty() ? "" : ending.substr(1);
  if (name.empty())
    throw WrongUsage("the ending of OUT chooses the form: " + FormNames() + "; or give it with --form");
  const auto* const form = std::find_if(std::begin(kForms), std::end(kForms),
                                        [&](const ReportForm& one) { return name == one.name; });
  if (form == std::end(kForms))
    throw Refusal(At(options.to, "a report is not written as " + Quoted("." + name) +
                                     "; use a name that ends in one of " + FormNames()));
  if (const char* why = form->why_not()) throw Refusal(At(options.to, why));
  return *form;
}

}  // namespace velmora::cli
