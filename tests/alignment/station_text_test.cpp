#include "velmora/alignment/station_text.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

namespace velmora {
namespace {

TEST(StationText, IsWrittenAndReadBack) {
  const struct {
    double metres;
    const char* plain;
    const char* km;
  } kStations[] = {
      {0, "0.000", "0/000.000"},
      {12.5, "12.500", "0/012.500"},
      {999.9994, "999.999", "0/999.999"},
      {999.9996, "1000.000", "1/000.000"},  // rounding carries into the kilometres
      {123456.789, "123456.789", "123/456.789"},
      {-12.5, "-12.500", "-0/012.500"},
      {-1250.25, "-1250.250", "-1/250.250"},
      {-0.0001, "0.000", "0/000.000"},
      {-1e300, "-1e+300", "-1e+300"},
  };
  for (const auto& c : kStations) {
    EXPECT_EQ(StationText(c.metres, false), c.plain);
    EXPECT_EQ(StationText(c.metres, true), c.km);
    for (const char* text : {c.plain, c.km})
      EXPECT_NEAR(ParseStation(text).value_or(-1), c.metres, 0.0005) << text;
  }
}

TEST(StationText, RoundStationsHaveNoDecimals) {
  EXPECT_EQ(RoundStationText(1300, false), "1300");
  EXPECT_EQ(RoundStationText(1300, true), "1/300");
  EXPECT_EQ(RoundStationText(-300, true), "-0/300");
  EXPECT_EQ(RoundStationText(1300.5, false), "1300.500");
}

TEST(StationText, AcceptsWhatPeopleType) {
  const std::pair<const char*, double> kAccepted[] = {
      {"1250", 1250}, {" 1250.5 ", 1250.5}, {"1+250", 1250}, {"1/25", 1025},           {"-0/012.5", -12.5},
      {"+3", 3},      {"1e3", 1000},        {"0/0", 0},      {"12/999.999", 12999.999}};
  for (const auto& [text, metres] : kAccepted)
    EXPECT_DOUBLE_EQ(ParseStation(text).value_or(-1), metres) << text;
}

TEST(StationText, RefusesOtherText) {
  std::istringstream texts(
      "| |/|1/|/250|1/1000|1/-5|1/+5|1.5/250|1/2/3|1//2|1 250|1250m|1250,5|125O|nan|inf|1/1e2|"
      "--1/2|1/2 5|1/\xC3\xA5|\xFF|" +
      std::string(310, '9') + "/1");
  for (std::string text; std::getline(texts, text, '|');) EXPECT_FALSE(ParseStation(text)) << text;
}

TEST(StationText, OffsetsHaveASideFromHalfAMillimetre) {
  EXPECT_EQ(OffsetText(12.4) + OffsetText(-3.2) + OffsetText(0.00049) + OffsetText(-0.0005),
            "H 12.400V 3.2000.000V 0.001");
  EXPECT_EQ(LengthText(1.5), "1.500 m");
  EXPECT_EQ(LengthText(1e308 * 10), "not finite");
}

}  // namespace
}  // namespace velmora
