#include "cli/report/forms.h"

#include <algorithm>
#include <set>

#include "cli/output/creation_time.h"
#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "cli/output/records.h"
#include "cli/report/cairo_canvas.h"
#include "cli/report/progress_canvas.h"
#include "cli/report/table.h"
#include "cli/report/xlsx_table.h"
#include "cli/terminal/error.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/dxf_canvas.h"
#include "velmora/drawing/html_report.h"
#include "velmora/drawing/svg_canvas.h"
#include "velmora/platform/files.h"
#include "velmora/text/codepage.h"
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

// Says which numbered files of the same name an earlier report left there that are not of this one.
void WarnOfOtherSheets(const std::string& to, const Inputs& written) {
  const CString path = PathFromSystem(to);
  const CString ending = PathFromSystem(EndingOf(to));
  const CString stem = path.Left(path.GetLength() - ending.GetLength());
  const CString first = NameOfPath(stem + L"-");
  std::set<std::string> own;
  for (const std::string& file : written) own.insert(ToUtf8(NameOfPath(PathFromSystem(file))));
  std::vector<std::string> others;
  for (const FoundFile& found : FindFiles(stem + L"-*" + ending)) {
    const std::string name = ToUtf8(found.name);
    if (found.status.kind != FileKind::kFile || own.contains(name)) continue;
    const int digits = found.name.GetLength() - first.GetLength() - ending.GetLength();
    const std::string number = digits > 0 ? ToUtf8(found.name.Mid(first.GetLength(), digits)) : "-";
    if (number.find_first_not_of("0123456789") == std::string::npos) others.push_back(name);
  }
  if (others.empty()) return;
  const size_t more = others.size() - 1;
  Warn(At(to, (more == 0
                   ? others.front() + " beside it is"
                   : others.front() + " and " + std::to_string(more) + " more numbered files beside it are") +
                  " not of this report; remove what is not needed"));
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
  WarnOfOtherSheets(options.to, files);
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
  WarnOfOtherSheets(options.to, files);
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
  // Keys for our columns; the list's keep their titles.
  std::vector<Column> columns;
  for (const drawing::ReportColumn& column : report.table.columns) {
    std::string key = column.title;
    if (columns.size() < kReportColumns)
      for (char& c : key) c = c == ' ' ? '_' : c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    columns.push_back({key, column.title});
  }
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
  if (options.paper && name != "dxf") throw WrongUsage("--paper is for a report as dxf");
  if (const char* why = form->why_not()) throw Refusal(At(options.to, why));
  return *form;
}

}  // namespace velmora::cli
