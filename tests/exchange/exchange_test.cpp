// Roads through each format and back, and what a later rewrite by the suite's programs leaves of them.
#include <gtest/gtest.h>

#include <random>

#include "tests/support/test_files.h"
#include "velmora/alignment/vag2.h"
#include "velmora/exchange/alignment_text.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/landxml.h"
#include "velmora/exchange/spiral.h"
#include "velmora/exchange/wkt_csv.h"
#include "velmora/text/codepage.h"

namespace velmora::exchange {
namespace {

constexpr double kExact = 1e-5;  // m

// --- the formats

template <auto kWrite>
std::string Written(const ExportInput& input) {
  std::string bytes;
  kWrite(input, [&](std::string_view more) { bytes += more; });
  return bytes;
}
std::vector<ImportedRoad> ReadCsv(const std::string& bytes) {
  std::string problem;
  return ReadWktCsv(bytes, &problem);
}
std::optional<XmlProblem> ReadXmlText(const std::string& bytes, std::vector<ImportedRoad>* roads) {
  const auto open = [&]() -> ByteSource {
    // In small pieces.
    return [&bytes, at = size_t{0}](std::span<char> buffer) mutable {
      const size_t count = bytes.copy(buffer.data(), std::min<size_t>(buffer.size(), 1000), at);
      at += count;
      return static_cast<std::int64_t>(count);
    };
  };
  return ReadLandXml(open, {}, roads);
}
std::vector<ImportedRoad> ReadXmlText(const std::string& bytes) {
  std::vector<ImportedRoad> roads;
  const auto problem = ReadXmlText(bytes, &roads);
  EXPECT_FALSE(problem) << problem->line << ": " << problem->text;
  return roads;
}

struct Format {
  const char* name;
  std::string (*write)(const ExportInput&);
  std::vector<ImportedRoad> (*read)(const std::string&);
};
constexpr Format kFormats[] = {{"csv", Written<WriteWktCsv>, ReadCsv},
                               {"xml", Written<WriteLandXml>, ReadXmlText}};

// --- roads

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  double Between(double low, double high) { return std::uniform_real_distribution(low, high)(engine_); }

  // Straights and arcs of all sweeps; stations along, or falling and off the lengths as the suite's may be.
  Road NewRoad(bool falling) {
    Road road{"V\xC3\xA4g \"1\" & <2>", {}, {}};
    kovltype p{6652000 + Between(-999, 999), 653000 + Between(-999, 999), 0, Between(-500, 5000)};
    double direction = Between(-3, 3);
    for (int i = 0; i < 12; ++i) {
      const double kind = Between(0, 1);
      p.bulge = kind < 0.4 ? 0 : kind < 0.9 ? Between(-0.4, 0.4) : kind < 0.97 ? Between(-1e-3, 1e-3) : 1.7;
      road.plan.push_back(p);
      const double chord = Between(0.5, 400);
      direction += Between(-1, 1);
      p.x += chord * std::sin(direction);
      p.y += chord * std::cos(direction);
      p.sek += (falling ? -1 : 1) * chord * Between(1, 1.1);
    }
    p.bulge = 0;
    road.plan.push_back(p);
    kovltype level{12.5, road.plan[0].sek, 0, road.plan[0].sek};
    for (int i = 0; i < 6; ++i) {
      level.bulge = i % 2 == 1 ? Between(-0.03, 0.03) : 0;
      level.x += Between(-3, 3);
      level.y = level.sek += Between(20, 200);
      road.profile.push_back(level);
    }
    road.profile.back().bulge = 0;
    return road;
  }

 private:
  std::mt19937 engine_;
};

Road ReadBack(const CString& file) {
  CVag2 set;
  EXPECT_EQ(set.Init(file), 0);
  return {Utf8FromWide(set.vlNamn), set.plan.Points(), set.profil.Points()};
}

// Each point of `wanted` is one of `got`, in order, with its station.
void ExpectStations(const Road& wanted, const Road& got) {
  size_t at = 0;
  for (const kovltype& point : wanted.plan) {
    while (at < got.plan.size() && Distance(InPlane(got.plan[at]), InPlane(point)) > kExact) ++at;
    ASSERT_LT(at, got.plan.size());
    EXPECT_NEAR(got.plan[at].sek, point.sek, kExact);
  }
}

TEST(Exchange, XmlThatIsCutAnywhereIsRefusedInItsLastLine) {
  const std::string text =
      "<?xml version=\"1.0\"?>\n<LandXML>\n<!-- \xC3\xA4 --><Units><Metric linearUnit='meter'/></Units>\n"
      "<Alignments>\n<Alignment name=\"a &lt; &#x20AC;\">\n<CoordGeom>\n<Line><Start>0 0</Start>"
      "<End><![CDATA[0\n100]]> </End></Line>\n</CoordGeom>\n</Alignment>\n<?note?></Alignments>\n</LandXML>";
  EXPECT_EQ(ReadXmlText(text).size(), 1u);
  for (size_t size = 0; size < text.size(); ++size) {
    std::vector<ImportedRoad> roads;
    const std::string cut = text.substr(0, size);
    const auto problem = ReadXmlText(cut, &roads);
    ASSERT_TRUE(problem) << cut;
    EXPECT_EQ(problem->line, 1 + std::count(cut.begin(), cut.end(), '\n')) << cut << problem->text;
  }
}

TEST(Exchange, RoadsComeBackExactlyAndARewriteMovesThemByNoMoreThanTheFit) {
  constexpr double kFit = 0.001;
  constexpr double kRoundedCoordinates = 0.0001;
  const TemporaryFolder folder;
  const CString file = folder.File(L"back.vl");
  for (unsigned seed = 0; seed < 60; ++seed) {
    const Road road = Random(seed).NewRoad(seed % 3 == 2);
    for (const Format& format : kFormats) {
      SCOPED_TRACE(::testing::Message() << format.name << " " << seed);
      std::vector<ImportedRoad> roads = format.read(format.write({road, {}, {}, 0, 0.001, 1709301900}));
      ASSERT_EQ(roads.size(), 1U);
      EXPECT_TRUE(roads[0].has_stations);
      FinishImport(kFit, 0, &roads[0]);
      ASSERT_FALSE(roads[0].refused) << roads[0].findings[0].text;
      EXPECT_LT(roads[0].largest_error, kExact);
      std::string bytes;
      WriteAlignment(roads[0].road, [&](std::string_view more) { bytes += more; });
      WriteBytes(file, bytes);
      const Road back = ReadBack(file);
      EXPECT_EQ(back.name, road.name);
      EXPECT_LT(LargestDistance(road.plan, back.plan), kExact);
      EXPECT_LT(LargestDistance(road.profile, back.profile), kExact);
      ExpectStations(road, back);

      CVag2 suite;
      ASSERT_EQ(suite.Init(file), 0);
      ASSERT_EQ(suite.Uppdat(file), 0);
      const Road rewritten = ReadBack(file);
      ASSERT_EQ(rewritten.plan.size(), back.plan.size());
      for (size_t i = 0; i + 1 < back.plan.size(); ++i) {
        EXPECT_LT(std::fabs(back.plan[i].bulge), 1);
        EXPECT_LT(Distance(PointAlong(back.plan[i], back.plan[i + 1], 0.5),
                           PointAlong(rewritten.plan[i], rewritten.plan[i + 1], 0.5)),
                  kFit + kRoundedCoordinates);
      }
    }
  }
}

TEST(Exchange, ChordsAndSpiralsKeepWithinTheirError) {
  const kovltype a{0, 0, -0.3, 10};
  const kovltype b{0, 200, 0, 250};
  const std::vector<kovltype> chords = Chords(std::vector{a, b}, 0.01);
  // 66.8 degrees of a radius of 181.7 m, 1.2 degrees for 10 mm.
  EXPECT_EQ(chords.size(), 57U);
  EXPECT_EQ(chords.front().sek, 10);
  EXPECT_EQ(chords.back().sek, 250);
  // A clothoid of 60 m to a radius of 200 m.
  const Spiral spiral{{0, 0}, {59.865140552, 2.995182022}, 60, 0, 1.0 / 200};
  for (const double error : {0.01, 0.001, 1e-5}) {
    const auto arcs = ArcsOfSpiral(spiral, error);
    ASSERT_TRUE(arcs);
    EXPECT_LE(arcs->largest_distance + arcs->misfit, error);
    EXPECT_NEAR(arcs->direction_start, 0, 1e-6);
    EXPECT_NEAR(arcs->direction_end, 0.15, 1e-6);
  }
  EXPECT_FALSE(ArcsOfSpiral({{0, 0}, {1, 0}, 1000, 0, 1}, 0.001));
}

}  // namespace
}  // namespace velmora::exchange
