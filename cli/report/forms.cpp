#include "cli/report/forms.h"

#include <algorithm>

#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "cli/output/progress.h"
#include "cli/output/records.h"
#include "cli/report/table.h"
#include "cli/terminal/error.h"
#include "velmora/drawing/svg_canvas.h"

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

Inputs WriteSvg(const Report& report, const ReportOptions& options, const Inputs& inputs,
                ReportSummary* summary) {
  drawing::SvgCanvas canvas;
  *summary = drawing::DrawReport(report, canvas);
  const std::vector<std::string> sheets = canvas.FinishSheets();
  Inputs files;
  for (size_t i = 0; i < sheets.size(); ++i)
    files.push_back(WriteOne(NameOfSheet(options.to, i, sheets.size()), inputs, sheets[i]));
  return files;
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
        cells.emplace_back(Number{*number, report.table.columns[i].decimals});
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

constexpr ReportForm kForms[] = {
    {"svg", false, true, nullptr, WriteSvg},
    {"csv", true, false, nullptr, WriteCsv},
};

std::string FormNames() {
  std::string names;
  for (const ReportForm& form : kForms)
    if (form.missing == nullptr) names += (names.empty() ? "." : ", .") + std::string(form.name);
  return names;
}

}  // namespace

const ReportForm& UsualForm() {
  return *std::find_if(std::begin(kForms), std::end(kForms),
                       [](const ReportForm& form) { return form.missing == nullptr; });
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
  if (form->missing != nullptr) throw Refusal(At(options.to, form->missing));
  return *form;
}

}  // namespace velmora::cli
