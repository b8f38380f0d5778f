#include <cmath>

#include "cli/align/commands.h"
#include "cli/align/placing.h"
#include "cli/input/columns.h"
#include "cli/output/progress.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

enum StationRole : size_t { kId, kStation, kOffset };

std::vector<Role> StationRoles() {
  return {{"id", {L"id", L"namn", L"name", L"punkt", L"borrhål", L"borehole", L"boring"}, false},
          {"station", {L"station", L"sek", L"sektion", L"chainage", L"längdmätning"}, true},
          {"offset", {L"offset", L"avst", L"avstånd", L"sida"}, false}};
}

std::vector<Column> PlaceColumns() {
  return {{"id", "id"},
          {"station", "station", true},
          {"offset", ""},
          {"side", ""},
          {"", "offset", true},
          {"northing", "northing", true},
          {"easting", "easting", true},
          {"profile_level", "profile", true},
          {"status", "status"},
          {"line", ""}};
}

// A signed number, or one with its side: "V 3.2", "h12.4".
std::optional<double> ParseOffset(std::wstring_view text, bool decimal_comma) {
  text = TrimBlanks(text);
  double sign = 0;
  if (!text.empty()) {
    const wchar_t side = UpperLetter(text.front());
    sign = side == L'V' ? -1 : side == L'H' ? 1 : 0;
  }
  if (sign == 0) return FieldNumber(text, decimal_comma);
  const std::optional<double> metres = FieldNumber(TrimBlanks(text.substr(1)), decimal_comma);
  if (!metres || *metres < 0) return std::nullopt;
  return sign * *metres;
}

std::optional<double> StationOf(const ListReader& list) {
  if (const std::optional<double> metres = list.Value(kStation)) return metres;
  std::string text = Utf8FromWide(list.Text(kStation));
  if (list.DecimalComma() && text.find('.') == std::string::npos)
    for (char& c : text) c = c == ',' ? '.' : c;
  return ParseStation(text);
}

}  // namespace

void AlignPlace(const PlaceOptions& options) {
  if (options.file == "-" && options.stations == "-")
    throw WrongUsage("only one of FILE and --stations can be standard input");
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  RequirePlan(input);
  ListReader list(options.stations, StationRoles());
  OutputFile output(options.output.file, {options.file, options.stations});
  RecordWriter records(output, options.output.Format(), PlaceColumns());
  Progress progress("Placing stations", list.Rows().Size());
  std::int64_t rows = 0;
  std::int64_t unreadable = 0;
  std::string first_problem;
  PlaceNotes notes(input, options.output.km);
  while (list.Next()) {
    progress.Update(list.Rows().Consumed(), static_cast<std::uint64_t>(++rows));
    std::vector<Cell> cells(PlaceColumns().size());
    cells[0] = Utf8FromWide(list.Text(kId));
    cells[9] = list.Line();
    const std::optional<double> station = StationOf(list);
    const bool no_offset = list.Text(kOffset).empty();
    const std::optional<double> offset =
        no_offset ? 0.0 : ParseOffset(list.Text(kOffset), list.DecimalComma());
    if (!station || !offset) {
      const std::string problem = list.Problem(!station ? kStation : kOffset);
      if (unreadable++ == 0) first_problem = At(options.stations, list.Line(), problem);
      cells[8] = "unreadable row (line " + std::to_string(list.Line()) + "): " + problem;
      records.Row(cells);
      continue;
    }
    cells[1] = StationCell(*station, options.output.km);
    cells[2] = Number{*offset};
    cells[3] = OffsetSide(*offset);
    cells[4] = OffsetText(*offset);
    double x = 0;
    double y = 0;
    const bool placed =
        input.set.plan.Vag2xy(*station, *offset, &x, &y) == 0 && std::isfinite(x) && std::isfinite(y);
    if (placed) {
      cells[5] = Number{x};
      cells[6] = Number{y};
      if (const std::optional<double> level = LevelAt(input, *station)) cells[7] = Number{*level};
    }
    cells[8] = StatusText(placed ? PlaceStatus::kOn : WhyNotPlaced(input, *station));
    notes.Add(*station);
    records.Row(cells);
  }
  records.Finish();
  output.Finish();
  // On descending stations the suite reverses the sign of an offset that it finds, but not of one it places.
  if (IsDescending(input.plan))
    Warn(At(options.file,
            "its stations are descending: V and H are left and right along its points from first to last, "
            "and align locate reports the opposite side, at corners too; swap the side of offsets that it "
            "reported"));
  notes.Report();
  if (unreadable == 0) return;
  Warn(first_problem + "; " + std::to_string(unreadable) + (unreadable == 1 ? " row was" : " rows were") +
       " not placed; correct the list and run again");
  throw ExitWith{1};
}

}  // namespace velmora::cli
