// The snapshot beside the walk over the list, bit for bit, with each width of vectors that this machine has.
// VELMORA_LOCATOR_CASES sets the number of points.
#include "velmora/locator/locator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iomanip>
#include <limits>
#include <sstream>
#include <thread>
#include <utility>

#include "tests/alignment/shapes.h"
#include "velmora/alignment/geometry.h"
#include "velmora/locator/plan_search.h"
#include "velmora/platform/vector_lanes.h"

namespace velmora {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kUntouched = -77;

struct Answer {
  int result;
  double a = kUntouched;
  double b = kUntouched;

  bool operator==(const Answer& other) const {
    const auto same = [](double one, double two) {
      return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(two) ||
             (std::isnan(one) && std::isnan(two));
    };
    return result == other.result && same(a, other.a) && same(b, other.b);
  }
};

std::ostream& operator<<(std::ostream& out, const Answer& answer) {
  return out << answer.result << " (" << answer.a << ", " << answer.b << ")";
}

double AnyBulge(std::mt19937& random) {
  const double kBulges[] = {0, 1, -1, std::sqrt(2.0) - 1, 1 - std::sqrt(2.0), 1.0001e-6, -1e-5};
  const double kReaches[] = {0, 0.4, 3, 1e-3};
  const double reach = kReaches[random() % 4];
  return random() % 2 == 0 ? kBulges[random() % std::size(kBulges)] : Uniform(random, -reach, reach);
}

std::vector<kovltype> AnyLine(std::mt19937& random, size_t count) {
  const auto kind = random() % 8;
  const auto arcs = random() % 3;  // none, some, most
  const bool whole = random() % 3 == 0;
  const double step = std::pow(10.0, Uniform(random, -2.5, 3.5));
  const double distant = random() % 4 == 0 ? Uniform(random, 1e5, 8e6) : 0;
  double heading = Uniform(random, 0, 6.3);
  double x = distant, y = distant, station = Uniform(random, -1000, 1000);
  std::vector<kovltype> points;
  for (size_t i = 0; i < count; ++i) {
    points.push_back({x, y, random() % 3 < arcs ? AnyBulge(random) : 0.0, station});
    if (kind == 0) {  // anywhere: crosses itself over and over
      x = distant + Uniform(random, -5, 5) * step;
      y = distant + Uniform(random, -5, 5) * step;
    } else if (kind == 1) {  // a spiral
      const double turn = 0.2 * static_cast<double>(i + 1);
      x = distant + step * turn * std::sin(turn);
      y = distant + step * turn * std::cos(turn);
    } else if (kind == 2) {  // along the axes, back and forth
      (random() % 2 == 0 ? x : y) += step * static_cast<double>(static_cast<int>(random() % 5) - 2);
    } else {  // a road
      heading += kind == 3 ? 0 : Uniform(random, -0.3, 0.3) * static_cast<double>(kind - 3);
      const double length = random() % 20 == 0 ? Uniform(random, 0, 0.02) : step * Uniform(random, 0.1, 2);
      x += length * std::sin(heading);
      y += length * std::cos(heading);
    }
    if (whole) {
      x = std::round(x);
      y = std::round(y);
    }
    if (random() % 30 == 0) x = points.back().x, y = points.back().y;  // twice the same
    station += random() % 25 == 0 ? Uniform(random, -5, 5) : step;
  }
  if (random() % 4 == 0)
    for (kovltype& p : points) p.sek = -p.sek;
  if (random() % 12 == 0) {
    const double kOdd[] = {kNan, kInf, -kInf, 1e300, -1e160, 3e9, 1e12};
    kovltype& p = points[random() % count];
    double* const kFields[] = {&p.x, &p.y, &p.bulge, &p.sek};
    *kFields[random() % 4] = kOdd[random() % std::size(kOdd)];
  }
  return points;
}

PlanePoint AnyPlace(std::mt19937& random, const std::vector<kovltype>& points) {
  const size_t i = random() % points.size();
  const kovltype& a = points[i];
  const kovltype& b = points[std::min(i + 1, points.size() - 1)];
  const double size = std::hypot(b.x - a.x, b.y - a.y) + 1e-3;
  const double along = Uniform(random, -0.2, 1.2);
  const double away = Uniform(random, -1, 1) * size * std::pow(10.0, Uniform(random, -6, 1.5));
  PlanePoint p{a.y + along * (b.y - a.y) + away * (b.x - a.x) / size,
               a.x + along * (b.x - a.x) - away * (b.y - a.y) / size};
  switch (random() % 16) {
    case 0:
      return InPlane(a);
    case 1:
      return {std::round(p.h), std::round(p.v)};
    case 2:
    case 3: {  // beside an axis through the centre of an arc, near its circle
      const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
      const double from_axis = Uniform(random, -2e-5, 2e-5);
      const double out = (arc.radius + away) * (random() % 2 == 0 ? 1 : -1);
      return random() % 2 == 0 ? PlanePoint{arc.centre.h + from_axis, arc.centre.v + out}
                               : PlanePoint{arc.centre.h + out, arc.centre.v + from_axis};
    }
    case 4: {  // square to a segment's end
      const double end = 1e-4 * static_cast<double>(static_cast<int>(random() % 5) - 2);
      const double at = random() % 2 == 0 ? end : 1 + end;
      return {a.y + at * (b.y - a.y) + away * (b.x - a.x) / size,
              a.x + at * (b.x - a.x) - away * (b.y - a.y) / size};
    }
    case 5: {
      const double kOdd[] = {kNan, kInf, 1e300, -1e101, 1.05e9, -1.2e9, 1e7, -1e5};
      (random() % 2 == 0 ? p.h : p.v) = kOdd[random() % std::size(kOdd)];
      return p;
    }
    default:
      return p;
  }
}

struct Places {
  std::vector<double> x, y;

  Places(std::mt19937& random, const std::vector<kovltype>& points, size_t count) {
    while (x.size() < count) {
      const PlanePoint p = AnyPlace(random, points);
      x.push_back(p.v);
      y.push_back(p.h);
    }
  }
  // find(x, y, count, station, offset, result)
  template <class Find>
  std::vector<Answer> Batch(Find find) const {
    std::vector<double> a(x.size()), b(x.size());
    std::vector<int> result(x.size());
    find(x.data(), y.data(), x.size(), a.data(), b.data(), result.data());
    std::vector<Answer> answers;
    for (size_t i = 0; i < x.size(); ++i) answers.push_back({result[i], a[i], b[i]});
    return answers;
  }
  // line.Vagstv(x, y, station, offset, more...)
  template <class Line, class... More>
  std::vector<Answer> OneByOne(Line& line, More... more) const {
    std::vector<Answer> answers(x.size());
    for (size_t i = 0; i < x.size(); ++i)
      answers[i].result = line.Vagstv(x[i], y[i], &answers[i].a, &answers[i].b, more...);
    return answers;
  }
};

TEST(Locator, AnswersAsTheWalkDoes) {
  std::mt19937 random(20);
  std::vector<BatchRoutines> routines = {BaselineRoutines()};
  if (HasWideLanes()) routines.push_back(WideRoutines());
  const char* const wanted = std::getenv("VELMORA_LOCATOR_CASES");
  const size_t rounds = (wanted == nullptr ? 200000 : std::strtoull(wanted, nullptr, 10)) / 64;
  std::ptrdiff_t found = 0;
  for (size_t round = 0; round < rounds; ++round) {
    const std::vector<kovltype> points = AnyLine(random, 1 + random() % (random() % 8 == 0 ? 400 : 24));
    const Places places(random, points, 64);
    OpenLine line(points);
    const std::vector<Answer> walked = places.OneByOne(line, 0);
    found += std::count_if(walked.begin(), walked.end(), [](const Answer& a) { return a.result == 0; });
    for (const BatchRoutines& width : routines) {
      const PlanSearch search(points, CVaglinje::Seknoll, width);
      for (const bool known : {false, true}) {  // the second time the cells are computed
        const std::vector<Answer> located = places.Batch(std::bind_front(&PlanSearch::Find, &search));
        const auto [at, other] = std::mismatch(walked.begin(), walked.end(), located.begin());
        if (at == walked.end()) continue;
        std::ostringstream shown;
        shown << std::setprecision(17);
        for (const kovltype& p : points)
          shown << "{" << p.x << ", " << p.y << ", " << p.bulge << ", " << p.sek << "}, ";
        const auto i = static_cast<size_t>(at - walked.begin());
        shown << "at " << places.x[i] << ", " << places.y[i] << ": walked " << *at << ", located " << *other;
        FAIL() << "round " << round << ", " << &width - routines.data() << ", " << known << ": "
               << shown.str();
      }
    }
  }
  EXPECT_GT(found, static_cast<std::ptrdiff_t>(rounds * 32));
}

// A plan larger than the caches, searched in no order by two threads at once, which both compute the cells;
// and stations looked for among those that turn back.
TEST(Locator, LargeScatteredBatchesAnswerAsSinglePoints) {
  std::mt19937 random(3);
  std::vector<kovltype> points;
  for (int i = 0; i < 70000; ++i)
    points.push_back({1000.0 * (i / 1000) + Uniform(random, 0, 40), 30.0 * (i % 1000), i % 5 == 0 ? 0.1 : 0.0,
                      30.0 * i + Uniform(random, -20, 20)});
  const Locator together(points, 7), single(points, 7);
  const auto agrees = [&](unsigned seed) {
    std::mt19937 own(seed);
    const Places places(own, points, 20000);
    const auto batch = [&](const auto&... arguments) { together.Vagstv(arguments...); };
    return places.Batch(batch) == places.OneByOne(single);
  };
  bool other_agrees = false;
  std::thread other([&] { other_agrees = agrees(1); });
  EXPECT_TRUE(agrees(2));
  other.join();
  EXPECT_TRUE(other_agrees);

  points.resize(2000);
  for (const double sign : {1.0, -1.0}) {
    for (kovltype& p : points) p.sek *= sign;
    std::vector<kovltype> profile = points;
    for (kovltype& p : profile) p.y = p.sek;
    OpenLine plan(points), profile_line(profile);
    const Locator in_plan(plan), in_profile(profile_line);
    for (int i = 0; i < 2000; ++i) {
      double sek = points[random() % points.size()].sek + Uniform(random, -1, 1) * (i % 2 == 0 ? 1.5e-4 : 30);
      if (i % 100 == 0) sek = i % 200 == 0 ? kNan : kInf * sign;
      const auto answer = [sek](auto& in_plan, auto& in_profile) {
        Answer point{}, level{};
        point.result = in_plan.Vag2xy(sek, 3, &point.a, &point.b);
        level.result = in_profile.Vagprofz(sek, &level.a);
        return std::vector<Answer>{point, level};
      };
      EXPECT_EQ(answer(plan, profile_line), answer(in_plan, in_profile)) << sek;
    }
  }
}

TEST(Locator, TypesNumbersAndCursorsAreThoseOfTheLine) {
  OpenLine line({{0, 0, 0, 0}, {0, 100, 0, 100}, {-100, 100, 0, 200}});
  line.Home();
  line.Set_mark();
  line++;
  const std::vector<int> before = line.Cursors();
  const double no_station = std::exchange(CVaglinje::Seknoll, 5.0);
  for (const int typ : {0, 1, 10}) {
    line.typ = typ;
    const Locator locator(line);
    double a = kUntouched, b = kUntouched, z = kUntouched;
    EXPECT_EQ(locator.Vagstv(-5, 50, &a, &b), typ == 10 ? -1 : 0);
    EXPECT_EQ(locator.Vag2xy(1e6, 0, &a, &b), -1);
    EXPECT_TRUE(typ == 10 ? a == kUntouched && b == kUntouched : a == 999999.9 && b == 999999.9);
    EXPECT_EQ(locator.Vagprofz(50, &z), typ == 1 ? -1 : 0);
    EXPECT_TRUE(typ == 10 || (locator.Vagstv(50, -500, &a, &b) == -1 && a == 5.0 && b == 0));
  }
  CVaglinje::Seknoll = no_station;
  EXPECT_EQ(line.Cursors(), before);
  double a = 1, b = 2;
  EXPECT_TRUE(Locator({}, 1).Vagstv(0, 0, &a, &b) == -1 && a == CVaglinje::Seknoll && b == 0);
  EXPECT_EQ(Locator({}, 1).Vag2xy(0, 0, &a, &b), -1);
}

}  // namespace
}  // namespace velmora
