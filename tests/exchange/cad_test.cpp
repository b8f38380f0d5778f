// Roads to DXF and GeoPackage and back, what of other programs' drawings is read, and AGS4 lists.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "tests/support/test_files.h"
#include "velmora/exchange/ags.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/dxf.h"
#include "velmora/exchange/geopackage.h"
#include "velmora/exchange/wkb.h"
#include "velmora/platform/table_database.h"
#include "velmora/text/numbers.h"

namespace velmora::exchange {
namespace {

// In small pieces, so that lines and groups are cut between them.
std::vector<ImportedRoad> ReadDrawing(std::string_view bytes, std::string* problem) {
  const Source source = [&](std::span<char> buffer) {
    const size_t count = std::min({bytes.size(), buffer.size(), size_t{7}});
    std::copy_n(bytes.begin(), count, buffer.begin());
    bytes.remove_prefix(count);
    return static_cast<std::int64_t>(count);
  };
  Finding found;
  std::vector<ImportedRoad> roads = ReadDxf(source, ImportOptions(), &found);
  *problem = found.line > 0 ? std::to_string(found.line) + ": " + found.text : found.text;
  return roads;
}

ExportInput SomeRoad(std::mt19937* random, int points) {
  std::uniform_real_distribution<double> number(-1, 1);
  ExportInput input;
  input.road.name = "Väg 40 “Ж” \\U+0041 ^x";
  for (int i = 0; i < points; ++i) {
    const double bulge = i + 1 == points || i % 3 == 0 ? 0 : 3 * number(*random);
    input.road.plan.push_back(
        {6.5e6 + 50 * number(*random), 150000 + 20.0 * i + number(*random), bulge, 20.0 * i});
  }
  input.stations = {5, 10};
  input.borings.own_titles = {"Station", "station_2", ""};
  LocatedPoint& boring = input.borings.points.emplace_back();
  boring.id = "21T03\nå";
  boring.northing = 6.5e6;
  boring.station = boring.level = 3;
  boring.offset = -0.125;
  boring.own = {"a", "b", "c"};
  return input;
}

void ExpectSame(const ExportInput& input, const std::vector<ImportedRoad>& roads) {
  ASSERT_EQ(roads.size(), 1U);
  EXPECT_EQ(roads[0].road.name, input.road.name);
  EXPECT_TRUE(roads[0].has_stations && !roads[0].refused);
  EXPECT_LE(LargestDistance(input.road.plan, roads[0].road.plan), 1e-6);
  ASSERT_EQ(roads[0].road.plan.size(), input.road.plan.size());
  for (size_t i = 0; i < input.road.plan.size(); ++i)
    EXPECT_DOUBLE_EQ(roads[0].road.plan[i].sek, input.road.plan[i].sek);
}

struct SeenFeatures : FeatureSink {
  void Begin(std::int64_t, const std::optional<BlobPoint>& place) override {
    text += FormatShortest(place.value().northing) + "|";
  }
  void Field(const TableCell& cell) override { text += TextOf(cell) + "|"; }
  bool End() override {
    text += "end";
    return true;
  }
  std::string text;
};

TEST(Cad, RoadsComeBack) {
  std::mt19937 random(14);
  const TemporaryFolder folder;
  for (int round = 0; round < 40; ++round) {
    const ExportInput input = SomeRoad(&random, 2 + round);
    std::string bytes;
    std::string problem;
    const Sink sink = [&](std::string_view piece) { bytes += piece; };
    ASSERT_EQ(WriteDxf(input, sink), "");
    ExpectSame(input, ReadDrawing(bytes, &problem));
    EXPECT_EQ(problem, "");
    if (!TableDatabase::IsAvailable()) continue;
    bytes.clear();
    ASSERT_EQ(WriteGeoPackage(input, sink), "");
    WriteBytes(folder.File(L"a.gpkg"), bytes);
    ExpectSame(input, ReadGeoPackage(folder.File(L"a.gpkg"), "", &problem));
    const std::vector<ImportedRoad> stroked =
        ReadGeoPackage(folder.File(L"a.gpkg"), "ALIGNMENT_STROKED", &problem);
    ASSERT_EQ(stroked.size(), 1U);
    EXPECT_LE(LargestDistance(Chords(input.road.plan, input.chord_error), stroked[0].road.plan), 1e-6);
    GeoPackagePoints borings(folder.File(L"a.gpkg"), "borings");
    EXPECT_EQ(borings.Titles().back(), "column");
    SeenFeatures seen;
    ASSERT_TRUE(borings.Read(&seen));
    EXPECT_EQ(seen.text, "6500000|1|21T03\nå|3|3|-0.125|V||||a|b|c|end");
    EXPECT_FALSE(borings.Read(&seen));
    EXPECT_EQ(borings.Problem(), "");
    EXPECT_EQ(problem, "");
  }
}

// Of text in UTF-16, and with more columns than SQLite passes to a function at once.
TEST(Cad, GeoPackagesOfOtherProgramsAreRead) {
  if (!TableDatabase::IsAvailable()) GTEST_SKIP();
  std::string columns = "at";
  std::string values = "x'47500001000000000101000000000000000000F03F0000000000000040', 'å'";
  std::string expected = "2|å|";
  for (int i = 0; i < 300; ++i) {
    columns += ", c" + std::to_string(i);
    if (i > 0) values += ", " + std::to_string(i);
    if (i > 0) expected += std::to_string(i) + "|";
  }
  TableDatabase made;
  std::string bytes;
  ASSERT_TRUE(
      made.Make() &&
      made.Run("PRAGMA encoding = 'UTF-16'; CREATE TABLE gpkg_spatial_ref_sys(srs_id, definition);"
               "CREATE TABLE gpkg_geometry_columns(table_name, column_name, geometry_type_name, srs_id, z);"
               "INSERT INTO gpkg_geometry_columns VALUES('wells', 'at', 'POINT', 0, 0);"
               "CREATE TABLE wells(" +
               columns + "); INSERT INTO wells VALUES(" + values + ")") &&
      made.HandOver([&](std::string_view piece) { bytes += piece; }))
      << made.Error();
  const TemporaryFolder folder;
  WriteBytes(folder.File(L"a.gpkg"), bytes);
  GeoPackagePoints wells(folder.File(L"a.gpkg"), "");
  SeenFeatures seen;
  EXPECT_TRUE(wells.Read(&seen)) << wells.Problem();
  EXPECT_EQ(seen.text, expected + "end");
}

// A drawing of these groups; "|" ends a line.
std::string Drawing(std::string groups) {
  std::replace(groups.begin(), groups.end(), '|', '\n');
  return "0\nSECTION\n2\nENTITIES\n" + groups + "0\nENDSEC\n0\nEOF\n";
}

struct DrawingCase {
  const char* groups;
  const char* expected;  // x,y,bulge of the points of each road; or why it is refused
};

std::string Text(const ImportedRoad& road) {
  if (road.refused) return road.road.name + ": " + road.findings.at(0).text;
  std::string text = road.road.name + ":";
  for (const kovltype& point : road.road.plan)
    for (const double number : {point.y, point.x, point.bulge})
      text += " " + std::to_string(std::lround(1e3 * number));
  return text;
}

TEST(Cad, DrawingsOfOtherPrograms) {
  const DrawingCase cases[] = {
      // A chain whose arc and last line are drawn the other way; it runs as the first line in the file.
      {"0|ARC|8|A|10|10|20|-5|40|5|50|0|51|90|0|LINE|8|A|10|0|20|0|11|10|21|0.0008|0|LINE|8|A|10|15|20|-9|11|"
       "15|21|-5|",
       "A: 0 0 0 10000 0 -414 15000 -5000 0 15000 -9000 0\n"},
      // Three ends in one place join nothing.
      {"0|LINE|5|A1|10|0|20|0|11|1|21|0|0|LINE|5|A2|10|1|20|0|11|2|21|0|0|LINE|10|1|20|0|11|1|21|1|",
       "#A1: 0 0 0 1000 0 0\n#A2: 1000 0 0 2000 0 0\nline 30: 1000 0 0 1000 1000 0\n"},
      {"0|LINE|8|R|10|0|20|0|11|1|21|0|0|ARC|8|R|10|0.5|20|0|40|0.5|50|0|51|180|",
       "R: the chain of lines and arcs that begins here is closed\n"},
      // Seen from below; in paper space.
      {"0|LWPOLYLINE|8|L|10|1|20|2|42|0.5|10|3|20|4|210|0|220|0|230|-1|0|LINE|67|1|10|0|20|0|11|1|21|0|",
       "L: -1000 2000 -500 -3000 4000 0\n"},
      {"0|LWPOLYLINE|8|L|70|1|10|1|20|2|10|3|20|4|", "L: LWPOLYLINE is closed\n"},
      {"0|POLYLINE|8|P|70|8|0|VERTEX|10|1|20|2|0|SEQEND|", "P: POLYLINE is not a line in the plan\n"},
      {"0|SPLINE|5|2F|8|S|0|ELLIPSE|8|S\\U+00C5\\U+D83D\\U+DE00|",
       "S: SPLINE with handle \"2F\" is not made of straight lines and arcs\n"
       "SÅ😀: ELLIPSE is not made of straight lines and arcs\n"},
      {"0|CIRCLE|8|C|", ""},
      {"0|LINE|8|M|10|0|11|1|21|0|0|ARC|8|N|10|0|20|0|50|0|51|9|0|POLYLINE|8|P|0|VERTEX|8|O|10|1|0|"
       "LWPOLYLINE|"
       "8|P|10|1|20|2|10|3|",
       "M: LINE has no group 20\nN: ARC has no group 40\nO: VERTEX has no group 20\n"
       "P: LWPOLYLINE has a point without group 20\n"},
  };
  for (const DrawingCase& drawing : cases) {
    std::string problem;
    std::string read;
    for (const ImportedRoad& road : ReadDrawing(Drawing(drawing.groups), &problem)) read += Text(road) + "\n";
    EXPECT_EQ(read, drawing.expected);
    EXPECT_EQ(problem, "");
  }
  const std::pair<std::string, const char*> refused[] = {
      {"", "the file ends without EOF: it is incomplete"},
      {"0\nSECTION\n2", "3: the file ends within a group: it is incomplete"},
      {"0\nSECTION\nx\n", "3: \"x\" is not a group code of DXF"},
      {Drawing("0|LINE|10|1e999|"), "8: \"1e999\" is not a number"},
      {"AutoCAD Binary DXF\r\n\x1a", "is a binary DXF file; save it as ASCII DXF"},
      {"0\nSECTION\n2\nHEADER\n9\n$INSUNITS\n70\n2\n",
       "8: the drawing is in feet; give --feet international or --feet survey"},
      {"0\n" + std::string(70'000, 'x'), "2: this line is too long for DXF"},
  };
  for (const auto& [bytes, expected] : refused) {
    std::string problem;
    EXPECT_TRUE(ReadDrawing(bytes, &problem).empty());
    EXPECT_EQ(problem, expected);
  }
}

// Cut anywhere, a geometry is refused; with the other byte order and a level it is read.
TEST(Cad, Geometries) {
  std::mt19937 random(15);
  const std::string blob = CompoundCurveBlob(SomeRoad(&random, 9).road.plan, 3006);
  EXPECT_EQ(ReadLineBlob(blob).error, "");
  for (size_t size = 0; size < blob.size(); ++size)
    EXPECT_NE(ReadLineBlob(blob.substr(0, size)).error, "") << size;
  using namespace std::string_literals;
  const auto point = ReadPointBlob("GP\0\4\0\0\0\0"s + std::string(48, 'b') +
                                   "\0\0\0\3\xE9\x3F\xF0\0\0\0\0\0\0\x40\0\0\0\0\0\0\0\xC0\0\0\0\0\0\0\0"s);
  ASSERT_TRUE(point && point->level);
  EXPECT_TRUE(point->easting == 1 && point->northing == 2 && *point->level == -2);
}

// A list comes back byte for byte but for the three columns, which are added where they are missing.
TEST(Cad, AgsLists) {
  const std::string before = "\"GROUP\",\"PROJ\"\r\n\"DATA\",\"LOCA\"\r\n\r\n\"GROUP\",\"LOCA\"\r\n";
  const std::string after = "\n\"GROUP\",\"SAMP\"\r\n\"DATA\",\"A\",\"1\"\r\n";
  const std::string added =
      before +
      "\"HEADING\",\"LOCA_ID\",\"LOCA_NATE\",\"LOCA_NATN\",\"LOCA_GL\",\"FILE_FSET\"\r\n"
      "\"UNIT\",\"\",\"m\",\"m\",\"m\",\"\"\r\n\"TYPE\",\"ID\",\"2DP\",\"2DP\",\"2DP\",\"X\"\r\n"
      "\"DATA\",\"B\",\"x\",\"20\"\n\"DATA\",\"A \"\"1\"\", å\",\"10.5\",\"20\",\"\",\"F\"\r\n" +
      after;
  const std::vector<AgsPlace> places = {{9, 1250.1239, -3.456}};
  std::string bytes;
  const Sink sink = [&](std::string_view piece) { bytes += piece; };
  WriteAgs(added, "Väg \"1\"", places, sink);
  const std::string filled =
      before +
      "\"HEADING\",\"LOCA_ID\",\"LOCA_NATE\",\"LOCA_NATN\",\"LOCA_GL\",\"LOCA_ALID\",\"LOCA_OFFS\","
      "\"LOCA_CNGE\",\"FILE_FSET\"\r\n\"UNIT\",\"\",\"m\",\"m\",\"m\",\"\",\"m\",\"\",\"\"\r\n"
      "\"TYPE\",\"ID\",\"2DP\",\"2DP\",\"2DP\",\"X\",\"2DP\",\"X\",\"X\"\r\n"
      "\"DATA\",\"B\",\"x\",\"20\",\"\",\"\",\"\",\"\"\n\"DATA\",\"A \"\"1\"\", å\",\"10.5\",\"20\",\"\","
      "\"Väg \"\"1\"\"\",\"-3.46\",\"1250.124\",\"F\"\r\n" +
      after;
  EXPECT_EQ(bytes, filled);
  bytes.clear();
  WriteAgs(filled, "Väg \"1\"", places, sink);
  EXPECT_EQ(bytes, filled);
}

}  // namespace
}  // namespace velmora::exchange
