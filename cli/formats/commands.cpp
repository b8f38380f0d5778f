#include "cli/formats/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/output/ending.h"
#include "cli/output/options.h"
#include "cli/output/records.h"
#include "cli/terminal/completes.h"
#include "cli/terminal/error.h"
#include "velmora/drawing/format_sheet.h"
#include "velmora/drawing/svg_canvas.h"
#include "velmora/text/nearest.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

struct FormatsOptions {
  std::string name;
  std::string svg;
  OutputOptions output;
};

std::vector<ritformattype> Chosen(const CRitningsFormat& table, const std::string& name) {
  std::vector<ritformattype> all(table.formater, table.formater + table.antal);
  if (name.empty()) return all;
  for (const ritformattype& format : all)
    if (FromUtf8(name).CompareNoCase(format.namn) == 0) return {format};
  std::string list;
  std::vector<std::string> known;
  for (const ritformattype& format : all) {
    known.push_back(ToUtf8(format.namn));
    list += (list.empty() ? "" : ", ") + known.back();
  }
  throw Refusal(Quoted(name) + " is not a sheet format; the formats are " + list + DidYouMean(name, known));
}

void Formats(const FormatsOptions& options) {
  const std::vector<ritformattype> chosen = Chosen(CRitningsFormat(), options.name);
  if (!options.svg.empty()) {
    RequireEnding(options.svg, "a drawing", {".svg"});
    OutputFile output(options.svg, {});
    drawing::SvgCanvas canvas;
    drawing::DrawFormats(chosen, canvas);
    output.Write(canvas.Finish());
    output.Finish();
    return;
  }
  OutputFile output(options.output.file, {});
  RecordWriter records(output, options.output.Format(),
                       {{"name", "name"},
                        {"", "area, mm", true},
                        {"area_width", ""},
                        {"area_height", ""},
                        {"", "frame", true},
                        {"frame_width", ""},
                        {"frame_height", ""},
                        {"", "sheet", true},
                        {"sheet_width", ""},
                        {"sheet_height", ""}});
  for (const ritformattype& format : chosen) {
    std::vector<Cell> row = {ToUtf8(format.namn)};
    for (const auto& [width, height] : {std::pair(format.ytaBredd, format.ytaHojd),
                                        {format.ramBredd, format.ramHojd},
                                        {format.arkBredd, format.arkHojd}}) {
      row.emplace_back(FormatShortest(width) + " × " + FormatShortest(height));
      row.emplace_back(Number{width, 0});
      row.emplace_back(Number{height, 0});
    }
    records.Row(row);
  }
  records.Finish();
  output.Finish();
}

}  // namespace

void AddFormatsCommand(CLI::App* formats) {
  const auto options = std::make_shared<FormatsOptions>();
  formats->add_option("NAME", options->name, "One format, as A3 (default: all)")
      ->check(CompletesWord("sheets"));
  CLI::Option* svg = formats->add_option("--svg", options->svg, "Draw them to scale instead")
                         ->type_name("FILE")
                         ->check(CompletesFile(".svg"));
  AddOutputOptions(formats, &options->output);
  for (const char* other : {"--csv", "--spreadsheet", "--json", "-o"})
    svg->excludes(formats->get_option(other));
  formats->callback([options] { Formats(*options); });
}

}  // namespace velmora::cli
