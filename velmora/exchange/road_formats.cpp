#include "velmora/exchange/road_formats.h"

#include <memory>
#include <span>

#include "velmora/exchange/arcs.h"
#include "velmora/exchange/dxf.h"
#include "velmora/exchange/geopackage.h"
#include "velmora/exchange/landxml.h"
#include "velmora/exchange/wkt_csv.h"
#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"
#include "velmora/text/numbers.h"

namespace velmora::exchange {
namespace {

using Problem = std::optional<Finding>;

// Why no format with profiles can hold a profile; empty when it can.
std::string WhyNotProfile(const Road& road) {
  const size_t at = FirstNotAhead(road.profile);
  if (at == road.profile.size()) return {};
  return "its profile has station " + FormatFixed(road.profile[at].y, 3) +
         ", which does not lie after the one before it; correct the profile, or export to .dxf, which has "
         "none";
}

std::string WriteXml(const ExportInput& input, const Sink& sink, std::string* note) {
  std::string problem = WhyNotProfile(input.road);
  if (problem.empty()) *note = WriteLandXml(input, sink);
  return problem;
}
std::string WriteCsv(const ExportInput& input, const Sink& sink, std::string*) {
  std::string problem = WhyNotProfile(input.road);
  if (problem.empty()) WriteWktCsv(input, sink);
  return problem;
}
std::string WriteTables(const ExportInput& input, const Sink& sink, std::string*) {
  std::string problem = WhyNotProfile(input.road);
  return problem.empty() ? WriteGeoPackage(input, sink) : problem;
}
std::string WriteDrawing(const ExportInput& input, const Sink& sink, std::string*) {
  return WriteDxf(input, sink);
}

Problem OfFile(const std::string& text) { return text.empty() ? Problem() : Finding{0, text}; }

Problem ReadCsv(const CString& path, const ImportOptions&, std::vector<ImportedRoad>* roads) {
  std::string bytes;
  std::string problem = ReadWholeFile(path, &bytes);
  if (!problem.empty()) return OfFile(problem);
  *roads = ReadWktCsv(bytes, &problem);
  return OfFile(problem);
}

Problem ReadDrawing(const CString& path, const ImportOptions& options, std::vector<ImportedRoad>* roads) {
  InputFile input;
  if (!input.Open(path)) return OfFile(WhyUnopened(path));
  Finding problem;
  *roads = ReadDxf([&](std::span<char> buffer) { return input.Read(buffer); }, options, &problem);
  return problem.text.empty() ? Problem() : problem;
}

Problem ReadGeoPackageFile(const CString& path, const ImportOptions& options,
                           std::vector<ImportedRoad>* roads) {
  if (!IsFile(path)) return OfFile(WhyUnopened(path));
  std::string problem;
  *roads = ReadGeoPackage(path, options.layer, &problem);
  return OfFile(problem);
}

Problem ReadXml(const CString& path, const ImportOptions& options, std::vector<ImportedRoad>* roads) {
  const auto first = std::make_shared<InputFile>();
  if (!first->Open(path)) return OfFile(WhyUnopened(path));
  bool opened = false;
  const auto open = [&]() -> ByteSource {
    const auto input = opened ? std::make_shared<InputFile>() : first;
    // A file that has gone since gives an error at the first read.
    if (opened && !input->Open(path)) return [](std::span<char>) { return std::int64_t{-1}; };
    opened = true;
    return [input](std::span<char> buffer) { return input->Read(buffer); };
  };
  const std::optional<XmlProblem> problem = ReadLandXml(open, options, roads);
  if (!problem) return std::nullopt;
  return Finding{problem->line, problem->text};
}

constexpr RoadFormat kFormats[] = {
    {".xml", false, true, WriteXml, ReadXml},
    {".dxf", true, false, WriteDrawing, ReadDrawing},
    {".gpkg", true, true, WriteTables, ReadGeoPackageFile},
    {".csv", false, true, WriteCsv, ReadCsv},
};

struct Unsuited {
  const char* ending;
  const char* reason;
};
constexpr Unsuited kUnsuited[] = {
    {".geojson", "GeoJSON has no arcs and wants degrees"},
    {".json", "GeoJSON has no arcs and wants degrees"},
    {".shp", "a shapefile has no arcs"},
};

}  // namespace

std::string RoadFormatEndings() {
  std::string list;
  for (const RoadFormat& format : kFormats) list += (list.empty() ? "" : ", ") + std::string(format.ending);
  return list;
}

const RoadFormat* RoadFormatOf(std::string_view ending, std::string* why) {
  why->clear();
  for (const RoadFormat& format : kFormats)
    if (ending == format.ending) return &format;
  for (const Unsuited& unsuited : kUnsuited)
    if (ending == unsuited.ending) *why = unsuited.reason;
  return nullptr;
}

}  // namespace velmora::exchange
