#include <algorithm>
#include <cmath>

#include "cli/align/alignment_input.h"
#include "cli/align/check.h"
#include "cli/align/commands.h"
#include "cli/terminal/error.h"
#include "velmora/alignment/station_text.h"
#include "velmora/text/numbers.h"

namespace velmora::cli {
namespace {

// One thing told: a key for programs, a label for people, and the value both ways.
struct Fact {
  std::string key;
  std::string label;
  Cell value;
  std::string text;
};

std::string Metres(double value) {
  return std::isfinite(value) ? FormatFixed(value, 3) + " m" : "not finite";
}

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
    add("length", "Length", Number{plan.length}, Metres(plan.length));
    const double first = input.plan.front().sek;
    const double last = input.plan.back().sek;
    const std::string direction = input.Descending() ? "descending" : "ascending";
    add("first_station", "", StationCell(first, km), "");
    add("last_station", "", StationCell(last, km), "");
    add("direction", "", direction, "");
    add("", "Stations", {}, StationText(first, km) + " to " + StationText(last, km) + ", " + direction);
    add("min_northing", "", Number{plan.box.min_x}, "");
    add("max_northing", "", Number{plan.box.max_x}, "");
    add("min_easting", "", Number{plan.box.min_y}, "");
    add("max_easting", "", Number{plan.box.max_y}, "");
    add("", "Northing", {}, FormatFixed(plan.box.min_x, 3) + " to " + FormatFixed(plan.box.max_x, 3));
    add("", "Easting", {}, FormatFixed(plan.box.min_y, 3) + " to " + FormatFixed(plan.box.max_y, 3));
    add_count("arcs", "", plan.arcs);
    add("smallest_radius", "", plan.smallest_radius ? Cell(Number{*plan.smallest_radius}) : Cell(), "");
    add("", "Arcs", {},
        plan.arcs == 0 ? "none"
                       : std::to_string(plan.arcs) + ", smallest radius " + Metres(*plan.smallest_radius));
  }
  if (has_profile) {
    const auto [low, high] =
        std::minmax_element(input.profile.begin(), input.profile.end(),
                            [](const kovltype& a, const kovltype& b) { return a.x < b.x; });
    add_count("profile_points", "Profile points", static_cast<std::int64_t>(input.profile.size()));
    add("profile_first_station", "", StationCell(input.profile.front().y, km), "");
    add("profile_last_station", "", StationCell(input.profile.back().y, km), "");
    add("min_level", "", Number{low->x}, "");
    add("max_level", "", Number{high->x}, "");
    add("", "Profile", {},
        "stations " + StationText(input.profile.front().y, km) + " to " +
            StationText(input.profile.back().y, km) + ", levels " + FormatFixed(low->x, 3) + " to " +
            Metres(high->x));
  }
  return facts;
}

// In the order of the file.
Findings FindingsOf(const AlignmentInput& input) {
  Findings findings;
  for (const AlignmentInput::BadLine& bad : input.bad_lines)
    findings.listed.push_back(
        {bad.number, bad.text.empty() ? "empty line, skipped" : "unreadable, skipped: " + Quoted(bad.text)});
  findings.left_out = input.bad_count - static_cast<std::int64_t>(input.bad_lines.size());
  for (const Findings& more :
       {CheckPlan(input.plan, input.plan_lines), CheckProfile(input.profile, input.profile_lines)}) {
    findings.listed.insert(findings.listed.end(), more.listed.begin(), more.listed.end());
    findings.left_out += more.left_out;
  }
  std::stable_sort(findings.listed.begin(), findings.listed.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
  return findings;
}

void WriteTable(OutputFile& sink, const std::vector<Fact>& facts, const Findings& all) {
  constexpr size_t kListed = 20;
  for (const Fact& fact : facts)
    if (!fact.label.empty())
      sink.Write(fact.label + std::string(16 - fact.label.size(), ' ') + fact.text + "\n");
  const std::vector<Finding>& findings = all.listed;
  if (findings.empty()) {
    sink.Write("Findings        none\n");
    return;
  }
  const auto total = static_cast<std::int64_t>(findings.size()) + all.left_out;
  sink.Write("Findings        " + std::to_string(total) + "\n");
  for (size_t i = 0; i < std::min(findings.size(), kListed); ++i)
    sink.Write("  line " + std::to_string(findings[i].line) + ": " + findings[i].text + "\n");
  if (total > static_cast<std::int64_t>(kListed))
    sink.Write("  and " + std::to_string(total - static_cast<std::int64_t>(kListed)) +
               " more (--json lists them)\n");
}

// One object, with the findings as an array in it.
void WriteJson(OutputFile& sink, const std::vector<Fact>& facts, const Findings& all) {
  const std::vector<Finding>& findings = all.listed;
  std::string text = "{\n";
  for (const Fact& fact : facts)
    if (!fact.key.empty()) text += "  " + JsonString(fact.key) + ": " + JsonCell(fact.value) + ",\n";
  if (all.left_out > 0) text += "  \"findings_left_out\": " + std::to_string(all.left_out) + ",\n";
  text += "  \"findings\": [";
  for (size_t i = 0; i < findings.size(); ++i)
    text += (i == 0 ? "\n" : ",\n") +
            ("    {\"line\": " + std::to_string(findings[i].line) + ", \"text\": ") +
            JsonString(findings[i].text) + "}";
  sink.Write(text + (findings.empty() ? "]\n}\n" : "\n  ]\n}\n"));
}

void WriteCsv(OutputFile& sink, const std::vector<Fact>& facts, const Findings& findings) {
  RecordWriter records(sink, OutputFormat::kCsv, {{"what", ""}, {"line", ""}, {"value", ""}});
  for (const Fact& fact : facts)
    if (!fact.key.empty()) records.Row({fact.key, {}, fact.value});
  for (const Finding& finding : findings.listed)
    records.Row({std::string("finding"), static_cast<std::int64_t>(finding.line), finding.text});
  if (findings.left_out > 0) records.Row({std::string("findings_left_out"), {}, findings.left_out});
  records.Finish();
}

}  // namespace

void AlignInfo(const InfoOptions& options) {
  AlignmentInput input;
  ReadAlignment(options.file, &input);
  const std::vector<Fact> facts = FactsOf(input, options.output.km);
  const Findings findings = FindingsOf(input);
  OutputFile sink(options.output.file, {options.file});
  switch (options.output.Format()) {
    case OutputFormat::kCsv:
      WriteCsv(sink, facts, findings);
      break;
    case OutputFormat::kJson:
      WriteJson(sink, facts, findings);
      break;
    case OutputFormat::kTable:
      WriteTable(sink, facts, findings);
      break;
  }
  sink.Finish();
}

}  // namespace velmora::cli
