#include "velmora/exchange/wkt.h"

#include <array>
#include <charconv>
#include <cmath>

#include "velmora/exchange/arcs.h"
#include "velmora/exchange/blanks.h"
#include "velmora/exchange/curve_builder.h"
#include "velmora/text/numbers.h"

namespace velmora::exchange {
namespace {

void WritePoint(PlanePoint at, double station, bool measures, TextSink* out) {
  *out << at.h << " " << at.v;
  if (measures) *out << " " << station;
}

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

class Parser {
 public:
  explicit Parser(std::string_view text) : whole_(text), rest_(text) {}

  ParsedCurve Parse() {
    ParsedCurve curve;
    if (Word().starts_with("SRID")) {
      rest_ = whole_.substr(std::min(whole_.find(';'), whole_.size() - 1) + 1);
    } else {
      rest_ = whole_;
    }
    const bool good = Geometry(0) && (AtEnd() || Fail("text after the end of the curve"));
    if (!good) {
      curve.problem = problem_.empty() ? builder_.Problem() : problem_;
      return curve;
    }
    curve.has_stations = builder_.HasStations();
    curve.points = builder_.Take();
    return curve;
  }

 private:
  bool Fail(std::string_view what) {
    if (problem_.empty())
      problem_ = std::string(what) + " at character " + std::to_string(whole_.size() - rest_.size() + 1);
    return false;
  }

  void SkipBlanks() { rest_ = WithoutLeadingBlanks(rest_); }
  bool AtEnd() {
    SkipBlanks();
    return rest_.empty();
  }
  bool Take(char c) {
    SkipBlanks();
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  // In upper case.
  std::string Word() {
    constexpr size_t kLongestWord = 32;
    SkipBlanks();
    std::string word;
    while (!rest_.empty() && word.size() < kLongestWord) {
      const char c = Upper(rest_.front());
      if (c < 'A' || c > 'Z') break;
      word += c;
      rest_.remove_prefix(1);
    }
    return word;
  }

  // A tag with its dimensions, or a bare list inside a curve of parts.
  bool Geometry(int depth) {
    SkipBlanks();
    if (depth > 0 && rest_.starts_with('(')) return Points(false);
    std::string tag = Word();
    if (std::string dimensions = Word(); !dimensions.empty()) tag += dimensions;
    has_z_ = has_m_ = false;
    // "LINESTRINGZM" is written in one word too.
    if (tag.ends_with('M')) has_m_ = true, tag.pop_back();
    if (tag.ends_with('Z')) has_z_ = true, tag.pop_back();
    if (tag == "LINESTRING") return Points(false);
    if (tag == "CIRCULARSTRING") return Points(true);
    const bool is_multi = tag == "MULTILINESTRING" || tag == "MULTICURVE";
    if (depth > 1 || !(is_multi || tag == "COMPOUNDCURVE"))
      return Fail(tag.ends_with("EMPTY") ? "an empty geometry"
                                         : "no curve (LINESTRING, CIRCULARSTRING or COMPOUNDCURVE)");
    const bool z = has_z_;
    const bool m = has_m_;
    if (!Take('(')) return Fail("no \"(\"");
    do {
      has_z_ = z;
      has_m_ = m;
      if (!Geometry(depth + 1)) return false;
    } while (Take(','));
    return Take(')') || Fail("no \")\"");
  }

  bool Points(bool arcs) {
    if (!Take('(')) return Fail("no \"(\"");
    CurvePoint point;
    if (!Point(&point) || !builder_.Start(point)) return false;
    bool any = false;
    while (Take(',')) {
      any = true;
      if (!Point(&point)) return false;
      if (!arcs) {
        if (!builder_.LineTo(point)) return false;
        continue;
      }
      CurvePoint end;
      if (!Take(',')) return Fail("an arc without its end");
      if (!Point(&end) || !builder_.ArcTo(point, end)) return false;
    }
    if (!any) return Fail("a curve of one point");
    return Take(')') || Fail("no \")\"");
  }

  bool Point(CurvePoint* point) {
    std::array<double, 4> numbers{};
    const size_t count = 2U + (has_z_ ? 1 : 0) + (has_m_ ? 1 : 0);
    for (size_t i = 0; i < count; ++i) {
      SkipBlanks();
      const auto read = std::from_chars(rest_.data(), rest_.data() + rest_.size(), numbers[i]);
      if (read.ec != std::errc() || !std::isfinite(numbers[i])) return Fail("number expected");
      rest_.remove_prefix(static_cast<size_t>(read.ptr - rest_.data()));
    }
    double further = 0;
    if (!AtEnd() && std::from_chars(rest_.data(), rest_.data() + rest_.size(), further).ec == std::errc())
      return Fail("a point of more than " + std::to_string(count) +
                  " numbers (say Z, M or ZM behind the geometry's type)");
    point->at = {numbers[0], numbers[1]};
    if (has_m_) point->station = numbers[count - 1];
    return true;
  }

  std::string_view whole_;
  std::string_view rest_;
  std::string problem_;
  bool has_z_ = false;
  bool has_m_ = false;
  CurveBuilder builder_;
};

}  // namespace

void WriteCurve(std::span<const kovltype> points, bool measures, TextSink* out) {
  const auto put = [&](const kovltype& p) { WritePoint(InPlane(p), p.sek, measures, out); };
  const char* const arc_tag = measures ? "CIRCULARSTRING M (" : "CIRCULARSTRING (";
  *out << (measures ? "COMPOUNDCURVE M (" : "COMPOUNDCURVE (");
  bool in_arcs = false;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const kovltype& a = points[i];
    const kovltype& b = points[i + 1];
    const bool arc = HasArc(a, b);
    if (i == 0 || arc != in_arcs) {
      if (i > 0) *out << "), ";
      *out << (arc ? arc_tag : "(");
      put(a);
      in_arcs = arc;
    }
    if (arc) {
      *out << ", ";
      WritePoint(PointAlong(a, b, 0.5), (a.sek + b.sek) / 2, measures, out);
    }
    *out << ", ";
    put(b);
  }
  *out << "))";
}

ParsedCurve ParseCurve(std::string_view text) { return Parser(text).Parse(); }

ParsedCurve ParseProfile(std::string_view text) {
  ParsedCurve curve = ParseCurve(text);
  const size_t at = FirstNotAhead(curve.points);
  if (curve.problem.empty() && at < curve.points.size())
    curve.problem = "station " + FormatFixed(curve.points[at].y, 3) + " does not lie after the one before it";
  if (!curve.problem.empty()) curve.points.clear();
  return curve;
}

bool IsPointText(std::string_view text) {
  text = WithoutLeadingBlanks(text);
  constexpr std::string_view kPoint = "POINT";
  if (text.size() < kPoint.size()) return false;
  for (size_t i = 0; i < kPoint.size(); ++i)
    if (Upper(text[i]) != kPoint[i]) return false;
  return true;
}

}  // namespace velmora::exchange
