#include "cli/report/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/align/option_values.h"
#include "cli/report/setup.h"
#include "cli/terminal/completes.h"

namespace velmora::cli {
namespace {

ScaleOption ToScale(const std::string& text) {
  if (const std::optional<ScaleOption> scale = ParseScale(text)) return *scale;
  throw CLI::ValidationError("\"" + text + "\" is not a scale; write 1000 for 1:1000, or MAX");
}

}  // namespace

void AddReportCommand(CLI::App* verb) {
  auto options = std::make_shared<ReportOptions>();
  AddAlignmentFile(verb, &options->file);
  verb->add_option("--points", options->points, "Borings: a list as for align locate")
      ->type_name("LIST")
      ->check(CompletesFile(".csv .txt .ags .gpkg"));
  verb->add_option("-o", options->to,
                   "File to write; the ending chooses the form: .pdf, .html, .dxf, .svg and .png (a file a "
                   "sheet), .xlsx and .csv (the table) (default: among the drawings of the road's project)")
      ->type_name("OUT")
      ->check(CompletesFile(".pdf .html .dxf .svg .png .xlsx .csv"));
  verb->add_option("--form", options->form, "Form, as pdf, where the ending of OUT does not select it")
      ->type_name("FORM");
  CLI::Option* project =
      verb->add_option("--project", options->project,
                       "Project with the settings and the title block (default: the one that FILE is in)")
          ->type_name("DIR");
  verb->add_flag("--no-project", options->no_project, "Use no project")->excludes(project);
  verb->add_option("--format", options->format, "Sheets, as velmora formats lists them (default: A3)")
      ->type_name("NAME")
      ->check(CompletesWord("sheets"));
  AddValue(verb, "--scale", "N",
           "Scale 1:N of plan and lengths, or MAX, the largest that fits (default: LSKALA, else 1000)",
           [options](const std::string& text) { options->scale = ToScale(text); });
  AddValue(verb, "--height-scale", "N",
           "Scale 1:N of heights, or MAX, the largest that fits (default: HSKALA, else 100)",
           [options](const std::string& text) { options->height_scale = ToScale(text); });
  AddValue(verb, "--stations", "LO:HI", "Only stations from LO to HI",
           [options](const std::string& text) { options->stations = ToLimits(text, ToStation); });
  verb->add_option("--stamp", options->stamp, "File of the title block's fields (default: by STAMPVAL)")
      ->type_name("FILE")
      ->check(CompletesFile(".dat"));
  verb->add_option_function<std::vector<std::string>>(
          "--field",
          [options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) {
              const size_t at = text.find('=');
              if (at == 0 || at == std::string::npos)
                throw CLI::ValidationError("\"" + text + "\" is not a field; write NAME=TEXT");
              options->fields[text.substr(0, at)] = text.substr(at + 1);
            }
          },
          "Text of a field of the title block")
      ->type_name("NAME=TEXT");
  verb->add_option("--author", options->author, "Author, for the title block and the file")
      ->type_name("TEXT");
  verb->add_option("--date", options->date, "Date on the sheets (default: today)")->type_name("TEXT");
  AddListOptions(verb, PointRoles(), &options->list);
  AddOnlyOption(verb, &options->list);
  AddMaxOffset(verb, &options->max_offset);
  verb->add_flag("--paper", options->paper, "DXF: the sheets in millimetres instead of map coordinates");
  verb->add_flag("--km", options->km, "Stations as km/m (1/250.000)");
  verb->add_flag("--show", options->show, "Show the values used and where they come from; write nothing");
  verb->callback([options] { MakeReport(*options); });
}

}  // namespace velmora::cli
