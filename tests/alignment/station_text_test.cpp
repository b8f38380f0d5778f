#include "velmora/alignment/station_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

struct StationCase {
  double metres;
  const char* plain;
  const char* km;
};
const StationCase kStations[] = {
    {0, "0.000", "0/000.000"},
    {12.5, "12.500", "0/012.500"},
    {999.9994, "999.999", "0/999.999"},
    {999.9996, "1000.000", "1/000.000"},  // rounding carries into the kilometres
    {1250, "1250.000", "1/250.000"},
    {123456.789, "123456.789", "123/456.789"},
    {-12.5, "-12.500", "-0/012.500"},
    {-1250.25, "-1250.250", "-1/250.250"},
    {-0.0001, "0.000", "0/000.000"},
};

TEST(StationText, IsWrittenAndReadBack) {
  for (const StationCase& c : kStations) {
    SCOPED_TRACE(c.plain);
    EXPECT_EQ(StationText(c.metres, false), c.plain);
    EXPECT_EQ(StationText(c.metres, true), c.km);
    for (const char* text : {c.plain, c.km}) {
      const auto back = ParseStation(text);
      ASSERT_TRUE(back) << text;
      EXPECT_NEAR(*back, c.metres, 0.0005) << text;
    }
  }
}

TEST(StationText, RoundStationsHaveNoDecimals) {
  EXPECT_EQ(RoundStationText(1300, false), "1300");
  EXPECT_EQ(RoundStationText(1300, true), "1/300");
  EXPECT_EQ(RoundStationText(-300, true), "-0/300");
  EXPECT_EQ(RoundStationText(1300.5, false), "1300.500");
}

TEST(StationText, AcceptsWhatPeopleType) {
  const struct {
    const char* text;
    double metres;
  } kAccepted[] = {{"1250", 1250}, {" 1250.5 ", 1250.5}, {"1+250", 1250},
                   {"1/25", 1025}, {"-0/012.5", -12.5},  {"+3", 3},
                   {"1e3", 1000},  {"0/0", 0},           {"12/999.999", 12999.999}};
  for (const auto& c : kAccepted) {
    const auto station = ParseStation(c.text);
    ASSERT_TRUE(station) << c.text;
    EXPECT_DOUBLE_EQ(*station, c.metres) << c.text;
  }
}

TEST(StationText, RefusesOtherText) {
  for (const std::string& text : std::vector<std::string>{"",
                                                          " ",
                                                          "/",
                                                          "1/",
                                                          "/250",
                                                          "1/1000",
                                                          "1/-5",
                                                          "1/+5",
                                                          "1.5/250",
                                                          "1/2/3",
                                                          "1//2",
                                                          "1 250",
                                                          "1250m",
                                                          "1250,5",
                                                          "125O",
                                                          "nan",
                                                          "inf",
                                                          "1/1e2",
                                                          "--1/2",
                                                          "1/2 5",
                                                          "1/\xC3\xA5",
                                                          "\xFF",
                                                          std::string(310, '9') + "/1"})
    EXPECT_FALSE(ParseStation(text)) << text;
}

TEST(StationText, OffsetsHaveASideFromHalfAMillimetre) {
  EXPECT_EQ(OffsetText(12.4) + OffsetText(-3.2) + OffsetText(0.00049) + OffsetText(-0.0005),
            "H 12.400V 3.2000.000V 0.001");
  EXPECT_EQ(LengthText(1.5), "1.500 m");
  EXPECT_EQ(LengthText(1e308 * 10), "not finite");
}

}  // namespace
}  // namespace velmora
