#include "velmora/drawing/html_report.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "velmora/alignment/station_text.h"
#include "velmora/drawing/html_data.h"
#include "velmora/drawing/html_parts.h"
#include "velmora/drawing/plain_text.h"
#include "velmora/drawing/plan_path.h"
#include "velmora/drawing/scale.h"
#include "velmora/text/codepage.h"
#include "velmora/text/counted.h"
#include "velmora/text/numbers.h"

namespace velmora::drawing {
namespace {

constexpr size_t kLongestLength = 16;
constexpr double kLargestPage = 10000;  // mm

constexpr std::string_view kBeforeStyle = R"(<style>
)";

constexpr std::string_view kWithoutScript = R"(</style>
<noscript><style>
.view, .tools button, .filter, .skip { display: none; }
.desk { height: auto !important; }
.list { flex: none; }
.scroll { max-height: none; }
</style></noscript>
</head>
<body>
)";

constexpr std::string_view kSkipLink = R"(<a class="skip" href="#borings">To the table of borings</a>
)";

constexpr std::string_view kTools = R"(<div class="tools">
<a href="#sheets">Sheets</a>
<button type="button" id="print">Print sheets</button>
<button type="button" id="theme" aria-pressed="false">Dark</button>
</div>
)";

constexpr std::string_view kView = R"(<section class="view" aria-labelledby="view">
<h2 class="unseen" id="view">Plan and profile</h2>
<div class="panes">
<figure class="pane" aria-label="Plan">
<figcaption><h3>Plan</h3><span>
<button type="button" data-action="in" aria-label="Plan: zoom in">+</button>
<button type="button" data-action="out" aria-label="Plan: zoom out">−</button>
<button type="button" data-action="whole" aria-label="Plan: show the whole road">Whole</button>
</span></figcaption>
<canvas id="plan" tabindex="0" role="application" aria-label="Plan of the road" aria-describedby="keys"></canvas>
</figure>
<figure class="pane" aria-label="Profile">
<figcaption><h3>Profile</h3><span>
<button type="button" data-action="in" aria-label="Profile: zoom in">+</button>
<button type="button" data-action="out" aria-label="Profile: zoom out">−</button>
<button type="button" data-action="whole" aria-label="Profile: show the whole road">Whole</button>
</span></figcaption>
<canvas id="profile" tabindex="0" role="application" aria-label="Profile of the road" aria-describedby="keys"></canvas>
</figure>
</div>
<dl class="readout">
<div><dt>Station</dt><dd id="station">–</dd></div>
<div><dt>Offset, m</dt><dd id="offset">–</dd></div>
<div><dt>Road level, m</dt><dd id="level">–</dd></div>
<div><dt>Level at pointer, m</dt><dd id="height">–</dd></div>
<div><dt>Northing, m</dt><dd id="northing">–</dd></div>
<div><dt>Easting, m</dt><dd id="easting">–</dd></div>
<div class="wide"><dt>Chosen boring</dt><dd id="chosen">none</dd></div>
</dl>
<div class="below">
<ul class="legend">
<li><svg viewBox="0 0 12 12" aria-hidden="true"><circle cx="6" cy="6" r="4"/></svg>boring</li>
<li><svg class="off" viewBox="0 0 12 12" aria-hidden="true"><path d="M2 2h8v8h-8z"/></svg>not along the road</li>
<li><svg viewBox="0 0 12 12" aria-hidden="true"><path d="M6 2l4 8h-8z"/></svg>without a level, in the profile</li>
<li>offset H right, V left</li>
</ul>
<details><summary>Keys</summary>
<p id="keys">In plan and profile: <kbd>←</kbd> <kbd>→</kbd> move the cursor along the road, <kbd>Home</kbd>
<kbd>End</kbd> to its ends, <kbd>Page Up</kbd> <kbd>Page Down</kbd> to the boring before or after,
<kbd>Esc</kbd> chooses none, <kbd>+</kbd> <kbd>−</kbd> zoom, <kbd>Shift</kbd> with arrows moves the drawing,
<kbd>0</kbd> shows the whole road. In the table: <kbd>↑</kbd> <kbd>↓</kbd> <kbd>Page Up</kbd>
<kbd>Page Down</kbd> <kbd>Home</kbd> <kbd>End</kbd>.</p>
</details>
</div>
<p class="unseen" id="spoken" role="status"></p>
</section>
)";

// The number in ` name="420mm"` of the SVG element; nothing when it has none that can be a page's.
std::optional<double> Millimetres(std::string_view svg, std::string_view name) {
  const size_t element_end = svg.find('>', svg.find("<svg"));
  const std::string before = " " + std::string(name) + "=\"";
  const size_t at = svg.find(before);
  if (at >= element_end) return std::nullopt;
  const auto length = ParseNumber(WideFromUtf8(svg.substr(at + before.size(), kLongestLength)));
  return length && *length > 0 && *length < kLargestPage ? length : std::nullopt;
}

struct SheetSize {
  double width;  // mm
  double height;
  auto operator<=>(const SheetSize&) const = default;
};

SheetSize SizeOf(std::string_view svg) {
  return {Millimetres(svg, "width").value_or(420), Millimetres(svg, "height").value_or(297)};
}

// Chromium rounds a page to whole points and prints it at 300 dots an inch. Where the points are not whole
// dots, rounded up, it shrinks the page by up to a thousandth; so pages lack up to 1.2 mm of the sheet's
// margin.
std::string PageLength(double millimetres) {
  auto points = static_cast<int>(std::lround(millimetres * 72 / 25.4));
  while (points % 6 > 2) --points;  // 6 points are 25 dots
  return std::to_string(points) + "pt";
}

std::string PageSize(const SheetSize& size) {
  return " { size: " + PageLength(size.width) + " " + PageLength(size.height) + "; margin: 0; }\n";
}

// A named page for each size of sheet. Browsers without named pages take the first sheet's for all.
std::string PageStyle(const std::map<SheetSize, size_t>& sizes, std::span<const std::string> sheets) {
  std::string text = sheets.empty() ? "" : "@page" + PageSize(SizeOf(sheets.front()));
  for (const auto& [size, number] : sizes) {
    const std::string name = "sheet" + std::to_string(number);
    const std::string width = TrimmedFixed(size.width, 3);
    const std::string height = TrimmedFixed(size.height, 3);
    text += "@page " + name + PageSize(size);
    text += "." + name + " { page: " + name + "; }\n";
    text += "." + name + " .sheet { aspect-ratio: " + width + " / " + height + "; }\n";
    text += "@media print {\n." + name + " .sheet { width: " + PageLength(size.width) +
            "; height: " + PageLength(size.height) + "; }\n";
    text += "." + name + " svg { width: " + width + "mm; height: " + height + "mm; }\n}\n";
  }
  return text;
}

std::string PageHead(const Report& report, std::string_view title) {
  std::string text = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; script-src 'sha256-)";
  text += HtmlScriptHash();
  text += R"('; base-uri 'none'; form-action 'none'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
)";
  if (!report.author.empty())
    text += "<meta name=\"author\" content=\"" + MarkupText(report.author) + "\">\n";
  return text + "<title>" + MarkupText(title) + "</title>\n";
}

void AddFact(std::string_view name, std::string_view value, std::string* text) {
  if (!value.empty())
    *text += "<div><dt>" + std::string(name) + "</dt><dd>" + MarkupText(value) + "</dd></div>\n";
}

std::string FactList(const Report& report, const ReportSummary& summary, const PlanPath& path) {
  std::string text = "<dl class=\"facts\">\n";
  const PlotInput& road = report.road;
  if (!path.Points().empty()) {
    AddFact("Stations",
            StationText(path.Points().front().sek, road.km_stations) + " to " +
                StationText(path.Points().back().sek, road.km_stations),
            &text);
    AddFact("Length", LengthText(path.Length()), &text);
  }
  AddFact("Borings", std::to_string(road.borings.size()), &text);
  if (summary.scale > 0) AddFact("Scale", ScaleText(summary.scale), &text);
  if (summary.height_scale > 0) AddFact("Heights", ScaleText(summary.height_scale), &text);
  AddFact("File", road.file, &text);
  AddFact("Date", report.date, &text);
  AddFact("Author", report.author, &text);
  return text + "</dl>\n";
}

std::string NoteList(std::vector<std::string> notes, const Report& report, const HtmlTable& table) {
  const auto unmapped = static_cast<size_t>(
      std::count_if(report.road.borings.begin(), report.road.borings.end(),
                    [](const PlotBoring& b) { return !IsDrawable(b.northing) || !IsDrawable(b.easting); }));
  if (unmapped > 0)
    notes.push_back(Counted(unmapped, "boring") +
                    " without usable coordinates: in the table, not in the plan");
  if (table.left_out > 0)
    notes.push_back(Counted(table.left_out, "number") + " of the table not finite or too large: left empty");
  if (notes.empty()) return "";
  std::string text = "<ul class=\"notes\">\n";
  for (const std::string& note : notes) text += "<li>" + MarkupText(note) + "</li>\n";
  return text + "</ul>\n";
}

std::string BoringSection(const HtmlTable& table, size_t count) {
  return R"(<section class="list" aria-labelledby="borings">
<div class="filter">
<h2 id="borings">Borings</h2>
<label>Filter <input type="search" id="filter" placeholder="words in any column" autocomplete="off"></label>
<output id="count" for="filter">)" +
         Counted(count, "boring") + R"(</output>
</div>
<div class="scroll" id="table"><noscript>
)" + table.text +
         "</noscript></div>\n</section>\n";
}

void AddScript(const Report& report, const HtmlTable& table, std::string* page) {
  *page += "<script type=\"application/json\" id=\"data\">";
  *page += ReportData(report, table.data);
  *page += "</script>\n<script>";
  for (const std::string_view part : HtmlScript()) *page += part;
  *page += "</script>\n";
}

void AddSheets(std::span<const std::string> sheets, const std::map<SheetSize, size_t>& sizes,
               std::string* page) {
  *page += "<section class=\"sheets\" aria-labelledby=\"sheets\">\n<h2 id=\"sheets\">Sheets</h2>\n";
  for (size_t i = 0; i < sheets.size(); ++i) {
    const std::string caption = "Sheet " + std::to_string(i + 1) + " of " + std::to_string(sheets.size());
    *page += "<figure class=\"sheet" + std::to_string(sizes.at(SizeOf(sheets[i]))) +
             "\"><div class=\"sheet\" role=\"img\" aria-label=\"" + caption + "\"><noscript>";
    // Without the XML declaration.
    page->append(sheets[i], std::min(sheets[i].find("<svg"), sheets[i].size()));
    *page += "</noscript></div><figcaption>" + caption + "</figcaption></figure>\n";
  }
  *page += "</section>\n";
}

}  // namespace

std::string HtmlReport(const Report& report, const ReportSummary& summary,
                       std::span<const std::string> sheets) {
  const PlanPath path(report.road.plan);
  const HtmlTable table = TableOfBorings(report.table);
  const std::string title = report.road.name.empty() ? "Road without a name" : report.road.name;
  std::map<SheetSize, size_t> sizes;
  for (const std::string& sheet : sheets) sizes.emplace(SizeOf(sheet), sizes.size());

  std::string page = PageHead(report, title);
  page += kBeforeStyle;
  page += HtmlStyle();
  page += PageStyle(sizes, sheets);
  page += kWithoutScript;
  const bool has_table = !report.table.columns.empty();
  if (has_table) page += kSkipLink;
  page += "<main>\n<div class=\"desk\">\n";
  page += "<header class=\"head\">\n<div>\n<h1>" + MarkupText(title) + "</h1>\n" +
          FactList(report, summary, path) + "</div>\n";
  page += kTools;
  page += "</header>\n" + NoteList(summary.notes, report, table);
  page += kView;
  if (has_table) page += BoringSection(table, report.table.rows.size());
  page += "</div>\n";
  AddScript(report, table, &page);
  AddSheets(sheets, sizes, &page);
  return page + "</main>\n</body>\n</html>\n";
}

}  // namespace velmora::drawing
