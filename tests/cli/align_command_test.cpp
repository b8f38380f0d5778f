// The align commands, run for real on the example road and on damaged input.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/run_command.h"

namespace velmora::testing {
namespace {

using nlohmann::json;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

int CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

std::string Utf16(const std::string& ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char c : ascii) bytes += {c, '\0'};
  return bytes;
}

// One line on standard error that names the place, nothing on standard output, status 1.
void ExpectRefused(const Ran& ran, const std::string& what) {
  EXPECT_EQ(ran.status, 1) << ran.err;
  EXPECT_EQ(ran.out, "");
  EXPECT_EQ(CountOf(ran.err, "\n"), 1) << ran.err;
  EXPECT_NE(ran.err.find(what), std::string::npos) << ran.err;
}

// A folder with files of this test's own.
class AlignCommand : public ::testing::Test {
 protected:
  std::string Put(const wchar_t* name, const std::string& bytes) {
    WriteBytes(PathOf(name), bytes);
    return AsArgument(PathOf(name));
  }
  CString PathOf(const wchar_t* name) const { return folder_.Path() + L"\\" + name; }

  // A right-angled road without arcs, 100 m east and then 100 m north, stations from 0.
  std::string Corner() {
    return Put(
        L"corner.vl",
        "0 0 0 0 1 $Corner\r\n0 100 0 100\r\n100 100 0 200\r\n*\r\nProfil\r\n*\r\n10 0 0\r\n20 200 0\r\n");
  }

  TemporaryFolder folder_;
};

TEST_F(AlignCommand, InfoTellsWhatTheExampleHolds) {
  const Ran ran = RunVelmora({"align", "info", Example("road.vl"), "--json"});
  ASSERT_EQ(ran.status, 0) << ran.err;
  const json info = json::parse(ran.out);
  EXPECT_EQ(info["name"], "Väg 943 Norrsjö");
  EXPECT_EQ(info["type"], "plan and profile");
  EXPECT_EQ(info["plan_points"], 13);
  EXPECT_EQ(info["arcs"], 5);
  EXPECT_NEAR(info["length"], 2164.4642, 0.05);
  EXPECT_EQ(info["direction"], "ascending");
  EXPECT_TRUE(info["findings"].empty()) << info["findings"];

  const Ran falling = RunVelmora({"align", "info", Example("road-falling.vl")});
  EXPECT_NE(falling.out.find("descending"), std::string::npos) << falling.out;
}

TEST_F(AlignCommand, InfoNamesEveryFaultWithItsLine) {
  const std::string file = Put(L"bad.vl",
                               "0 0 0 0 1 $Bad\n"  // 1
                               "rubbish\n"         // 2
                               "0 100 1.5 100\n"   // 3: more than half a circle
                               "0 200 0 90\n"      // 4: turns back
                               "0 200 0.5 190\n"   // 5: coincides, and its bulge meets
                               "0 200 0 190\n"     // 6: another point here at the same station
                               "\n");              // 7
  const json info = json::parse(RunVelmora({"align", "info", file, "--json"}).out);
  std::string all;
  for (const json& finding : info["findings"])
    all += std::to_string(finding["line"].get<int>()) + " " + finding["text"].get<std::string>() + "\n";
  for (const char* expected :
       {"2 unreadable, skipped: \"rubbish\"", "3 bulge 1.5000", "4 station 90.000 is out of order",
        "5 coincides with the previous point", "5 bulge 0.5000 between coincident points",
        "6 station 190.000 repeats that of the previous point", "7 empty line"})
    EXPECT_NE(all.find(expected), std::string::npos) << expected << "\nin\n" << all;
}

TEST_F(AlignCommand, LocateGivesStationOffsetSideLevelAndStatus) {
  const std::string points = Put(L"p.csv",
                                 "id,northing,easting,z\n"
                                 "R,-5,50,12\n"        // right of the first leg
                                 "L,60,96,\n"          // left of the second
                                 "WEDGE,-3,104,15\n"   // outside the corner
                                 "BEFORE,-1,-7,1\n"    //
                                 "BEYOND,130,101,1\n"  //
                                 "BAD,1O,2,3\n");      // line 7
  const Ran ran = RunVelmora({"align", "locate", Corner(), "--points", points, "--json"});
  EXPECT_EQ(ran.status, 1);
  EXPECT_NE(ran.err.find("p.csv:7: northing \"1O\" is not a number"), std::string::npos) << ran.err;
  const json rows = json::parse(ran.out);
  ASSERT_EQ(rows.size(), 6U);
  const auto expect = [&](size_t i, double station, double offset, const char* side, double level) {
    EXPECT_NEAR(rows[i]["station"], station, 1e-9) << rows[i];
    EXPECT_NEAR(rows[i]["offset"], offset, 1e-9) << rows[i];
    EXPECT_EQ(rows[i]["side"], side);
    EXPECT_NEAR(rows[i]["profile_level"], level, 1e-9) << rows[i];
    EXPECT_EQ(rows[i]["status"], "on the alignment");
  };
  expect(0, 50, 5, "H", 12.5);
  EXPECT_NEAR(rows[0]["difference"], -0.5, 1e-9);
  expect(1, 160, -4, "V", 18);
  EXPECT_TRUE(rows[1]["difference"].is_null());
  expect(2, 100, 5, "H", 15);
  EXPECT_EQ(rows[3]["status"], "before its start");
  EXPECT_TRUE(rows[3]["station"].is_null());
  EXPECT_EQ(rows[4]["status"], "beyond its end");
  EXPECT_EQ(rows[5]["status"], "unreadable row (line 7): northing \"1O\" is not a number");

  // Without the vertices the wedge is no place on the road.
  const json segments =
      json::parse(RunVelmora({"align", "locate", Corner(), "--points", points, "--mode", "2", "--json"}).out);
  EXPECT_EQ(segments[2]["status"], "nothing found");
}

TEST_F(AlignCommand, AreaAndOffsetsKeepPointsOutWithoutHidingThem) {
  const std::string points = Put(L"p.csv", "a,-5,50\nb,-5,90\nc,25,50\n");
  const json rows = json::parse(RunVelmora({"align", "locate", Corner(), "--points", points, "--area",
                                            "0:0/060", "--offsets", "-10:10", "--json"})
                                    .out);
  EXPECT_EQ(rows[0]["status"], "on the alignment");
  EXPECT_EQ(rows[1]["status"], "outside the area");
  EXPECT_NEAR(rows[1]["station"], 90, 1e-9);
  EXPECT_EQ(rows[2]["status"], "outside the area");
}

// The same points in every dialect give the same rows.
TEST_F(AlignCommand, ListsAreReadInEveryDialect) {
  const struct {
    const char* name;
    std::string bytes;
  } kDialects[] = {
      {"header, any case and order", "Easting (m),ID,Z,NORTHING\n50.5,\"A, 1\",3.5,-5.25\n"},
      {"no header", "\"A, 1\",-5.25,50.5,3.5\n"},
      {"semicolon and decimal comma", "namn;x;y;z\r\nA, 1;-5,25;50,5;3,5\r\n"},
      {"tab", "id\tn\te\tlevel\nA, 1\t-5.25\t50,5\t3.5\n"},
      {"mark, blank lines, no last line end", "\xEF\xBB\xBF\n\nid;x;y;z\n\nA, 1;-5,25;50,5;3,5"},
      {"separator told", "sep=;\nid;x;y;z\nA, 1;-5,25;50,5;3,5\n"},
      {"UTF-16", Utf16("x;y;id;z\n-5,25;50,5;A, 1;3,5\n")},
  };
  for (const auto& dialect : kDialects) {
    SCOPED_TRACE(dialect.name);
    const Ran ran = RunVelmora({"align", "locate", Corner(), "--points", "-", "--csv"}, dialect.bytes);
    EXPECT_EQ(ran.status, 0) << ran.err;
    const std::vector<std::string> lines = Lines(ran.out);
    ASSERT_EQ(lines.size(), 2U) << ran.out;
    EXPECT_EQ(lines[1].substr(0, lines[1].rfind(',')),
              "\"A, 1\",-5.2500,50.5000,50.5000,5.2500,H,12.5250,3.5000,-9.0250,on the alignment");
  }
}

// More than a block for each thread, with rows that are no points and rows that the quick way leaves.
TEST_F(AlignCommand, RowsComeInOrderFromAnyNumberOfThreads) {
  std::string list = "id,n,e,z\n";
  for (int i = 0; i < 40'000; ++i) {
    list += i % 1000 == 7 ? "\"B, " + std::to_string(i) + "\"" : "Punkt-nummer-" + std::to_string(i);
    list += i % 5000 == 9 ? ",x,1\n"
                          : "," + std::to_string(i % 90) + ".25," + std::to_string(i % 97) + ".5,1.75\r\n";
    if (i % 3000 == 1) list += "\n";
  }
  const Ran one = RunVelmora({"align", "locate", Corner(), "--points", "-", "--csv", "--threads", "1"}, list);
  const Ran three =
      RunVelmora({"align", "locate", Corner(), "--points", "-", "--csv", "--threads", "3"}, list);
  EXPECT_TRUE(one.out == three.out && one.err == three.err && one.status == 1 && three.status == 1);
  const std::vector<std::string> lines = Lines(one.out);
  ASSERT_EQ(lines.size(), 40'001U);
  int before = 1;
  for (size_t i = 1; i < lines.size(); ++i) {
    const int number = std::stoi(lines[i].substr(lines[i].rfind(',') + 1));
    ASSERT_LT(before, number) << lines[i];
    before = number;
  }
  EXPECT_EQ(before, CountOf(list, "\n"));
}

TEST_F(AlignCommand, SwedishLettersComeThroughFromBothEncodings) {
  for (const char* id : {"Bro \xC3\xA5\xC3\xA4\xC3\xB6", "Bro \xE5\xE4\xF6"}) {
    const Ran ran = RunVelmora({"align", "locate", Corner(), "--points", "-"}, std::string(id) + ";-5;50\n");
    EXPECT_NE(ran.out.find("Bro åäö"), std::string::npos) << ran.out;
  }
}

TEST_F(AlignCommand, ControlsAndEndlessNumbersStayOutOfResults) {
  const Ran table = RunVelmora({"align", "locate", Corner(), "--points", "-"},
                               "\x1B[2J\xC2\x9B"
                               "2J,-5,50\n");
  EXPECT_NE(table.out.find("?[2J?2J"), std::string::npos) << table.out;
  const std::string arc = Put(L"arc.vl", "0 0 1e308 0 1 $Arc\n0 100 0 100\n");
  const Ran info = RunVelmora({"align", "info", arc, "--csv"});
  EXPECT_NE(info.out.find("\nlength,,\n"), std::string::npos) << info.out;
}

TEST_F(AlignCommand, ExchangedAxesAreNoticed) {
  const std::string road = Put(L"r.vl", "6652000 653000 0 0 1 $R\n6652000 654000 0 1000\n");
  const Ran wrong = RunVelmora({"align", "locate", road, "--points", "-"}, "id,n,e\na,653500,6652010\n");
  EXPECT_NE(wrong.err.find("look swapped"), std::string::npos) << wrong.err;
  const Ran right = RunVelmora({"align", "locate", road, "--points", "-"}, "id,n,e\na,6652010,653500\n");
  EXPECT_EQ(right.err, "");
}

TEST_F(AlignCommand, PlaceTakesStationsBackToTheMap) {
  const Ran ran = RunVelmora({"align", "place", Corner(), "--stations", "-", "--json"},
                             "id,station,offset\na,0/050,H 5\nb,160,-4\nc,100,\nd,-1,0\ne,200.5,0\n");
  ASSERT_EQ(ran.status, 0) << ran.err;
  const json rows = json::parse(ran.out);
  const auto expect = [&](size_t i, double northing, double easting, double level) {
    EXPECT_NEAR(rows[i]["northing"], northing, 1e-8) << rows[i];
    EXPECT_NEAR(rows[i]["easting"], easting, 1e-8) << rows[i];
    EXPECT_NEAR(rows[i]["profile_level"], level, 1e-9) << rows[i];
  };
  expect(0, -5, 50, 12.5);
  expect(1, 60, 96, 18);
  expect(2, 0, 100, 15);
  EXPECT_EQ(rows[3]["status"], "before its start");
  EXPECT_EQ(rows[4]["status"], "beyond its end");
  EXPECT_EQ(ran.err, "");

  // Found offsets lie on the other side here when stations fall, and nobody should learn that on site.
  const Ran falling =
      RunVelmora({"align", "place", Example("road-falling.vl"), "--stations", "-"}, "id,station\na,3000\n");
  EXPECT_EQ(falling.status, 0);
  EXPECT_NE(falling.err.find("its stations are descending"), std::string::npos) << falling.err;
}

TEST_F(AlignCommand, LevelAnswersWithinTheProfileOnly) {
  const Ran on = RunVelmora({"align", "level", Corner(), "--station", "0", "0/150", "--csv"});
  EXPECT_EQ(on.status, 0) << on.err;
  EXPECT_EQ(on.out, "station,level,status\n0.0000,10.0000,on the profile\n150.0000,17.5000,on the profile\n");
  const Ran off = RunVelmora({"align", "level", Corner(), "--station", "200"});
  EXPECT_EQ(off.status, 1);
  EXPECT_NE(off.err.find("corner.vl"), std::string::npos) << off.err;
}

TEST_F(AlignCommand, EditsWriteAWholeAlignment) {
  const std::string out = AsArgument(PathOf(L"out.vl"));
  ASSERT_EQ(RunVelmora({"align", "stations", Corner(), "--start", "1/000", "-o", out}).status, 0);
  EXPECT_EQ(ReadBytes(PathOf(L"out.vl")),
            "0.0000 0.0000 0.0000 1000.0000 1 $Corner\r\n0.0000 100.0000 0.0000 1100.0000\r\n"
            "100.0000 100.0000 0.0000 1200.0000\r\n*\r\nProfil\r\n*\r\n10.0000 0.0000 0.0000\r\n"
            "20.0000 200.0000 0.0000\r\n");

  // A shift takes the profile along.
  ASSERT_EQ(RunVelmora({"align", "shift", Corner(), "--at", "0,100", "--station", "500", "-o", out}).status,
            0);
  EXPECT_EQ(ReadBytes(PathOf(L"out.vl")),
            "0.0000 0.0000 0.0000 400.0000 1 $Corner\r\n0.0000 100.0000 0.0000 500.0000\r\n"
            "100.0000 100.0000 0.0000 600.0000\r\n*\r\nProfil\r\n*\r\n10.0000 400.0000 0.0000\r\n"
            "20.0000 600.0000 0.0000\r\n");

  // In place; the new first point lies half a metre nearer than its station says.
  const std::string corner = Corner();
  ASSERT_EQ(RunVelmora({"align", "extend", corner, "--before", "10", "-o", corner}).status, 0);
  EXPECT_EQ(ReadBytes(PathOf(L"corner.vl")).substr(0, 71),
            "0.0000 -9.5000 0.0000 -10.0000 1 $Corner\r\n0.0000 0.0000 0.0000 0.0000\r\n");

  const Ran shown = RunVelmora({"align", "stations", Corner(), "--start", "0", "--csv"});
  EXPECT_EQ(Lines(shown.out).size(), 4U) << shown.out;
}

TEST_F(AlignCommand, NothingIsWrittenOverByMistake) {
  const std::string with_note = Put(L"note.vl", "0 0 0 0 1 $N\na note\n0 100 0 100\n");
  ExpectRefused(RunVelmora({"align", "stations", with_note, "--start", "5", "-o", with_note}), "note.vl:2: ");
  EXPECT_EQ(ReadBytes(PathOf(L"note.vl")), "0 0 0 0 1 $N\na note\n0 100 0 100\n");

  const std::string points = Put(L"p.csv", "a,-5,50\n");
  ExpectRefused(RunVelmora({"align", "locate", Corner(), "--points", points, "-o", points}), "p.csv");
  EXPECT_EQ(ReadBytes(PathOf(L"p.csv")), "a,-5,50\n");

  // What an alignment has no room for is told when it is left out of a copy.
  const std::string copy = AsArgument(PathOf(L"copy.vl"));
  const Ran copied = RunVelmora({"align", "stations", with_note, "--start", "5", "-o", copy});
  EXPECT_EQ(copied.status, 0);
  EXPECT_NE(copied.err.find("note.vl:2: "), std::string::npos) << copied.err;
  ExpectRefused(RunVelmora({"align", "stations", with_note, "--start", "5", "-o", "-"}), "-o");

  // A result is complete or absent.
  const std::string result = AsArgument(PathOf(L"no such folder\\out.csv"));
  ExpectRefused(RunVelmora({"align", "locate", Corner(), "--points", points, "-o", result}), "out.csv");
}

TEST_F(AlignCommand, UnusableFilesGiveOneClearLine) {
  const std::string one = Put(L"one.vl", "1 2 0 0 1 $One\n");
  const std::string profile = Put(L"profile.vl", "100 5.0 0 5.0 10 $P\n101 10.0 0 10.0\n");
  std::string noise(100000, '\0');
  for (size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * 2654435761U >> 13);
  const std::string binary = Put(L"noise.vl", noise);
  const std::string empty = Put(L"empty.vl", "");
  const std::string points = Put(L"p.csv", "a,-5,50\n");
  const std::string wrong_header = Put(L"h.csv", "name,east,level\na,1,2\n");

  ExpectRefused(RunVelmora({"align", "info", AsArgument(PathOf(L"missing.vl"))}), "missing.vl: no such file");
  ExpectRefused(RunVelmora({"align", "info", AsArgument(folder_.Path())}), "is a folder");
  ExpectRefused(RunVelmora({"align", "info", binary}), "noise.vl: is not an alignment");
  ExpectRefused(RunVelmora({"align", "info", empty}), "empty.vl: is empty");
  ExpectRefused(RunVelmora({"align", "locate", one, "--points", points}), "one.vl:1: ");
  ExpectRefused(RunVelmora({"align", "locate", profile, "--points", points}),
                "profile.vl: holds only a profile");
  ExpectRefused(RunVelmora({"align", "level", one, "--station", "1"}), "one.vl: has no profile");
  const std::string endless = Put(L"endless.csv", std::string(3000000, ','));
  ExpectRefused(RunVelmora({"align", "locate", Corner(), "--points", endless}), "endless.csv:1: ");
  const std::string blanks = Put(L"blanks.csv", "a -5 50\n");
  ExpectRefused(RunVelmora({"align", "locate", Corner(), "--points", blanks}), "comma, semicolon or tab");
  ExpectRefused(RunVelmora({"align", "locate", Corner(), "--points", wrong_header}),
                "h.csv:1: no column for northing");
  ExpectRefused(RunVelmora({"align", "locate", Corner(), "--points", AsArgument(PathOf(L"no.csv"))}),
                "no.csv");
  ExpectRefused(RunVelmora({"align", "shift", Corner(), "--at", "1,1", "--station", "0"}), "within 1 mm");
  ExpectRefused(RunVelmora({"align", "extend", Example("road-falling.vl"), "--before", "5"}),
                "its stations are descending");
  const std::string turning = Put(L"turning.vl", "0 0 0 0 1 $T\n0 100 0 200\n0 200 0 100\n");
  ExpectRefused(RunVelmora({"align", "extend", turning, "--after", "5"}), "turning.vl:3: ");
}

TEST_F(AlignCommand, WrongUsageIsStatusTwo) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {},
           {"align"},
           {"align", "fly"},
           {"align", "locate", "x.vl"},
           {"align", "locate", "x.vl", "--points", "p", "--mode", "3"},
           {"align", "level", "x.vl", "--station", "12x"},
           {"align", "info", "x.vl", "--csv", "--json"},
           {"align", "shift", "x", "--at", "0,0", "--station", "0", "-o", "y.csv", "--csv"},
           {"env", "show", "--km"}}) {
    const Ran ran = RunVelmora(arguments);
    EXPECT_EQ(ran.status, 2) << ran.err;
    EXPECT_EQ(CountOf(ran.err, "\n"), 1) << ran.err;
    EXPECT_EQ(ran.out, "");
  }
  const Ran unknown = RunVelmora({"align", "inof", "x.vl"});
  EXPECT_NE(unknown.err.find("\"inof\""), std::string::npos) << unknown.err;
  EXPECT_NE(unknown.err.find("info, locate"), std::string::npos) << unknown.err;
  const Ran help = RunVelmora({"align", "locate", "--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("--points"), std::string::npos);
  EXPECT_EQ(help.err, "");
}

TEST_F(AlignCommand, TheDrawingHoldsTheRoadAndItsBorings) {
  const std::string picture = AsArgument(PathOf(L"plan.svg"));
  const Ran ran =
      RunVelmora({"align", "plot", Example("road.vl"), "--points", Example("borings.csv"), "-o", picture});
  // One of the example's rows is no point.
  EXPECT_EQ(ran.status, 1);
  EXPECT_NE(ran.err.find("borings.csv:18: "), std::string::npos) << ran.err;
  const std::string svg = ReadBytes(PathOf(L"plan.svg"));
  for (const char* expected : {"<svg", "Väg 943 Norrsjö", "24V012", "</svg>"})
    EXPECT_NE(svg.find(expected), std::string::npos) << expected;
}

TEST_F(AlignCommand, KilometresAndTheTableForPeople) {
  const Ran ran =
      RunVelmora({"align", "locate", Example("road.vl"), "--points", Example("borhal.csv"), "--km"});
  EXPECT_EQ(ran.status, 0) << ran.err;
  const std::vector<std::string> lines = Lines(ran.out);
  ASSERT_EQ(lines.size(), 14U) << ran.out;
  EXPECT_NE(lines[2].find("24V002"), std::string::npos);
  EXPECT_NE(lines[2].find("1/23"), std::string::npos) << lines[2];
  EXPECT_EQ(lines[13].substr(0, 10), "10 points:");
}

TEST_F(AlignCommand, SupportPointsAreShown) {
  const Ran ran = RunVelmora({"points", "show", Example("support.stp"), "--json"});
  ASSERT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(json::parse(ran.out).size(), 4U);
  ExpectRefused(RunVelmora({"points", "show", AsArgument(PathOf(L"none.stp"))}), "none.stp");
  ExpectRefused(RunVelmora({"points", "show", Example("road.vl")}), "road.vl:1: ");

  // A level that is none is not 0.
  const Ran damaged = RunVelmora(
      {"points", "show", Put(L"d.stp", "1\n2\n3\n4\n5\n6\n*\nA\n1O.5\n0\nB\n2.5\n0\n*\n"), "--json"});
  EXPECT_EQ(damaged.status, 1);
  EXPECT_NE(damaged.err.find("d.stp:9: "), std::string::npos) << damaged.err;
  EXPECT_TRUE(json::parse(damaged.out)[0]["level"].is_null()) << damaged.out;
  EXPECT_EQ(json::parse(damaged.out)[1]["level"], 2.5);
}

}  // namespace
}  // namespace velmora::testing
