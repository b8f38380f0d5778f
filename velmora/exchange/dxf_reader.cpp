#include <algorithm>
#include <utility>

#include "velmora/exchange/chains.h"
#include "velmora/exchange/dxf.h"
#include "velmora/exchange/dxf_entity.h"
#include "velmora/exchange/dxf_groups.h"
#include "velmora/exchange/dxf_text.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/road_names.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/quoted.h"

namespace velmora::exchange {
namespace {

// So that no file takes more than about a gigabyte.
constexpr size_t kMostPoints = 10'000'000;
constexpr size_t kMostPieces = 2'000'000;
constexpr size_t kMostCandidates = 100'000;

constexpr int kClosed = 1;  // flags of polylines
constexpr int kSplineFit = 4;
constexpr int kNotPlane = 8 | 16 | 64;  // in space, or a mesh

std::string UnitName(int code) {
  constexpr std::pair<int, const char*> kUnits[] = {
      {0, "no unit"},     {1, "inches"},     {2, "feet"},        {4, "millimetres"},
      {5, "centimetres"}, {7, "kilometres"}, {14, "decimetres"}, {21, "US survey feet"}};
  for (const auto& [unit, name] : kUnits)
    if (unit == code) return name;
  return "another unit";
}

// Where a road came from.
struct Origin {
  std::string handle;
  std::string layer;
  std::int64_t line = 0;
};

Origin OriginOf(const DxfEntity& entity) { return {entity.handle, entity.layer, entity.line}; }

// Two ends that join become their middle; *error is the largest distance that one moves.
std::vector<kovltype> PointsOf(const Chain& chain, const std::vector<Piece>& pieces, double* error) {
  std::vector<kovltype> points;
  PlanePoint end{};
  for (const Chain::Link& link : chain.links) {
    Piece piece = pieces[link.piece];
    if (link.reversed) piece = {piece.to, piece.from, 0 - piece.bulge};
    PlanePoint start = piece.from;
    if (!points.empty()) {
      start = {(end.h + start.h) / 2, (end.v + start.v) / 2};
      *error = std::max(*error, Distance(start, end));
    }
    points.push_back({start.v, start.h, piece.bulge, 0});
    end = piece.to;
  }
  points.push_back({end.v, end.h, 0, 0});
  return points;
}

class Reader {
 public:
  Reader(const Source& source, const ImportOptions& options)
      : groups_(source), options_(options), layer_(WideFromUtf8(options.layer)) {}

  std::vector<ImportedRoad> Read(Finding* problem) {
    DxfGroup group;
    bool ended = false;
    while (problem_.text.empty() && !ended && groups_.Next(&group)) {
      ended = group.code == 0 && group.value == "EOF";
      Take(group);
    }
    if (problem_.text.empty()) problem_ = groups_.Error();
    if (problem_.text.empty() && !ended) problem_.text = "the file ends without EOF: it is incomplete";
    FinishPolyline();
    if (problem_.text.empty()) AddChains();
    if (problem_.text.empty() && candidates_.empty() && !layer_.empty())
      problem_.text = "has no lines on a layer " + Quoted(options_.layer);
    *problem = problem_;
    return problem_.text.empty() ? Roads() : std::vector<ImportedRoad>();
  }

 private:
  enum class Section { kBegun, kHeader, kEntities, kOther };
  struct Candidate {
    Origin origin;
    ImportedRoad road;
  };

  void Take(const DxfGroup& group) {
    if (group.code == 0) {
      if (entity_) Finish();
      entity_.reset();
      if (group.value == "SECTION") {
        section_ = Section::kBegun;
      } else if (group.value == "ENDSEC") {
        section_ = Section::kOther;
      } else if (section_ == Section::kEntities) {
        entity_.emplace(group.value, group.line);
      }
    } else if (section_ == Section::kBegun && group.code == 2) {
      section_ = group.value == "HEADER"     ? Section::kHeader
                 : group.value == "ENTITIES" ? Section::kEntities
                                             : Section::kOther;
    } else if (section_ == Section::kHeader) {
      TakeHeader(group);
    } else if (entity_) {
      if (!entity_->Take(group)) problem_ = {group.line, Quoted(group.value) + " is not a number"};
      Keep(0, entity_->points.size());
    }
  }

  void TakeHeader(const DxfGroup& group) {
    if (group.code == 9) {
      variable_ = group.value;
    } else if (variable_ == "$ACADVER") {
      is_unicode_ = group.value >= "AC1021";
    } else if (variable_ == "$DWGCODEPAGE") {
      has_code_page_ = true;
    } else if (variable_ == "$INSUNITS") {
      TakeUnits(ParseDxfInteger(group.value).value_or(0), group.line);
    }
  }

  void TakeUnits(int code, std::int64_t line) {
    constexpr int kFeet = 2;
    constexpr int kMetres = 6;
    constexpr int kSurveyFeet = 21;
    if (code == kMetres) return;
    const bool feet = code == kFeet || code == kSurveyFeet;
    if (feet && !options_.metres_per_foot) {
      problem_ = {line,
                  "the drawing is in " + UnitName(code) + "; give --feet international or --feet survey"};
      return;
    }
    if (feet) scale_ = *options_.metres_per_foot;
    units_ = {line, "$INSUNITS is " + std::to_string(code) + ", " + UnitName(code) +
                        ": coordinates are taken as " + (feet ? "feet" : "metres")};
  }

  // Counts points that are kept, while so many others are being read.
  void Keep(size_t points, size_t others = 0) {
    points_ += points;
    if (points_ + others > kMostPoints || pieces_.size() > kMostPieces ||
        candidates_.size() > kMostCandidates)
      problem_.text = "the drawing is too large; give the road's --layer";
  }

  std::string Text(std::string_view bytes) const {
    return DecodeDxfText(bytes,
                         is_unicode_ || !has_code_page_ ? TextEncoding::kUtf8 : TextEncoding::kWindows1252);
  }
  bool IsWanted(const DxfEntity& entity) const {
    return !entity.in_paper_space &&
           (layer_.empty() || EqualNoCase(WideFromUtf8(Text(entity.layer)), layer_));
  }

  // The current entity is complete.
  void Finish() {
    if (entity_->kind != DxfKind::kVertex) FinishPolyline();
    switch (entity_->kind) {
      case DxfKind::kLine:
      case DxfKind::kArc:
        if (IsWanted(*entity_)) AddPiece(*entity_);
        break;
      case DxfKind::kPolyline:
        stations_ = 0;
        if (IsWanted(*entity_)) polyline_ = std::move(entity_);
        break;
      case DxfKind::kVertex:
        if (polyline_) AddVertex(*entity_);
        break;
      case DxfKind::kLightPolyline:
        stations_ = 0;
        if (IsWanted(*entity_)) AddPolyline(&*entity_);
        break;
      case DxfKind::kCurve:
        if (IsWanted(*entity_)) RefuseEntity(*entity_, "is not made of straight lines and arcs");
        break;
      case DxfKind::kOther:
        break;
    }
  }

  void FinishPolyline() {
    if (polyline_) AddPolyline(&*polyline_);
    polyline_.reset();
  }

  void AddVertex(const DxfEntity& vertex) {
    if (const std::string missing = vertex.Missing(); !missing.empty()) {
      RefuseEntity(vertex, "has no " + missing);
      return polyline_.reset();
    }
    polyline_->points.push_back({vertex.at.v, vertex.at.h, vertex.bulge, vertex.station.value_or(0)});
    if (vertex.station) ++stations_;
    Keep(0, polyline_->points.size());
  }

  void AddPiece(const DxfEntity& entity) {
    if (entity.station) return;  // a tick of an exported road
    if (const std::string missing = entity.Missing(); !missing.empty())
      return RefuseEntity(entity, "has no " + missing);
    if (entity.kind == DxfKind::kArc && !IsPlane(entity)) return RefuseEntity(entity, "is not in the plan");
    std::optional<Piece> piece = PieceOf(entity);
    if (!piece) return RefuseEntity(entity, "is a full circle");
    for (PlanePoint* end : {&piece->from, &piece->to}) *end = {end->h * scale_, end->v * scale_};
    // Shorter ones are gaps between their neighbours.
    if (piece->bulge == 0 && Distance(piece->from, piece->to) <= kJoinDistance) return;
    pieces_.push_back(*piece);
    origins_.push_back(OriginOf(entity));
    Keep(1);
  }

  void AddPolyline(DxfEntity* polyline) {
    const bool heavy = polyline->kind == DxfKind::kPolyline;
    if ((polyline->flags & kClosed) != 0) return RefuseEntity(*polyline, "is closed");
    if (!IsPlane(*polyline) || (heavy && (polyline->flags & kNotPlane) != 0))
      return RefuseEntity(*polyline, "is not a line in the plan");
    if (heavy && (polyline->flags & kSplineFit) != 0) return RefuseEntity(*polyline, "is fitted as a spline");
    if (polyline->points.size() < 2) return RefuseEntity(*polyline, "has fewer than two points");
    if (const std::string missing = polyline->Missing(); !missing.empty())
      return RefuseEntity(*polyline, "has a point without " + missing);
    ImportedRoad& road = AddRoad(OriginOf(*polyline));
    if (polyline->name) road.road.name = Text(*polyline->name);
    road.has_stations = stations_ == polyline->points.size();
    if (stations_ > 0 && !road.has_stations)
      Note(polyline->line, "has stations at some vertices only: they are ignored", &road);
    const double side = IsSeenFromBelow(*polyline) ? -1 : 1;
    for (kovltype& point : polyline->points)
      point = {point.x * scale_, point.y * scale_ * side, point.bulge * side + 0.0,
               road.has_stations ? point.sek : 0};
    road.road.plan = std::move(polyline->points);
    Keep(road.road.plan.size());
  }

  void AddChains() {
    for (const Chain& chain : JoinPieces(pieces_)) {
      size_t first = chain.links.front().piece;
      for (const Chain::Link& link : chain.links) first = std::min(first, link.piece);
      ImportedRoad& road = AddRoad(origins_[first]);
      if (!chain.closed) {
        road.road.plan = PointsOf(chain, pieces_, &road.largest_error);
        continue;
      }
      Refuse(origins_[first].line, "the chain of lines and arcs that begins here is closed", &road);
    }
  }

  ImportedRoad& AddRoad(Origin origin) {
    candidates_.push_back({std::move(origin), {}});
    Keep(0);
    ImportedRoad& road = candidates_.back().road;
    road.road.name = Text(candidates_.back().origin.layer);
    return road;
  }

  void RefuseEntity(const DxfEntity& entity, const std::string& why) {
    const std::string handle = entity.handle.empty() ? "" : " with handle " + Quoted(entity.handle);
    Refuse(entity.line, entity.type + handle + " " + why, &AddRoad(OriginOf(entity)));
  }

  // In the order of the file.
  std::vector<ImportedRoad> Roads() {
    std::stable_sort(candidates_.begin(), candidates_.end(),
                     [](const Candidate& a, const Candidate& b) { return a.origin.line < b.origin.line; });
    std::vector<ImportedRoad> roads;
    std::vector<std::string> suffixes;
    for (Candidate& candidate : candidates_) {
      const auto& [handle, layer, line] = candidate.origin;
      suffixes.push_back(handle.empty() ? " line " + std::to_string(line) : " #" + Text(handle));
      if (!units_.text.empty()) Note(units_.line, units_.text, &candidate.road);
      roads.push_back(std::move(candidate.road));
    }
    MakeNamesUnique(suffixes, &roads);
    return roads;
  }

  DxfGroups groups_;
  const ImportOptions& options_;
  std::wstring layer_;

  Section section_ = Section::kOther;
  std::string variable_;     // of the header
  bool is_unicode_ = false;  // the release writes UTF-8
  bool has_code_page_ = false;
  double scale_ = 1;  // m

  std::optional<DxfEntity> entity_;
  std::optional<DxfEntity> polyline_;  // whose vertices are being read
  size_t stations_ = 0;                // of its vertices
  std::vector<Piece> pieces_;
  std::vector<Origin> origins_;  // of the pieces
  std::vector<Candidate> candidates_;
  size_t points_ = 0;
  Finding units_;  // of the drawing; empty when it is in metres
  Finding problem_;
};

}  // namespace

std::vector<ImportedRoad> ReadDxf(const Source& source, const ImportOptions& options, Finding* problem) {
  return Reader(source, options).Read(problem);
}

}  // namespace velmora::exchange
