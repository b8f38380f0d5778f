// The answers of alignments as recorded in recorded/*.txt. A file holds alignments and operations on them:
//
//   # a comment
//   tolerance 1e-9           of the answers that follow; 0, as at the start, is to the last bit
//   functions 1e-9 = ...     the same, but 0 where sines and arctangents are those of the system that
//   recorded alignment 1              a new one, of type 1, then its points x, y, bulge, station 0 0 0 0 0
//   100 0 100 Vag2xy 50 5 = 0 -5 50    the operation, its inputs, its result and its outputs
//
// An output that an operation leaves alone is -77. An operation without answers gets them when the
// file is recorded.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <sstream>

#include "tests/alignment/shapes.h"
#include "tests/support/recorded_file.h"
#include "velmora/alignment/measures.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

using Numbers = std::vector<double>;

// The result of an operation and its outputs.
Numbers AnswersOf(OpenLine& line, const std::string& operation, const Numbers& in) {
  double a = -77, b = -77, c = -77;
  const auto one = [&](int result) { return Numbers{static_cast<double>(result), a}; };
  const auto two = [&](int result) { return Numbers{static_cast<double>(result), a, b}; };
  const auto three = [&](int result) { return Numbers{static_cast<double>(result), a, b, c}; };
  const auto is = [&](std::string_view name) { return operation == name; };
  const auto mode = [&] { return static_cast<int>(in[2]); };

  if (is("Vag2xy")) return two(line.Vag2xy(in[0], in[1], &a, &b));
  if (is("Vagstv")) return two(line.Vagstv(in[0], in[1], &a, &b, mode()));
  if (is("PktIomr")) return two(line.PktIomr(in[0], in[1], &a, &b, mode()));
  if (is("RoundTrip")) {  // a station and an offset to the map and back
    double x = 0, y = 0;
    const int placed = line.Vag2xy(in[0], in[1], &x, &y);
    return two(placed + line.Vagstv(x, y, &a, &b, 0));
  }
  if (is("Pldist")) return two(line.Pldist(in[0], in[1], in[2], in[3], in[4], in[5], &a, &b));
  if (is("Padist")) {  // x, y and bulge of the arc's start, x and y of its end, x and y
    kovltype from{in[0], in[1], in[2], 0}, to{in[3], in[4], 0, 0};
    return two(line.Padist(&from, &to, in[5], in[6], &a, &b));
  }
  if (is("Circle")) {  // of the arc from a point with its bulge to another; horizontal comes first
    kokotype from{in[0], in[1], in[2]}, to{in[3], in[4], 0};
    return three(line.Bulge_r(&from, &to, &c, &a, &b, 1));
  }
  if (is("Bulge")) {  // of the arc between two points from its radius
    kokotype from{in[0], in[1], 0.5}, to{in[2], in[3], 0};
    double radius = in[4];
    const int result = line.Bulge_r(&from, &to, &radius, &a, &b, 0);
    c = from.bulge;
    return three(result);
  }
  if (is("Vagprofz")) return one(line.Vagprofz(in[0], &a));
  if (is("Extend")) return one(line.Extend(in[0], in[1]));
  if (is("SektBerak")) return one(line.SektBerak(in[0]));
  if (is("SektKorr")) return one(line.SektKorr(in[0], in[1], in[2]));
  if (is("Vagnu")) return three(line.Vagnu(&a, &b, &c));
  if (is("Reset")) return one(line.Reset());
  if (is("SetArea")) {
    line.omrSekMin = in[0], line.omrSekMax = in[1], line.omrAvstMin = in[2], line.omrAvstMax = in[3];
    return {};
  }
  if (is("Area")) return {line.omrSekMin, line.omrSekMax, line.omrAvstMin, line.omrAvstMax};
  if (is("Cursors")) {  // the indices of the current point and of the mark, and the position
    const std::vector<int> cursors = line.Cursors();
    return Numbers(cursors.begin(), cursors.end());
  }
  const std::vector<kovltype> points = line.Points();
  if (is("Points")) {
    Numbers all;
    for (const kovltype& p : points) all.insert(all.end(), {p.x, p.y, p.bulge, p.sek});
    return all;
  }
  if (is("Measure")) {
    const PlanMeasures m = MeasurePlan(points);
    Numbers all = {m.length, 1.0 * m.arcs, m.smallest_radius.value_or(-77), m.lowest_station};
    const auto& [low, high] = m.bounds;
    for (const double each : {m.highest_station, low.v, high.v, low.h, high.h}) all.push_back(each);
    all.push_back(FindStationErrors(points).greatest);
    return all;
  }
  if (is("OffEnd")) {  // of a map point, searched and known to be nearest to an end
    const PlanePoint p{in[1], in[0]};
    a = static_cast<double>(WhyNotFoundAtEnd(points, p));
    return one(static_cast<int>(WhyNotFound(points, p)));
  }
  if (is("Axes")) {  // the numbers of points near the alignment as they are and when swapped, and the verdict
    AxisCheck all(MeasurePlan(points).bounds);
    for (size_t i = 0; i < in.size(); i += 2) {
      AxisCheck check(MeasurePlan(points).bounds);
      check.Add(in[i], in[i + 1]);
      all.Add(check);
    }
    return {static_cast<double>(all.Near()), static_cast<double>(all.NearSwapped()),
            all.LooksSwapped() ? 1.0 : 0};
  }
  if (is("OffEndStation")) return one(static_cast<int>(WhyNotFound(points, in[0])));
  ADD_FAILURE() << "no operation " << operation;
  return {};
}

Numbers NumbersIn(const std::string& text) {
  Numbers numbers;
  std::istringstream words(text);
  double number = 0;
  for (std::string word; words >> word;)
    if (std::from_chars(word.data(), word.data() + word.size(), number).ec == std::errc())
      numbers.push_back(number);
  return numbers;
}

bool Agree(const Numbers& a, const Numbers& b, double tolerance) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](double x, double y) {
    return std::fabs(x - y) <= tolerance * std::max(1.0, std::fabs(x)) || x == y ||
           (std::isnan(x) && std::isnan(y));
  });
}

// The lines with the answers of this build where they differ.
std::string Replay(const testing::Lines& lines) {
  OpenLine line({});
  double tolerance = 0;
  std::string replayed;
  for (const std::string& text : lines) {
    const size_t end = std::min(text.find(" ="), text.size());
    const std::string question = text.substr(0, end);
    const std::string word = question.substr(0, question.find(' '));
    const Numbers in = NumbersIn(question);
    std::string answered = text.substr(end);
    if (word == "alignment") {
      line.Init(nullptr);
      line.typ = static_cast<int>(in[0]);
    } else if (word == "tolerance") {
      tolerance = in[0];
    } else if (in.size() == 4 && NumbersIn(word).size() == 1) {
      AddPoints(&line, {{in[0], in[1], in[2], in[3]}});
    } else if (!word.empty() && word != "#") {
      const Numbers answers = AnswersOf(line, word, in);
      if (!Agree(answers, NumbersIn(answered), tolerance)) {
        answered = " =";
        for (const double number : answers) answered += " " + FormatShortest(number);
      }
    }
    replayed += question + answered + "\n";
  }
  return replayed;
}

TEST(Recorded, AnswersAreAsRecorded) {
  for (const char* name : {"examples.txt", "round_trips.txt", "look_ups.txt"})
    testing::PlayRecorded(RecordedFile(name), [](const auto&, const auto& lines) { return Replay(lines); });
}

}  // namespace
}  // namespace velmora
