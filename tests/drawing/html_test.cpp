// The HTML report's text: what a browser is given, whatever the report holds.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <regex>
#include <string>

#include "velmora/drawing/html_report.h"

namespace velmora::drawing {
namespace {

size_t Count(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

// The page without what it says of itself: its style and its script.
std::string WithoutOwnCode(std::string page) {
  for (const std::string name : {"style", "script"})
    for (size_t at; (at = page.find("<" + name + ">")) != std::string::npos;)
      page.erase(at, page.find("</" + name + ">", at) - at);
  return page;
}

TEST(HtmlReport, NumbersThatAreNoneAreLeftOutAndCounted) {
  const double bad[] = {std::nan(""), INFINITY, -INFINITY, 1e300, std::numeric_limits<double>::max()};
  Report report;
  report.road.plan = {{0, 0, 0, 0}, {0, 100, INFINITY, 100}, {100, 100, 0, 200}};
  report.road.profile = {{1, 0, 0, 0}, {2, 200, 0, 200}};
  report.table.columns = {{"Id", "", -1}, {"Level", "m", 2}};
  for (const double number : bad) {
    report.road.plan.push_back({number, number, number, number});
    report.road.profile.push_back({number, number, number, number});
    report.road.borings.push_back({"B", number, 1, number, true, number, number});
    report.table.rows.push_back({std::string("B"), number});
  }
  const std::string page = WithoutOwnCode(HtmlReport(report, {}, {}));
  EXPECT_FALSE(std::regex_search(page, std::regex("\\b(nan|inf|-inf|[0-9]{16,})\\b", std::regex::icase)));
  EXPECT_EQ(Count(page, "5 numbers of the table"), 1U);
  EXPECT_EQ(Count(page, "5 borings without usable coordinates"), 1U);
  EXPECT_EQ(Count(page, "[\"B\",null,null,null,null,null,0]"), 5U);
}

TEST(HtmlReport, NoTextLeavesItsPlace) {
  const std::string text = "</script></noscript><!--\"'>&<svg width=\"1mm\" \x01\xFF\xE2\x80\xAE";
  Report report;
  report.road.name = report.road.file = report.date = report.author = text;
  report.road.borings.push_back({text, 1, 2, 3});
  report.table.columns = {{text, text, -1}};
  report.table.rows = {{text}};
  const std::string sheet = "<?xml version=\"1.0\"?>\n<svg width=\"297mm\" height=\"210mm\"></svg>\n";
  const std::string page = HtmlReport(report, {0, 0, 0, {text}}, std::vector{sheet, sheet});
  EXPECT_EQ(Count(page, "</script>"), 2U);
  EXPECT_EQ(Count(page, "</noscript>"), 4U);  // of the style, the table and the sheets
  EXPECT_EQ(Count(page, "<!--"), 0U);
  EXPECT_EQ(Count(page, "<?xml"), 0U);
  EXPECT_EQ(Count(page, "<svg width="), 2U);
  EXPECT_EQ(page.find_first_of("\x01\xFF\r"), std::string::npos);
  EXPECT_EQ(Count(page, "@page sheet0 { size: 842pt 595pt; margin: 0; }"), 1U);
}

}  // namespace
}  // namespace velmora::drawing
