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

#include "tests/locator/any_line.h"
#include "velmora/locator/plan_search.h"
#include "velmora/platform/vector_lanes.h"

namespace velmora {
namespace {

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
    const size_t most = round % 64 == 0 ? 1200 : round % 8 == 0 ? 400 : 24;
    const std::vector<kovltype> points = AnyLine(random, 1 + random() % most);
    const Places places(random, points, 64);
    OpenLine line(points);
    const std::vector<Answer> walked = places.OneByOne(line, 0);
    found += std::count_if(walked.begin(), walked.end(), [](const Answer& a) { return a.result == 0; });
    for (const BatchRoutines& width : routines) {
      const PlanSearch search(PlanSnapshot(points, CVaglinje::Seknoll), width);
      // First without cells, then they are computed, then known.
      for (size_t time = 0; time < points.size() / 64 + 3; ++time) {
        const std::vector<Answer> located = places.Batch(std::bind_front(&PlanSearch::Find, &search));
        const auto [at, other] = std::mismatch(walked.begin(), walked.end(), located.begin());
        if (at == walked.end()) continue;
        std::ostringstream shown;
        shown << std::setprecision(17);
        for (const kovltype& p : points)
          shown << "{" << p.x << ", " << p.y << ", " << p.bulge << ", " << p.sek << "}, ";
        const auto i = static_cast<size_t>(at - walked.begin());
        shown << "at " << places.x[i] << ", " << places.y[i] << ": walked " << *at << ", located " << *other;
        FAIL() << "round " << round << ", " << &width - routines.data() << ", " << time << ": "
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
