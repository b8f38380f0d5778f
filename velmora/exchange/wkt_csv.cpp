#include "velmora/exchange/wkt_csv.h"

#include <optional>

#include "velmora/alignment/station_text.h"
#include "velmora/exchange/arcs.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/road_names.h"
#include "velmora/exchange/wkt.h"
#include "velmora/text/codepage.h"

namespace velmora::exchange {
namespace {

// --- writing

void PutField(std::string_view text, TextSink* out) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    *out << text;
    return;
  }
  *out << "\"";
  for (size_t at; (at = text.find('"')) != std::string_view::npos; text.remove_prefix(at + 1))
    *out << text.substr(0, at + 1) << "\"";
  *out << text << "\"";
}

void PutNumber(std::optional<double> value, TextSink* out) {
  *out << ",";
  if (value) *out << *value;
}

void PutPoint(PlanePoint at, std::optional<double> station, TextSink* out) {
  *out << (station ? "POINT M (" : "POINT (") << at.h << " " << at.v;
  if (station) *out << " " << *station;
  *out << ")";
}

// --- reading

constexpr size_t kMostRowFields = 10'000;  // of a row; further ones are dropped

// Rows with quoted fields, which may hold line ends.
class CsvRows {
 public:
  explicit CsvRows(std::string_view text) : rest_(text) {
    const std::string_view first = text.substr(0, text.find('\n'));
    separator_ = first.find('\t') != std::string_view::npos  ? '\t'
                 : first.find(';') != std::string_view::npos ? ';'
                                                             : ',';
  }
  // False at the end.
  bool Next(std::vector<std::string>* fields) {
    if (rest_.empty()) return false;
    line_ = next_line_;
    fields->clear();
    std::string dropped;
    for (bool more = true; more;) {
      const bool kept = fields->size() < kMostRowFields;
      if (kept) fields->emplace_back();
      dropped.clear();
      more = Field(kept ? &fields->back() : &dropped);
    }
    return true;
  }
  std::int64_t Line() const { return line_; }

 private:
  // Whether another field follows in the row.
  bool Field(std::string* field) {
    bool quoted = false;
    size_t i = 0;
    for (; i < rest_.size(); ++i) {
      const char c = rest_[i];
      if (c == '\n') ++next_line_;
      if (quoted && c == '"' && i + 1 < rest_.size() && rest_[i + 1] == '"') {
        *field += c;
        ++i;
      } else if (c == '"' && (quoted || field->empty())) {
        quoted = !quoted;
      } else if (!quoted && (c == separator_ || c == '\n')) {
        break;
      } else {
        *field += c;
      }
    }
    const bool more = i < rest_.size() && rest_[i] == separator_;
    rest_.remove_prefix(std::min(i + 1, rest_.size()));
    if (!more && field->ends_with('\r')) field->pop_back();
    return more;
  }

  std::string_view rest_;
  char separator_;
  std::int64_t line_ = 0;
  std::int64_t next_line_ = 1;
};

std::string Lower(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  return text;
}

std::optional<size_t> Find(const std::vector<std::string>& titles, std::initializer_list<const char*> names) {
  for (const char* name : names)
    for (size_t i = 0; i < titles.size(); ++i)
      if (Lower(titles[i]) == name) return i;
  return std::nullopt;
}

ImportedRoad RoadOf(std::int64_t line, std::string name, std::string_view wkt, std::string_view profile) {
  ImportedRoad road;
  road.road.name = std::move(name);
  ParsedCurve plan = ParseCurve(wkt);
  road.road.plan = std::move(plan.points);
  road.has_stations = plan.has_stations;
  if (!plan.problem.empty()) Refuse(line, "wkt: " + plan.problem, &road);
  if (profile.empty()) return road;
  ParsedCurve levels = ParseProfile(profile);
  road.road.profile = std::move(levels.points);
  if (!levels.problem.empty()) Refuse(line, "profile: " + levels.problem, &road);
  return road;
}

}  // namespace

void WriteWktCsv(const ExportInput& input, const Sink& sink) {
  TextSink out(sink);
  const LocatedPoints& borings = input.borings;
  const bool with_borings = !borings.points.empty();
  size_t empty = 0;
  out << "kind,name,wkt,profile";
  if (with_borings) {
    out << ",northing,easting,station,offset,side,profile_level,level,difference,status";
    empty = 9 + borings.own_titles.size();
    for (const std::string& title : borings.own_titles) {
      out << ",";
      PutField(title, &out);
    }
  }
  const auto end_row = [&] { out << std::string(empty, ',') << "\r\n"; };
  out << "\r\nroad,";
  PutField(input.road.name, &out);
  out << ",\"";
  WriteCurve(input.road.plan, true, &out);
  out << "\",";
  if (input.road.profile.size() >= 2) {
    out << "\"";
    WriteCurve(input.road.profile, false, &out);
    out << "\"";
  }
  end_row();
  for (const Tick& tick : TicksAt(input.road.plan, input.stations)) {
    out << "station," << RoundStationText(tick.station, false) << ",";
    PutPoint(tick.at, tick.station, &out);
    out << ",";
    end_row();
  }
  for (const LocatedPoint& boring : borings.points) {
    out << "boring,";
    PutField(boring.id, &out);
    out << ",";
    PutPoint({boring.easting, boring.northing}, boring.station, &out);
    out << ",";
    PutNumber(boring.northing, &out);
    PutNumber(boring.easting, &out);
    PutNumber(boring.station, &out);
    PutNumber(boring.offset, &out);
    out << "," << (boring.offset ? OffsetSide(*boring.offset) : "");
    PutNumber(boring.profile_level, &out);
    PutNumber(boring.level, &out);
    std::optional<double> difference;
    if (boring.level && boring.profile_level) difference = *boring.level - *boring.profile_level;
    PutNumber(difference, &out);
    out << "," << boring.status;
    for (size_t i = 0; i < borings.own_titles.size(); ++i) {
      out << ",";
      if (i < boring.own.size()) PutField(boring.own[i], &out);
    }
    out << "\r\n";
  }
  out.Flush();
}

std::vector<ImportedRoad> ReadWktCsv(std::string_view bytes, std::string* problem) {
  const bool utf8 = IsValidUtf8(bytes);
  if (const std::string_view mark = ByteOrderMark(TextEncoding::kUtf8); bytes.starts_with(mark))
    bytes.remove_prefix(mark.size());
  CsvRows rows(bytes);
  std::vector<std::string> fields;
  std::vector<ImportedRoad> roads;
  std::optional<size_t> wkt;
  if (rows.Next(&fields)) wkt = Find(fields, {"wkt", "geometry", "geom", "the_geom"});
  if (!wkt) {
    *problem = "has no column \"wkt\" in its first row";
    return roads;
  }
  const std::optional<size_t> name = Find(fields, {"name", "namn", "id"});
  const std::optional<size_t> profile = Find(fields, {"profile"});
  const auto field = [&](std::optional<size_t> column) {
    return column && *column < fields.size() ? fields[*column] : std::string();
  };
  const size_t titles = fields.size();
  std::vector<std::string> suffixes;
  while (rows.Next(&fields)) {
    const std::string text = field(wkt);
    if (text.find_first_not_of(" \t\r") == std::string::npos || IsPointText(text)) continue;
    if (roads.size() == kMostRoads) {
      *problem = kTooManyRoads;
      return {};
    }
    std::string called = field(name);
    if (!utf8) {
      std::wstring wide;
      AppendDecoded(called, TextEncoding::kWindows1252, &wide);
      called = Utf8FromWide(wide);
    }
    ImportedRoad& road = roads.emplace_back(RoadOf(rows.Line(), std::move(called), text, field(profile)));
    suffixes.push_back(" line " + std::to_string(rows.Line()));
    if (road.refused && fields.size() > titles) {
      road.findings.resize(1);
      Refuse(rows.Line(),
             "has " + std::to_string(fields.size()) + " fields, but the first row has " +
                 std::to_string(titles) + "; a field with the separator in it needs quotes",
             &road);
    }
  }
  MakeNamesUnique(suffixes, &roads);
  return roads;
}

}  // namespace velmora::exchange
