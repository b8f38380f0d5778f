#include <cmath>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "velmora/alignment/measures.h"
#include "velmora/alignment/station_text.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/landxml.h"
#include "velmora/text/codepage.h"
#include "velmora/text/utc_text.h"
#include "velmora/version.h"

namespace velmora::exchange {
namespace {

// Text between tags or in quotes. XML has no other control characters than these; bytes that are not UTF-8
// become U+FFFD.
std::string Escaped(std::string_view text) {
  std::string valid;
  if (!IsValidUtf8(text)) {
    valid = Utf8FromWide(WideFromUtf8(text));
    text = valid;
  }
  std::string escaped;
  for (const char c : text) {
    if (c == '&')
      escaped += "&amp;";
    else if (c == '<')
      escaped += "&lt;";
    else if (c == '>')
      escaped += "&gt;";
    else if (c == '"')
      escaped += "&quot;";
    else
      escaped += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return escaped;
}

void PutPoint(const char* name, PlanePoint at, TextSink* out) {
  *out << "<" << name << ">" << at.v << " " << at.h << "</" << name << ">";
}

void PutSegment(const kovltype& a, const kovltype& b, TextSink* out) {
  const double length = SegmentLength(a, b);
  const bool is_arc = !IsStraight(a.bulge) && Distance(InPlane(a), InPlane(b)) > 0;
  if (!is_arc) {
    *out << "<Line length=\"" << length << "\" staStart=\"" << a.sek << "\">";
    PutPoint("Start", InPlane(a), out);
    PutPoint("End", InPlane(b), out);
    *out << "</Line>\n";
    return;
  }
  const Arc arc = ArcFromBulge(InPlane(a), InPlane(b), a.bulge);
  *out << "<Curve rot=\"" << (a.bulge > 0 ? "ccw" : "cw") << "\" length=\"" << length << "\" radius=\""
       << arc.radius << "\" staStart=\"" << a.sek << "\">";
  PutPoint("Start", InPlane(a), out);
  PutPoint("Center", arc.centre, out);
  PutPoint("End", InPlane(b), out);
  *out << "</Curve>\n";
}

// Every point, and between the ends of an arc the point where its tangents meet: so the arc is the same
// whatever the grades beside it.
void PutProfile(const std::string& name, const std::vector<kovltype>& profile, TextSink* out) {
  *out << "<Profile name=\"" << name << "\">\n<ProfAlign name=\"" << name << "\">\n";
  for (size_t i = 0; i < profile.size(); ++i) {
    const kovltype& a = profile[i];
    *out << "<PVI>" << a.y << " " << a.x << "</PVI>\n";
    if (i + 1 == profile.size() || IsStraight(a.bulge)) continue;
    const kovltype& b = profile[i + 1];
    const PlanePoint from = InPlane(a);
    const PlanePoint to = InPlane(b);
    if (!(Distance(from, to) > 0)) continue;
    // The tangents meet beside the middle of the chord, at tan(sweep / 2) of half of it.
    const double sweep = 4 * std::atan(a.bulge);
    const double beside = std::tan(sweep / 2) / 2;
    const PlanePoint meet{(from.h + to.h) / 2 + beside * (to.v - from.v),
                          (from.v + to.v) / 2 - beside * (to.h - from.h)};
    const double radius = ArcFromBulge(from, to, a.bulge).radius;
    *out << "<CircCurve length=\"" << radius * std::fabs(sweep) << "\" radius=\"" << radius << "\">" << meet.h
         << " " << meet.v << "</CircCurve>\n";
  }
  *out << "</ProfAlign>\n</Profile>\n";
}

void PutProperty(const char* label, std::optional<double> value, TextSink* out) {
  if (value) *out << "<Property label=\"" << label << "\" value=\"" << *value << "\"/>";
}
void PutProperty(const std::string& label, const std::string& value, TextSink* out) {
  if (!value.empty()) *out << "<Property label=\"" << label << "\" value=\"" << value << "\"/>";
}

// Names of points, no two the same, as the schema has it.
class PointNames {
 public:
  // A name with a number behind it where it is taken.
  std::string Take(const std::string& name) {
    if (used_.insert(name).second) return name;
    ++renamed_;
    for (int& number = numbers_.try_emplace(name, 1).first->second;;) {
      std::string other = name + "_" + std::to_string(++number);
      if (used_.insert(other).second) return other;
    }
  }
  size_t Renamed() const { return renamed_; }

 private:
  std::unordered_set<std::string> used_;
  std::unordered_map<std::string, int> numbers_;  // behind the names that came again
  size_t renamed_ = 0;
};

// Points, each with a feature of its place. Returns how many got another name.
size_t PutPoints(const ExportInput& input, TextSink* out) {
  PointNames names;
  if (const std::vector<Tick> ticks = TicksAt(input.road.plan, input.stations); !ticks.empty()) {
    *out << "<CgPoints name=\"stations\">\n";
    for (const Tick& tick : ticks)
      *out << "<CgPoint name=\"" << names.Take(RoundStationText(tick.station, false)) << "\">" << tick.at.v
           << " " << tick.at.h << "</CgPoint>\n";
    *out << "</CgPoints>\n";
  }
  if (input.borings.points.empty()) return 0;
  const size_t before = names.Renamed();
  *out << "<CgPoints name=\"points\">\n";
  size_t number = 0;
  for (const LocatedPoint& point : input.borings.points) {
    *out << "<CgPoint";
    if (!point.id.empty()) *out << " name=\"" << names.Take(Escaped(point.id)) << "\"";
    *out << " featureRef=\"place" << std::to_string(++number) << "\">" << point.northing << " "
         << point.easting;
    if (point.level) *out << " " << *point.level;
    *out << "</CgPoint>\n";
  }
  number = 0;
  for (const LocatedPoint& point : input.borings.points) {
    *out << "<Feature name=\"place" << std::to_string(++number) << "\" code=\"place\">";
    PutProperty("station", point.station, out);
    PutProperty("offset", point.offset, out);
    if (point.offset) PutProperty("side", std::string(OffsetSide(*point.offset)), out);
    PutProperty("profile_level", point.profile_level, out);
    if (point.level && point.profile_level)
      PutProperty("difference", *point.level - *point.profile_level, out);
    PutProperty("status", Escaped(point.status), out);
    for (size_t i = 0; i < point.own.size() && i < input.borings.own_titles.size(); ++i)
      PutProperty(Escaped(input.borings.own_titles[i]), Escaped(point.own[i]), out);
    *out << "</Feature>\n";
  }
  *out << "</CgPoints>\n";
  return names.Renamed() - before;
}

}  // namespace

std::string WriteLandXml(const ExportInput& input, const Sink& sink) {
  TextSink out(sink);
  const std::vector<kovltype>& plan = input.road.plan;
  const std::string name = Escaped(input.road.name);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<LandXML xmlns=\"http://www.landxml.org/schema/LandXML-1.2\" "
         "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
         "xsi:schemaLocation=\"http://www.landxml.org/schema/LandXML-1.2 "
         "http://www.landxml.org/schema/LandXML-1.2/LandXML-1.2.xsd\" version=\"1.2\" date=\""
      << UtcDate(input.created) << "\" time=\"" << UtcTime(input.created)
      << "\" readOnly=\"false\">\n"
         "<Units><Metric areaUnit=\"squareMeter\" linearUnit=\"meter\" volumeUnit=\"cubicMeter\" "
         "temperatureUnit=\"celsius\" pressureUnit=\"milliBars\" angularUnit=\"radians\" "
         "directionUnit=\"radians\"/></Units>\n";
  if (input.srs > 0) out << "<CoordinateSystem epsgCode=\"" << std::to_string(input.srs) << "\"/>\n";
  out << "<Project name=\"" << name << "\"/>\n<Application name=\"velmora\" version=\"" << VersionText()
      << "\"/>\n<Alignments>\n<Alignment name=\"" << name << "\" length=\"" << MeasurePlan(plan).length
      << "\" staStart=\"" << plan.front().sek << "\">\n<CoordGeom>\n";
  for (size_t i = 0; i + 1 < plan.size(); ++i) PutSegment(plan[i], plan[i + 1], &out);
  out << "</CoordGeom>\n";
  if (input.road.profile.size() >= 2) PutProfile(name, input.road.profile, &out);
  out << "<Feature code=\"velmora\"><Property label=\"staEnd\" value=\"" << plan.back().sek
      << "\"/></Feature>\n</Alignment>\n</Alignments>\n";
  const size_t renamed = PutPoints(input, &out);
  out << "</LandXML>\n";
  out.Flush();
  if (renamed == 0) return {};
  return std::to_string(renamed) + (renamed == 1 ? " point has an id that is" : " points have ids that are") +
         " taken and got _2, _3, ... behind it, because names of CgPoints are unique";
}

}  // namespace velmora::exchange
