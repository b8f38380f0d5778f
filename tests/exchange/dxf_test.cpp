// Roads to DXF and back, and drawings of other programs.
#include "velmora/exchange/dxf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace velmora::exchange {
namespace {

std::string Written(const ExportInput& input) {
  std::string bytes;
  EXPECT_EQ(WriteDxf(input, [&](std::string_view piece) { bytes += piece; }), "");
  return bytes;
}

DxfRoads Read(std::string_view bytes, std::string_view layer = {}) {
  return ReadDxf(
      [&](std::span<char> buffer) {
        const size_t count = std::min<size_t>(bytes.size(), std::min<size_t>(buffer.size(), 997));
        std::copy_n(bytes.begin(), count, buffer.begin());
        bytes.remove_prefix(count);
        return static_cast<std::int64_t>(count);
      },
      ImportOptions(), layer);
}

TEST(Dxf, RoadsComeBack) {
  std::mt19937 random(14);
  std::uniform_real_distribution<double> number(-0.9, 0.9);
  for (int round = 0; round < 50; ++round) {
    ExportInput input;
    input.road.name = "Väg 40 “Ж” \\U+0041 ^x";
    for (int i = 0; i < 2 + round; ++i)
      input.road.plan.push_back({6.5e6 + 50 * number(random), 150000 + 20 * i + number(random),
                                 number(random), 20.0 * i + number(random)});
    input.road.plan.back().bulge = 0;
    input.stations = {5, 10};
    LocatedPoint& boring = input.borings.points.emplace_back();
    boring.id = "21T03\nå";
    boring.station = boring.offset = boring.level = 3;
    const DxfRoads read = Read(Written(input), "road");
    ASSERT_EQ(read.error, "");
    ASSERT_EQ(read.roads.size(), 1U);
    EXPECT_EQ(read.roads[0].road.name, input.road.name);
    EXPECT_TRUE(read.roads[0].has_stations);
    ASSERT_EQ(read.roads[0].road.plan.size(), input.road.plan.size());
    for (size_t i = 0; i < input.road.plan.size(); ++i) {
      const kovltype& a = input.road.plan[i];
      const kovltype& b = read.roads[0].road.plan[i];
      EXPECT_TRUE(a.x == b.x && a.y == b.y && a.bulge == b.bulge && a.sek == b.sek) << i;
    }
  }
}

}  // namespace
}  // namespace velmora::exchange
