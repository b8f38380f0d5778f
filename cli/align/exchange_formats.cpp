#include "cli/align/exchange_formats.h"

#include <memory>
#include <span>
#include <type_traits>

#include "cli/input/list_source.h"
#include "cli/input/rows.h"
#include "cli/output/ending.h"
#include "cli/output/output_file.h"
#include "cli/terminal/error.h"
#include "velmora/exchange/dxf.h"
#include "velmora/exchange/geopackage.h"
#include "velmora/exchange/landxml.h"
#include "velmora/exchange/sink.h"
#include "velmora/exchange/wkt_csv.h"
#include "velmora/platform/files.h"

namespace velmora::cli {
namespace {

using exchange::ExportInput;
using exchange::ImportedRoad;
using exchange::ImportOptions;

// Of a format that holds every road.
template <auto kWrite>
std::string WriteText(const ExportInput& input, const std::string& to,
                      const std::vector<std::string>& inputs) {
  OutputFile output(to, inputs);
  const exchange::Sink sink = [&](std::string_view bytes) { output.Write(bytes); };
  std::string note;
  if constexpr (std::is_void_v<decltype(kWrite(input, sink))>)
    kWrite(input, sink);
  else
    note = kWrite(input, sink);
  output.Finish();
  return note;
}

// Of one that does not: what is returned is the reason.
template <std::string (*kWrite)(const ExportInput&, const exchange::Sink&)>
std::string WriteOrRefuse(const ExportInput& input, const std::string& to,
                          const std::vector<std::string>& inputs) {
  OutputFile output(to, inputs);
  const std::string problem = kWrite(input, [&](std::string_view bytes) { output.Write(bytes); });
  if (!problem.empty()) throw Refusal(At(to, problem));
  output.Finish();
  return {};
}

std::vector<ImportedRoad> ReadCsv(const std::string& file, const ImportOptions&) {
  std::string problem;
  std::vector<ImportedRoad> roads = exchange::ReadWktCsv(ReadWholeFile(file), &problem);
  if (!problem.empty()) throw Refusal(At(file, problem));
  return roads;
}

std::vector<ImportedRoad> ReadDrawing(const std::string& file, const ImportOptions& options) {
  InputFile input;
  if (!input.Open(PathFromSystem(file))) RefuseUnopened(file);
  Finding problem;
  std::vector<ImportedRoad> roads =
      exchange::ReadDxf([&](std::span<char> buffer) { return input.Read(buffer); }, options, &problem);
  if (!problem.text.empty()) throw Refusal(At(file, problem.line, problem.text));
  return roads;
}

std::vector<ImportedRoad> ReadGeoPackageFile(const std::string& file, const ImportOptions& options) {
  const CString path = PathFromSystem(file);
  if (!IsFile(path)) RefuseUnopened(file);
  std::string problem;
  std::vector<ImportedRoad> roads = exchange::ReadGeoPackage(path, options.layer, &problem);
  if (!problem.empty()) throw Refusal(At(file, problem));
  return roads;
}

std::vector<ImportedRoad> ReadXmlFile(const std::string& file, const ImportOptions& options) {
  const auto open = [&]() -> ByteSource {
    const auto input = std::make_shared<InputFile>();
    if (!input->Open(PathFromSystem(file))) RefuseUnopened(file);
    return [input](std::span<char> buffer) { return input->Read(buffer); };
  };
  std::vector<ImportedRoad> roads;
  const std::optional<XmlProblem> problem = exchange::ReadLandXml(open, options, &roads);
  if (!problem) return roads;
  throw Refusal(At(file, problem->line, problem->text));
}

constexpr ExchangeFormat kFormats[] = {
    {".xml", false, true, WriteText<exchange::WriteLandXml>, ReadXmlFile},
    {".dxf", true, false, WriteOrRefuse<exchange::WriteDxf>, ReadDrawing},
    {".gpkg", true, true, WriteOrRefuse<exchange::WriteGeoPackage>, ReadGeoPackageFile},
    {".csv", false, true, WriteText<exchange::WriteWktCsv>, ReadCsv},
};

// Formats that cannot hold a road.
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

std::string ExchangeEndings() {
  std::string list;
  for (const ExchangeFormat& format : kFormats)
    list += (list.empty() ? "" : ", ") + std::string(format.ending);
  return list;
}

const ExchangeFormat& FormatOf(const std::string& file) {
  const std::string ending = EndingOf(file);
  for (const ExchangeFormat& format : kFormats)
    if (ending == format.ending) return format;
  for (const Unsuited& unsuited : kUnsuited)
    if (ending == unsuited.ending)
      throw Refusal(
          At(file, std::string(unsuited.reason) + "; use a name that ends in one of " + ExchangeEndings()));
  throw Refusal(
      At(file, "the ending chooses the format; use a name that ends in one of " + ExchangeEndings()));
}

}  // namespace velmora::cli
