#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/align/alignment_input.h"
#include "cli/align/commands.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

// One property of an alignment: key and value for CSV and JSON, label and text for the table; either may be
// absent.
struct Fact {
  std::string key;
  std::string label;
  Cell value;
  std::string text;
};

std::vector<Fact> FactsOf(const AlignmentInput& input, bool km) {
  const bool has_plan = !input.plan.empty();
  const bool has_profile = !input.profile.empty();
  const std::string type = has_plan && has_profile ? "plan and profile" : has_plan ? "plan" : "profile";
  std::vector<Fact> facts = {{"name", "Name", input.Name(), input.Name()}, {"type", "Type", type, type}};
  const auto add = [&](const std::string& key, const std::string& label, Cell value,
                       const std::string& text) {
    facts.push_back({key, label, std::move(value), text});
  };
  const auto add_count = [&](const std::string& key, const std::string& label, std::int64_t count) {
    add(key, label, count, std::to_string(count));
  };
  if (has_plan) {
    const PlanMeasures plan = MeasurePlan(input.plan);
    add_count("plan_points", "Plan points", static_cast<std::int64_t>(input.plan.size()));
    add("length", "Length", Number{plan.length}, LengthText(plan.length));
    const double first = input.plan.front().sek;
    const double last = input.plan.back().sek;
    const std::string direction = IsDescending(input.plan) ? "descending" : "ascending";
    add("first_station", "", StationCell(first, km), "");
    add("last_station", "", StationCell(last, km), "");
    add("direction", "", direction, "");
    add("", "Stations", {}, StationText(first, km) + " to " + StationText(last, km) + ", " + direction);
    add("min_northing", "", Number{plan.bounds.low.v}, "");
    add("max_northing", "", Number{plan.bounds.high.v}, "");
    add("min_easting", "", Number{plan.bounds.low.h}, "");
    add("max_easting", "", Number{plan.bounds.high.h}, "");
    add("", "Northing", {}, FormatFixed(plan.bounds.low.v, 3) + " to " + FormatFixed(plan.bounds.high.v, 3));
    add("", "Easting", {}, FormatFixed(plan.bounds.low.h, 3) + " to " + FormatFixed(plan.bounds.high.h, 3));
    add_count("arcs", "", plan.arcs);
    add("smallest_radius", "", plan.smallest_radius ? Cell(Number{*plan.smallest_radius}) : Cell(), "");
    add("", "Arcs", {},
        plan.arcs == 0
            ? "none"
            : std::to_string(plan.arcs) + ", smallest radius " + LengthText(*plan.smallest_radius));
  }
  if (has_profile) {
    const ProfileMeasures profile = MeasureProfile(input.profile);
    add_count("profile_points", "Profile points", static_cast<std::int64_t>(input.profile.size()));
    add("profile_first_station", "", StationCell(profile.first_station, km), "");
    add("profile_last_station", "", StationCell(profile.last_station, km), "");
    add("min_level", "", Number{profile.lowest_level}, "");
    add("max_level", "", Number{profile.highest_level}, "");
    add("", "Profile", {},
        "stations " + StationText(profile.first_station, km) + " to " +
            StationText(profile.last_station, km) + ", levels " + FormatFixed(profile.lowest_level, 3) +
            " to " + LengthText(profile.highest_level));
  }
  return facts;
}

void WriteTable(OutputFile& output, const std::vector<Fact>& facts, const BoundedFindings& findings) {
  constexpr std::int64_t kListed = 20;
  const auto write = [&](const std::string& label, const std::string& text) {
    output.Write(label + std::string(16 - label.size(), ' ') + text + "\n");
  };
  for (const Fact& fact : facts)
    if (!fact.label.empty()) write(fact.label, fact.text);
  const std::int64_t count = findings.Count();
  write("Findings", count == 0 ? "none" : std::to_string(count));
  for (std::int64_t i = 0; i < std::min(count, kListed); ++i) {
    const Finding& finding = findings.listed[static_cast<size_t>(i)];
    output.Write("  line " + std::to_string(finding.line) + ": " + finding.text + "\n");
  }
  if (count > kListed)
    output.Write("  and " + std::to_string(count - kListed) + " more (--json lists them)\n");
}

// One object, with the findings as an array in it.
void WriteJson(OutputFile& output, const std::vector<Fact>& facts, const BoundedFindings& findings) {
  nlohmann::ordered_json info;
  for (const Fact& fact : facts)
    if (!fact.key.empty()) info[fact.key] = JsonOf(fact.value);
  if (findings.left_out > 0) info["findings_left_out"] = findings.left_out;
  nlohmann::ordered_json& list = info["findings"] = nlohmann::ordered_json::array();
  for (const Finding& finding : findings.listed)
    list.push_back({{"line", finding.line}, {"text", finding.text}});
  output.Write(JsonText(info, 2) + "\n");
}

void WriteCsv(OutputFile& output, OutputFormat format, const std::vector<Fact>& facts,
              const BoundedFindings& findings) {
  RecordWriter records(output, format, {{"what", ""}, {"line", ""}, {"value", ""}});
  for (const Fact& fact : facts)
    if (!fact.key.empty()) records.Row({fact.key, {}, fact.value});
  for (const Finding& finding : findings.listed)
    records.Row({std::string("finding"), finding.line, finding.text});
  if (findings.left_out > 0) records.Row({std::string("findings_left_out"), {}, findings.left_out});
  records.Finish();
}

}  // namespace

void AlignInfo(const InfoOptions& options) {
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  const std::vector<Fact> facts = FactsOf(input, options.output.km);
  const BoundedFindings findings = CheckAlignment(input);
  OutputFile output(options.output.file, {options.file});
  switch (const OutputFormat format = options.output.Format()) {
    case OutputFormat::kCsv:
    case OutputFormat::kSpreadsheet:
      WriteCsv(output, format, facts, findings);
      break;
    case OutputFormat::kJson:
      WriteJson(output, facts, findings);
      break;
    case OutputFormat::kTable:
      WriteTable(output, facts, findings);
      break;
  }
  output.Finish();
}

}  // namespace velmora::cli
