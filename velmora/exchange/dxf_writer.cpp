#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <utility>

#include "velmora/alignment/bounding_box.h"
#include "velmora/alignment/station_text.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/dxf.h"
#include "velmora/exchange/dxf_text.h"
#include "velmora/text/numbers.h"
#include "velmora/text/quoted.h"

namespace velmora::exchange {
namespace {

constexpr std::string_view kRoadLayer = "ROAD";
constexpr std::string_view kStationLayer = "STATIONS";
constexpr std::string_view kBoringLayer = "BORINGS";
constexpr double kTextHeight = 2;   // m
constexpr double kTickReach = 1.5;  // m to each side of the road
constexpr double kLineSpacing = 3;  // m between the texts of a boring
constexpr double kPointSize = 1;    // m
constexpr int kPointMark = 34;      // a circle with a cross

// Horizontal and vertical, with the group codes from 10 on.
struct DxfPoint {
  double easting = 0;
  double northing = 0;
  double level = 0;
};

class DxfWriter {
 public:
  explicit DxfWriter(const Sink& sink) : out_(sink) {}

  void Text(int code, std::string_view bytes) { Code(code) << bytes << "\r\n"; }
  void Integer(int code, int value) { Text(code, std::to_string(value)); }
  void Real(int code, double value) { Code(code) << value << "\r\n"; }
  void At(int code, const DxfPoint& place) {
    Real(code, place.easting);
    Real(code + 10, place.northing);
    Real(code + 20, place.level);
  }
  void Entity(std::string_view type, std::string_view layer) {
    Text(0, type);
    Text(8, layer);
  }
  void Application() { Text(1001, kDxfApplication); }
  void Finish() { out_.Flush(); }

 private:
  TextSink& Code(int code) {
    std::array<char, 8> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), code).ptr;
    return out_ << std::string_view(digits.data(), static_cast<size_t>(end - digits.data())) << "\r\n";
  }

  TextSink out_;
};

void WriteHeader(const ExportInput& input, DxfWriter* dxf) {
  BoundingBox extent = kEmptyBounds;
  for (const kovltype& point : input.road.plan) extent.Include(InPlane(point));
  for (const LocatedPoint& point : input.borings.points)
    extent.Include(PlanePoint{point.easting, point.northing});
  if (extent.low.h > extent.high.h) extent = {};

  dxf->Text(0, "SECTION");
  dxf->Text(2, "HEADER");
  dxf->Text(9, "$ACADVER");
  dxf->Text(1, "AC1009");
  dxf->Text(9, "$DWGCODEPAGE");
  dxf->Text(3, "ANSI_1252");
  dxf->Text(9, "$EXTMIN");
  dxf->At(10, {extent.low.h, extent.low.v, 0});
  dxf->Text(9, "$EXTMAX");
  dxf->At(10, {extent.high.h, extent.high.v, 0});
  dxf->Text(9, "$PDMODE");
  dxf->Integer(70, kPointMark);
  dxf->Text(9, "$PDSIZE");
  dxf->Real(40, kPointSize);
  dxf->Text(0, "ENDSEC");
}

void BeginTable(std::string_view name, int entries, DxfWriter* dxf) {
  dxf->Text(0, "TABLE");
  dxf->Text(2, name);
  dxf->Integer(70, entries);
}

// The name and flags of a table's entry.
void WriteEntry(std::string_view table, std::string_view name, DxfWriter* dxf) {
  dxf->Text(0, table);
  dxf->Text(2, name);
  dxf->Integer(70, 0);
}

void WriteTables(DxfWriter* dxf) {
  constexpr std::string_view kLine = "CONTINUOUS";
  constexpr std::array<std::pair<std::string_view, int>, 4> kLayers = {
      {{"0", 7}, {kRoadLayer, 1}, {kStationLayer, 8}, {kBoringLayer, 5}}};  // with colours
  dxf->Text(0, "SECTION");
  dxf->Text(2, "TABLES");
  BeginTable("LTYPE", 1, dxf);
  WriteEntry("LTYPE", kLine, dxf);
  dxf->Text(3, "Solid line");
  dxf->Integer(72, 65);
  dxf->Integer(73, 0);
  dxf->Real(40, 0);
  dxf->Text(0, "ENDTAB");
  BeginTable("LAYER", static_cast<int>(kLayers.size()), dxf);
  for (const auto& [name, colour] : kLayers) {
    WriteEntry("LAYER", name, dxf);
    dxf->Integer(62, colour);
    dxf->Text(6, kLine);
  }
  dxf->Text(0, "ENDTAB");
  BeginTable("STYLE", 1, dxf);
  WriteEntry("STYLE", "STANDARD", dxf);
  dxf->Real(40, 0);
  dxf->Real(41, 1);
  dxf->Real(50, 0);
  dxf->Integer(71, 0);
  dxf->Real(42, kTextHeight);
  dxf->Text(3, "txt");
  dxf->Text(4, "");
  dxf->Text(0, "ENDTAB");
  BeginTable("APPID", 1, dxf);
  WriteEntry("APPID", kDxfApplication, dxf);
  dxf->Text(0, "ENDTAB");
  dxf->Text(0, "ENDSEC");
}

void WriteRoad(const Road& road, std::string_view name, DxfWriter* dxf) {
  dxf->Entity("POLYLINE", kRoadLayer);
  dxf->Integer(66, 1);
  dxf->At(10, {});
  dxf->Integer(70, 0);
  dxf->Application();
  dxf->Text(1000, name);
  for (const kovltype& point : road.plan) {
    dxf->Entity("VERTEX", kRoadLayer);
    dxf->At(10, {point.y, point.x, 0});
    if (point.bulge != 0) dxf->Real(42, point.bulge);
    dxf->Application();
    dxf->Real(1040, point.sek);
  }
  dxf->Text(0, "SEQEND");
  dxf->Text(8, kRoadLayer);
}

void WriteText(std::string_view layer, const DxfPoint& at, std::string_view text, DxfWriter* dxf) {
  dxf->Entity("TEXT", layer);
  dxf->At(10, at);
  dxf->Real(40, kTextHeight);
  dxf->Text(1, text);
}

// A line across the road and, to its right, the station; turned so that it can be read from below.
void WriteStation(const Tick& tick, DxfWriter* dxf) {
  double angle = tick.direction - std::numbers::pi / 2;  // to the right
  const double east = std::cos(angle);
  const double north = std::sin(angle);
  const auto at = [&](double reach) {
    return DxfPoint{tick.at.h + reach * east, tick.at.v + reach * north, 0};
  };
  dxf->Entity("LINE", kStationLayer);
  dxf->At(10, at(-kTickReach));
  dxf->At(11, at(kTickReach));
  dxf->Application();
  dxf->Real(1040, tick.station);

  const bool turned = east < 0;
  if (turned) angle += std::numbers::pi;
  const DxfPoint beside = at(2 * kTickReach);
  WriteText(kStationLayer, beside, RoundStationText(tick.station, false), dxf);
  dxf->Real(50, std::remainder(angle * 180 / std::numbers::pi, 360));
  dxf->Integer(72, turned ? 2 : 0);  // the text ends, or begins, there
  dxf->Integer(73, 2);               // and is centred on the tick
  dxf->At(11, beside);
}

void WriteBoring(const LocatedPoint& point, DxfWriter* dxf) {
  const std::string name = *EncodeDxfText(point.id);
  dxf->Entity("POINT", kBoringLayer);
  dxf->At(10, {point.easting, point.northing, point.level.value_or(0)});
  dxf->Application();
  dxf->Text(1000, name);
  if (point.station && point.offset) {
    dxf->Real(1040, *point.station);
    dxf->Real(1040, *point.offset);
  }
  DxfPoint at = {point.easting + kPointSize, point.northing + kPointSize, 0};
  WriteText(kBoringLayer, at, name, dxf);
  const auto below = [&](std::string_view text) {
    at.northing -= kLineSpacing;
    WriteText(kBoringLayer, at, text, dxf);
  };
  if (point.offset) below(OffsetText(*point.offset));
  if (point.level) below(FormatFixed(*point.level, 3));
}

// Why a text cannot be written; empty when it can.
std::string Refused(const char* what, std::string_view text) {
  const auto bytes = EncodeDxfText(text);
  if (!bytes) return std::string(what) + " " + Quoted(text) + " has a character that DXF cannot hold";
  if (bytes->size() > kLongestDxfText)
    return std::string(what) + " " + Quoted(text) + " is longer than the 255 characters of a DXF text";
  return {};
}

}  // namespace

std::string WriteDxf(const ExportInput& input, const Sink& sink) {
  std::string refused = Refused("the road's name", input.road.name);
  for (size_t i = 0; i < input.borings.points.size() && refused.empty(); ++i)
    refused = Refused("the name", input.borings.points[i].id);
  if (!refused.empty()) return refused;

  DxfWriter dxf(sink);
  WriteHeader(input, &dxf);
  WriteTables(&dxf);
  dxf.Text(0, "SECTION");
  dxf.Text(2, "ENTITIES");
  WriteRoad(input.road, *EncodeDxfText(input.road.name), &dxf);
  for (const Tick& tick : TicksAt(input.road.plan, input.stations)) WriteStation(tick, &dxf);
  for (const LocatedPoint& point : input.borings.points) WriteBoring(point, &dxf);
  dxf.Text(0, "ENDSEC");
  dxf.Text(0, "EOF");
  dxf.Finish();
  return {};
}

}  // namespace velmora::exchange
