#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>
#include <memory>

#include "velmora/alignment/alignment_file.h"
#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/checks.h"
#include "velmora/alignment/measures.h"
#include "velmora/c/handles.h"
#include "velmora/common/paths.h"
#include "velmora/drawing/alignment_sheet.h"
#include "velmora/drawing/svg_canvas.h"
#include "velmora/exchange/alignment_text.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/road_formats.h"
#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"

using velmora::kovltype;
using velmora::c::Failure;
using velmora::c::Require;

velmora_road::velmora_road(std::vector<kovltype> plan, std::vector<kovltype> profile_points)
    : profile(std::move(profile_points)), places(std::move(plan)) {
  if (!profile.empty()) levels.emplace(profile, velmora::kProfileType);
}

namespace velmora::c {
namespace {

using exchange::ImportedRoad;
using RoadHandle = std::unique_ptr<velmora_road>;

void Append(const BoundedFindings& from, Findings* to) {
  to->insert(to->end(), from.listed.begin(), from.listed.end());
  if (from.left_out > 0) to->push_back({0, "and " + std::to_string(from.left_out) + " more", false, false});
}

// What is unusual in the points is neither misread nor lost.
void AppendChecks(BoundedFindings checks, Findings* to) {
  for (Finding& finding : checks.listed) finding.misread = finding.lost = false;
  Append(checks, to);
}

RoadHandle FromText(TextReader& reader, const std::string& file) {
  AlignmentFile read;
  if (const auto problem = ReadAlignmentFile(reader, &read))
    throw Failure{VELMORA_NOT_READ, problem->text, file, problem->line};
  auto road = std::make_unique<velmora_road>(std::move(read.plan), std::move(read.profile));
  road->name = read.Name();
  Append(read.skipped, &road->findings);
  if (read.tail) road->findings.push_back(*read.tail);
  road->skipped = read.skipped.Count() > 0;
  AppendChecks(CheckPlan(road->places.Plan(), read.plan_lines), &road->findings);
  AppendChecks(CheckProfile(road->profile, read.profile_lines), &road->findings);
  return road;
}

std::string NamesOf(const std::vector<ImportedRoad>& roads) {
  constexpr size_t kMost = 20;
  std::string names;
  for (size_t i = 0; i < std::min(kMost, roads.size()); ++i)
    names += (i == 0 ? "\"" : ", \"") + roads[i].road.name + "\"";
  return names + (roads.size() > kMost ? ", ..." : "");
}

ImportedRoad& Choose(std::vector<ImportedRoad>* roads, const char* name, const std::string& file) {
  if (roads->empty()) throw Failure{VELMORA_NOT_FOUND, "holds no alignment", file};
  if (name == nullptr) {
    if (roads->size() == 1) return roads->front();
    throw Failure{
        VELMORA_NOT_FOUND,
        "holds " + std::to_string(roads->size()) + " alignments; choose one by its name: " + NamesOf(*roads),
        file};
  }
  ImportedRoad* found = nullptr;
  for (ImportedRoad& road : *roads) {
    if (road.road.name != name) continue;
    if (found != nullptr)
      throw Failure{VELMORA_NOT_FOUND,
                    "holds several alignments of this name; give them different names there", file};
    found = &road;
  }
  if (found == nullptr)
    throw Failure{VELMORA_NOT_FOUND, "holds no alignment of this name; it has " + NamesOf(*roads), file};
  return *found;
}

RoadHandle Import(const exchange::RoadFormat& format, const CString& path, const std::string& file,
                  const velmora_read_options& given) {
  exchange::ImportOptions options;
  options.fit = given.fit;
  if (given.spirals_as_arcs != 0) options.spirals_as_arcs = given.spirals_as_arcs;
  if (given.metres_per_foot != 0) options.metres_per_foot = given.metres_per_foot;
  options.internal_stations = given.internal_stations != 0;
  if (given.layer != nullptr) options.layer = given.layer;
  Require(options.fit > 0 && given.spirals_as_arcs >= 0 && given.metres_per_foot >= 0 &&
              std::isfinite(given.start),
          "a length in the options is not allowed");
  Require(options.layer.empty() || format.has_layers, "files of this format have no layers");
  std::vector<ImportedRoad> roads;
  if (const auto problem = format.read(path, options, &roads))
    throw Failure{VELMORA_NOT_READ, problem->text, file, problem->line};
  ImportedRoad& chosen = Choose(&roads, given.name, file);
  exchange::FinishImport(options.fit, given.start, &chosen);
  if (chosen.refused) {
    for (const Finding& finding : chosen.findings)
      if (finding.misread) throw Failure{VELMORA_NOT_READ, finding.text, file, finding.line};
    throw Failure{VELMORA_NOT_READ, "has too many faults to import the alignment", file};
  }
  auto road = std::make_unique<velmora_road>(std::move(chosen.road.plan), std::move(chosen.road.profile));
  road->name = std::move(chosen.road.name);
  road->import_error = chosen.largest_error;
  road->findings = std::move(chosen.findings);
  return road;
}

// Throws a Failure when the road, or the file that it was read from, has something that `what` leaves out.
void RefuseLoss(const velmora_road& road, const exchange::RoadFormat* format, const char* path) {
  const auto lose = [&](const std::string& what) {
    throw Failure{VELMORA_WOULD_LOSE, what + "; VELMORA_FORCE writes it without", path};
  };
  if (road.skipped) lose("the road was read from a file of which lines were skipped");
  if (format != nullptr && !format->has_profile && !road.profile.empty())
    lose("this format has no place for the profile");
  if (format == nullptr && exchange::NameForFile(road.name) != road.name)
    lose("an alignment file cannot hold all letters of the road's name");
}

// A copy for velmora_free.
char* CopyOf(const std::string& text) {
  char* const copy = static_cast<char*>(std::malloc(text.size() + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

void SaveRoad(const velmora_road& road, const char* path, const velmora_write_options& options, bool force) {
  const CString target = PathToWrite(path);
  const std::string ending = EndingOfName(path);
  std::string why;
  const exchange::RoadFormat* const format = exchange::RoadFormatOf(ending, &why);
  if (format == nullptr && ending != ".vl")
    throw Failure{VELMORA_NOT_SUPPORTED,
                  (why.empty() ? "the ending chooses the format" : why) + "; use a name that ends in .vl, " +
                      exchange::RoadFormatEndings(),
                  path};
  exchange::ExportInput input;
  input.road = {road.name, road.places.Plan(), road.profile};
  if (!force) RefuseLoss(road, format, path);
  Require(input.road.plan.size() >= 2 || format == nullptr, "the road has no plan");
  FileReplacement file;
  if (!file.Begin(target))
    throw Failure{VELMORA_NOT_WRITTEN,
                  "cannot be written (no such folder, write-protected, or the disk is full)", path};
  bool good = true;
  const exchange::Sink sink = [&](std::string_view bytes) { good = good && file.Write(bytes); };
  if (format == nullptr) {
    exchange::WriteAlignment(input.road, sink);
  } else {
    input.created = std::time(nullptr);
    Require(options.srs >= 0 && options.srs < 1'000'000, "srs is not a code from 1 to 999999, or 0");
    input.srs = options.srs;
    Require(options.stations_every >= 0, "stations_every is not a length");
    const auto stations = StationsEach(options.stations_every, input.road.plan);
    Require(stations.has_value(), "stations_every gives more than a million stations");
    input.stations = *stations;
    Require(options.chord_error > 0, "chord_error is not above 0");
    input.chord_error = options.chord_error;
    std::string note;
    const std::string problem = format->write(input, sink, &note);
    if (!problem.empty()) throw Failure{VELMORA_NOT_SUPPORTED, problem, path};
  }
  if (!good || !file.Commit())
    throw Failure{VELMORA_NOT_WRITTEN, "cannot be written, and is as it was; is the disk full?", path};
}

}  // namespace
}  // namespace velmora::c

namespace c = velmora::c;

velmora_status velmora_road_read(const char* path, const velmora_read_options* options, velmora_road** road,
                                 velmora_error* error) {
  return c::Made(road, error, [&] {
    const velmora::CString file = c::PathToRead(path);
    const velmora_read_options usual = VELMORA_READ_OPTIONS_INIT;
    const velmora_read_options used = c::OptionsOf(options, usual);
    std::string why;
    const velmora::exchange::RoadFormat* const format =
        velmora::exchange::RoadFormatOf(velmora::EndingOfName(path), &why);
    if (!why.empty()) throw Failure{VELMORA_NOT_SUPPORTED, why, path};
    velmora::TextReader reader;
    if (!velmora::IsFile(file) || !reader.Open(file))
      throw Failure{VELMORA_NOT_OPENED, velmora::WhyUnopened(file), path};
    c::RoadHandle made = format == nullptr ? c::FromText(reader, path) : c::Import(*format, file, path, used);
    made->file = velmora::ToUtf8(velmora::NameOfPath(file));
    return made;
  });
}

velmora_status velmora_road_parse(const void* bytes, size_t size, velmora_road** road, velmora_error* error) {
  return c::Made(road, error, [&] {
    Require(bytes != nullptr || size == 0, "the bytes are null");
    velmora::TextReader reader;
    reader.OpenBytes(std::string(static_cast<const char*>(bytes), size));
    return c::FromText(reader, "");
  });
}

velmora_status velmora_road_make(const char* name, const velmora_plan_point* plan, size_t plan_count,
                                 const velmora_profile_point* profile, size_t profile_count,
                                 velmora_road** road, velmora_error* error) {
  return c::Made(road, error, [&] {
    Require(plan != nullptr && plan_count >= 2, "a plan needs two points or more");
    Require(profile != nullptr || profile_count == 0, "the profile is null");
    std::vector<kovltype> plan_points;
    plan_points.reserve(plan_count);
    for (size_t i = 0; i < plan_count; ++i) {
      const velmora_plan_point& p = plan[i];
      plan_points.push_back({p.northing, p.easting, p.bulge, p.station});
    }
    std::vector<kovltype> profile_points;
    profile_points.reserve(profile_count);
    for (size_t i = 0; i < profile_count; ++i) {
      const velmora_profile_point& p = profile[i];
      profile_points.push_back({p.level, p.station, p.bulge, p.station});
    }
    for (const auto* points : {&plan_points, &profile_points})
      for (const kovltype& p : *points)
        Require(std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.bulge) && std::isfinite(p.sek),
                "a point has a number that is not finite");
    auto made = std::make_unique<velmora_road>(std::move(plan_points), std::move(profile_points));
    if (name != nullptr) made->name = c::Text(name, "the name is not UTF-8");
    const auto numbers = [](size_t count) {
      std::vector<int> lines(count);
      for (size_t i = 0; i < count; ++i) lines[i] = static_cast<int>(i) + 1;
      return lines;
    };
    c::AppendChecks(velmora::CheckPlan(made->places.Plan(), numbers(plan_count)), &made->findings);
    c::AppendChecks(velmora::CheckProfile(made->profile, numbers(profile_count)), &made->findings);
    return made;
  });
}

void velmora_road_close(velmora_road* road) { delete road; }

velmora_status velmora_road_write(const velmora_road* road, const char* path,
                                  const velmora_write_options* options, uint32_t flags,
                                  velmora_error* error) {
  return c::Guarded(error, [&] {
    Require(road != nullptr, "the road is null");
    c::RequireFlags(flags, VELMORA_FORCE);
    const velmora_write_options usual = VELMORA_WRITE_OPTIONS_INIT;
    c::SaveRoad(*road, path, c::OptionsOf(options, usual), (flags & VELMORA_FORCE) != 0);
  });
}

const char* velmora_road_name(const velmora_road* road) { return road == nullptr ? "" : road->name.c_str(); }

size_t velmora_road_plan(const velmora_road* road, velmora_plan_point* points, size_t room) {
  if (road == nullptr) return 0;
  const std::vector<kovltype>& plan = road->places.Plan();
  for (size_t i = 0; points != nullptr && i < std::min(room, plan.size()); ++i)
    points[i] = {plan[i].x, plan[i].y, plan[i].bulge, plan[i].sek};
  return plan.size();
}

size_t velmora_road_profile(const velmora_road* road, velmora_profile_point* points, size_t room) {
  if (road == nullptr) return 0;
  for (size_t i = 0; points != nullptr && i < std::min(room, road->profile.size()); ++i)
    points[i] = {road->profile[i].x, road->profile[i].y, road->profile[i].bulge};
  return road->profile.size();
}

velmora_status velmora_road_measure(const velmora_road* road, velmora_road_measures* measures,
                                    velmora_error* error) {
  return c::Guarded(error, [&] {
    Require(road != nullptr && measures != nullptr, "the road or the measures are null");
    const velmora::PlanMeasures plan = velmora::MeasurePlan(road->places.Plan());
    *measures = {plan.length,
                 plan.lowest_station,
                 plan.highest_station,
                 plan.smallest_radius.value_or(std::numeric_limits<double>::quiet_NaN()),
                 plan.bounds.low.v,
                 plan.bounds.high.v,
                 plan.bounds.low.h,
                 plan.bounds.high.h,
                 plan.arcs,
                 road->import_error};
  });
}

size_t velmora_road_finding(const velmora_road* road, size_t index, velmora_finding* finding) {
  return road == nullptr ? 0 : c::FindingAt(road->findings, index, finding);
}

velmora_status velmora_road_text(const velmora_road* road, char** bytes, size_t* size, uint32_t flags,
                                 velmora_error* error) {
  if (bytes != nullptr) *bytes = nullptr;
  return c::Guarded(error, [&] {
    Require(road != nullptr && bytes != nullptr && size != nullptr,
            "the road, or a pointer for its text, is null");
    c::RequireFlags(flags, VELMORA_FORCE);
    if ((flags & VELMORA_FORCE) == 0) c::RefuseLoss(*road, nullptr, "");
    std::string text;
    velmora::exchange::WriteAlignment({road->name, road->places.Plan(), road->profile},
                                      [&](std::string_view more) { text += more; });
    *bytes = c::CopyOf(text);
    *size = text.size();
  });
}

velmora_status velmora_road_svg(const velmora_road* road, char** svg, size_t* size, velmora_error* error) {
  if (svg != nullptr) *svg = nullptr;
  return c::Guarded(error, [&] {
    Require(road != nullptr && svg != nullptr, "the road or the pointer to the text is null");
    velmora::drawing::PlotInput input;
    input.name = road->name;
    input.file = road->file;
    input.plan = road->places.Plan();
    input.profile = road->profile;
    velmora::drawing::SvgCanvas canvas;
    velmora::drawing::DrawAlignment(input, canvas);
    const std::string text = canvas.Finish();
    *svg = c::CopyOf(text);
    if (size != nullptr) *size = text.size();
  });
}

void velmora_free(void* memory) { std::free(memory); }
