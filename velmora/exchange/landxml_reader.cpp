#include <algorithm>
#include <charconv>
#include <deque>
#include <unordered_map>
#include <utility>

#include "velmora/exchange/blanks.h"
#include "velmora/exchange/import.h"
#include "velmora/exchange/landxml.h"
#include "velmora/exchange/landxml_elements.h"
#include "velmora/exchange/road_names.h"
#include "velmora/text/plain_number.h"
#include "velmora/text/quoted.h"

namespace velmora::exchange {
namespace {

constexpr size_t kMostElements = 2'000'000;  // of all alignments, with the points of lists
constexpr size_t kLongestText = size_t{16} << 20;

// What is read, as far as it matters here.
enum class Nesting : std::uint8_t {
  kFile,
  kRoot,
  kUnits,
  kAlignments,
  kAlignment,
  kCoordGeom,
  kElement,
  kChain,
  kPoint,
  kPointList2,
  kPointList3,
  kProfile,
  kProfAlign,
  kLevel,
  kFeature,
};

// The words of a text.
template <class Take>
void ForEachWord(std::string_view text, Take take) {
  for (size_t at = 0;;) {
    while (at < text.size() && IsBlank(text[at])) ++at;
    if (at == text.size()) return;
    size_t end = at;
    while (end < text.size() && !IsBlank(text[end])) ++end;
    take(text.substr(at, end - at));
    at = end;
  }
}

// Not given for what is not a number, blanks around it apart; infinite for INF.
double NumberOf(std::string_view text) {
  double number = 0;
  text = WithoutLeadingBlanks(text);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  if (ReadPlainNumber(text, '.', '.', &number)) return number;
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : kNotGiven;
}
double CoordinateOf(std::string_view text) {
  const double number = NumberOf(text);
  return std::fabs(number) <= kFarthest ? number : kNotGiven;
}
std::string TextOf(XmlAttributes attributes, std::string_view name) {
  return std::string(FindAttribute(attributes, name).value_or(""));
}

double RadiansOf(std::string_view unit) {
  const double degree = std::acos(-1.0) / 180;
  if (unit == "grads") return degree * 0.9;
  if (unit == "decimal degrees") return degree;
  return unit.empty() || unit == "radians" ? 1 : 0;
}

// A point that others refer to.
struct Reference {
  const std::string* name = nullptr;
  LandPoint point;
  std::int64_t line = 0;        // of the CgPoint
  std::int64_t other_line = 0;  // of another one with the same name and another place
};

// The names of points that points refer to, and their places.
struct References {
  std::unordered_map<std::string, int> numbers;
  std::vector<Reference> points;

  int Number(std::string name) {
    const auto [at, added] = numbers.emplace(std::move(name), static_cast<int>(points.size()));
    if (added) points.emplace_back().name = &at->first;
    return at->second;
  }
};

class AlignmentsHandler final : public XmlHandler {
 public:
  bool Start(std::string_view name, XmlAttributes attributes, std::int64_t line) override {
    const std::optional<Nesting> place = Enter(name, attributes, line);
    if (place) places_.push_back(*place);
    return place.has_value();
  }
  void Text(std::string_view text) override {
    const Nesting place = places_.back();
    const bool wanted = place == Nesting::kPoint || place == Nesting::kLevel || place == Nesting::kChain ||
                        place == Nesting::kPointList2 || place == Nesting::kPointList3;
    if (wanted && text_.size() + text.size() <= kLongestText) text_ += text;
  }
  void End(std::string_view) override {
    Leave(places_.back());
    places_.pop_back();
    text_.clear();
  }

  bool IsLandXml() const { return is_land_xml_; }
  bool TooManyAlignments() const { return too_many_; }
  LandUnits& Units() { return units_; }
  References& Points() { return references_; }
  std::deque<LandAlignment>& Alignments() { return alignments_; }

 private:
  LandAlignment& Current() { return alignments_.back(); }
  LandElement& Element() { return Current().elements.back(); }

  enum class Use : std::uint8_t { kNeeded, kRadius, kChecked };  // a radius may be infinite

  // An attribute of the element `title`; what is not a number is refused, or reported where it would only be
  // checked.
  double Number(XmlAttributes attributes, const char* name, const char* title, std::int64_t line, Use use) {
    const std::optional<std::string_view> given = FindAttribute(attributes, name);
    if (!given) return kNotGiven;
    const std::string_view text = *given;
    const double number = NumberOf(text);
    if (std::fabs(number) <= kFarthest || (use == Use::kRadius && std::isinf(number))) return number;
    if (std::all_of(text.begin(), text.end(), IsBlank)) return kNotGiven;
    const std::string problem = std::string(title) + ": " + name + " " + Quoted(text) +
                                (IsGiven(number) ? " is too large" : " is not a number");
    if (use == Use::kChecked)
      Note(line, problem + " and is not checked", &Current().road);
    else
      Refuse(line, problem, &Current().road);
    return kNotGiven;
  }

  // Where an element leads; nothing for one that is not read.
  std::optional<Nesting> Enter(std::string_view name, XmlAttributes attributes, std::int64_t line) {
    switch (places_.empty() ? Nesting::kFile : places_.back()) {
      case Nesting::kFile:
        is_land_xml_ = name == "LandXML";
        if (is_land_xml_) return Nesting::kRoot;
        break;
      case Nesting::kRoot:
        if (name == "Units") return Nesting::kUnits;
        if (name == "Alignments") return Nesting::kAlignments;
        break;
      case Nesting::kUnits:
        units_ = {line, TextOf(attributes, "linearUnit"), RadiansOf(TextOf(attributes, "directionUnit")),
                  RadiansOf(TextOf(attributes, "angularUnit"))};
        break;
      case Nesting::kAlignments:
        if (name == "Alignment") return EnterAlignment(attributes, line);
        break;
      case Nesting::kAlignment:
        return EnterPart(name, attributes, line);
      case Nesting::kCoordGeom:
        return EnterElement(name, attributes, line);
      case Nesting::kElement:
        return EnterPoint(name, attributes);
      case Nesting::kProfile:
        return EnterProfile(name, line);
      case Nesting::kProfAlign:
        return EnterLevel(name, attributes, line);
      case Nesting::kFeature:
        if (name == "Property" && TextOf(attributes, "label") == "staEnd") {
          Current().station_end = Number(attributes, "value", "staEnd", line, Use::kNeeded);
          Current().station_end_line = line;
        }
        break;
      default:
        break;
    }
    return std::nullopt;
  }

  std::optional<Nesting> EnterAlignment(XmlAttributes attributes, std::int64_t line) {
    too_many_ = alignments_.size() == kMostRoads;
    if (too_many_ || !Count()) return std::nullopt;
    LandAlignment& alignment = alignments_.emplace_back();
    alignment.line = line;
    alignment.road.road.name = TextOf(attributes, "name");
    alignment.station = Number(attributes, "staStart", "Alignment", line, Use::kNeeded);
    has_profile_ = false;
    return Nesting::kAlignment;
  }

  std::optional<Nesting> EnterPart(std::string_view name, XmlAttributes attributes, std::int64_t line) {
    if (name == "CoordGeom") return Nesting::kCoordGeom;
    if (name == "Profile") return Nesting::kProfile;
    if (name == "Feature" && TextOf(attributes, "code") == "velmora") return Nesting::kFeature;
    if (name == "StaEquation") {
      std::string text =
          "staInternal " + TextOf(attributes, "staInternal") + ", staAhead " + TextOf(attributes, "staAhead");
      if (Count()) Current().equations.push_back({line, std::move(text)});
    } else if (name == "Cant" || name == "Superelevation" || name == "CrossSects") {
      Note(line, std::string(name) + ": is not imported", &Current().road);
    }
    return std::nullopt;
  }

  std::optional<Nesting> EnterElement(std::string_view name, XmlAttributes attributes, std::int64_t line) {
    const std::pair<const char*, LandKind> kinds[] = {{"Line", LandKind::kLine},
                                                      {"Curve", LandKind::kCurve},
                                                      {"Spiral", LandKind::kSpiral},
                                                      {"IrregularLine", LandKind::kIrregularLine},
                                                      {"Chain", LandKind::kChain}};
    for (const auto& [title, kind] : kinds) {
      if (name != title) continue;
      if (!Count()) return std::nullopt;
      LandElement& element = Current().elements.emplace_back();
      element.kind = kind;
      element.line = line;
      const std::string_view rotation = FindAttribute(attributes, "rot").value_or("");
      element.clockwise = rotation == "cw";
      const bool turns = kind == LandKind::kCurve || kind == LandKind::kSpiral;
      if (turns && rotation != "cw" && rotation != "ccw")
        Refuse(line, std::string(name) + ": rot is neither cw nor ccw", &Current().road);
      element.is_clothoid = FindAttribute(attributes, "spiType") == "clothoid";
      const auto number = [&, title = title](const char* attribute, Use use = Use::kChecked) {
        return Number(attributes, attribute, title, line, use);
      };
      const bool spiral = kind == LandKind::kSpiral;
      element.station = number("staStart", Use::kNeeded);
      element.length = number("length", spiral ? Use::kNeeded : Use::kChecked);
      element.radius = spiral ? number("radiusStart", Use::kRadius) : number("radius");
      element.radius_end = number("radiusEnd", Use::kRadius);
      element.direction = number(kind == LandKind::kLine ? "dir" : "dirStart");
      element.direction_end = number("dirEnd");
      element.theta = number("theta");
      return kind == LandKind::kChain ? Nesting::kChain : Nesting::kElement;
    }
    if (name != "Feature") Refuse(line, std::string(name) + ": is not an element of a road", &Current().road);
    return std::nullopt;
  }

  std::optional<Nesting> EnterPoint(std::string_view name, XmlAttributes attributes) {
    LandElement& element = Element();
    if (name == "PntList2D" || name == "PntList3D")
      return name == "PntList2D" ? Nesting::kPointList2 : Nesting::kPointList3;
    point_ = name == "Start"                                     ? &element.start
             : name == "End"                                     ? &element.end
             : name == "Center"                                  ? &element.centre
             : name == "PI" && element.kind == LandKind::kSpiral ? &element.intersection
                                                                 : nullptr;
    if (point_ == nullptr) return std::nullopt;
    if (const auto reference = FindAttribute(attributes, "pntRef"))
      point_->reference = references_.Number(std::string(*reference));
    return Nesting::kPoint;
  }

  std::optional<Nesting> EnterProfile(std::string_view name, std::int64_t line) {
    if (name == "ProfAlign" && !has_profile_) {
      has_profile_ = true;
      return Nesting::kProfAlign;
    }
    if (name == "ProfAlign") Note(line, "ProfAlign: only the first one is imported", &Current().road);
    if (name == "ProfSurf") Note(line, "ProfSurf: is not imported", &Current().road);
    return std::nullopt;
  }

  std::optional<Nesting> EnterLevel(std::string_view name, XmlAttributes attributes, std::int64_t line) {
    const std::pair<const char*, LandVertical> kinds[] = {{"PVI", LandVertical::kPoint},
                                                          {"ParaCurve", LandVertical::kParabola},
                                                          {"UnsymParaCurve", LandVertical::kTwoParabolas},
                                                          {"CircCurve", LandVertical::kCircle}};
    for (const auto& [title, kind] : kinds) {
      if (name != title) continue;
      if (!Count()) return std::nullopt;
      LandLevel& level = Current().levels.emplace_back();
      level.kind = kind;
      level.line = line;
      const auto number = [&, title = title](const char* attribute, Use use) {
        return Number(attributes, attribute, title, line, use);
      };
      level.length = number(kind == LandVertical::kTwoParabolas ? "lengthIn" : "length",
                            kind == LandVertical::kCircle ? Use::kChecked : Use::kNeeded);
      level.length_out = number("lengthOut", Use::kNeeded);
      level.radius = number("radius", Use::kNeeded);
      return Nesting::kLevel;
    }
    return std::nullopt;
  }

  void Leave(Nesting place) {
    if (place == Nesting::kPoint) {
      TakeNumbers(2,
                  [this](const double* numbers) { point_->north = numbers[0], point_->east = numbers[1]; });
    } else if (place == Nesting::kLevel) {
      LandLevel& level = Current().levels.back();
      TakeNumbers(2, [&](const double* numbers) { level.station = numbers[0], level.level = numbers[1]; });
    } else if (place == Nesting::kPointList2 || place == Nesting::kPointList3) {
      TakeList(place == Nesting::kPointList2 ? 2 : 3);
    } else if (place == Nesting::kChain) {
      auto list = std::make_unique<std::vector<LandPoint>>();
      ForEachWord(text_, [&](std::string_view name) {
        if (!Count()) return;
        list->emplace_back().reference = references_.Number(std::string(name));
      });
      Element().list = std::move(list);
    }
  }

  // The first `count` numbers of the text, when it has them.
  template <class Take>
  void TakeNumbers(size_t count, Take take) {
    double numbers[2] = {};
    size_t known = 0;
    bool good = true;
    ForEachWord(text_, [&](std::string_view word) {
      if (known >= count) return;
      const double number = CoordinateOf(word);
      good = good && IsGiven(number);
      numbers[known++] = number;
    });
    if (good && known == count) take(numbers);
  }

  void TakeList(size_t dimensions) {
    auto list = std::make_unique<std::vector<LandPoint>>();
    size_t known = 0;
    ForEachWord(text_, [&](std::string_view word) {
      const size_t place = known++ % dimensions;
      if (place == 0 && !Count()) return;
      if (place == 0) list->emplace_back();
      if (list->empty()) return;
      if (place == 0) list->back().north = CoordinateOf(word);
      if (place == 1) list->back().east = CoordinateOf(word);
    });
    if (known % dimensions != 0 || text_.size() + 1 >= kLongestText)
      Refuse(Element().line, "its point list is cut or too long", &Current().road);
    Element().list = std::move(list);
  }

  // False when the file holds too much; the alignment is then refused.
  bool Count() {
    if (++count_ <= kMostElements) return true;
    if (count_ == kMostElements + 1 && !alignments_.empty())
      Refuse(0, "the file has more than " + std::to_string(kMostElements) + " elements of roads",
             &Current().road);
    return false;
  }

  std::vector<Nesting> places_;
  bool is_land_xml_ = false;
  bool too_many_ = false;
  LandUnits units_;
  std::deque<LandAlignment> alignments_;
  References references_;
  LandPoint* point_ = nullptr;
  bool has_profile_ = false;
  std::string text_;
  size_t count_ = 0;
};

// The places of the points that are referred to: CgPoints, in groups of any depth and of surveys, and named
// points of alignments. Where both have a name, it is that of the CgPoint.
class PointsHandler final : public XmlHandler {
 public:
  explicit PointsHandler(References* references) : references_(references) {}

  bool Start(std::string_view name, XmlAttributes attributes, std::int64_t line) override {
    line_ = line;
    for (const char* const way : {"CgPoints", "Survey", "Alignments", "Alignment", "CoordGeom", "Line",
                                  "Curve", "Spiral", "IrregularLine"})
      if (depth_ == 0 || name == way) return Deeper(nullptr);
    const auto at = references_->numbers.find(TextOf(attributes, "name"));
    if (at == references_->numbers.end()) return false;
    Reference& found = references_->points[static_cast<size_t>(at->second)];
    is_cg_point_ = name == "CgPoint";
    const bool is_named = name == "Start" || name == "End" || name == "Center" || name == "PI";
    return (is_cg_point_ || (is_named && found.line == 0 && !found.point.IsKnown())) && Deeper(&found);
  }
  void Text(std::string_view text) override {
    constexpr size_t kLongestPoint = 1000;
    if (reference_ != nullptr && text_.size() + text.size() <= kLongestPoint) text_ += text;
  }
  void End(std::string_view) override {
    --depth_;
    if (reference_ == nullptr) return;
    LandPoint read;
    size_t known = 0;
    ForEachWord(text_, [&](std::string_view word) {
      if (known == 0) read.north = CoordinateOf(word);
      if (known == 1) read.east = CoordinateOf(word);
      ++known;
    });
    LandPoint& point = reference_->point;
    if (reference_->line == 0) {
      point = read;
      if (is_cg_point_) reference_->line = line_;
    } else if (read.north != point.north || read.east != point.east) {
      reference_->other_line = line_;
    }
    reference_ = nullptr;
  }

 private:
  bool Deeper(Reference* reference) {
    ++depth_;
    reference_ = reference;
    text_.clear();
    return true;
  }

  References* references_;
  int depth_ = 0;
  Reference* reference_ = nullptr;  // whose point is being read
  bool is_cg_point_ = false;
  std::int64_t line_ = 0;
  std::string text_;
};

void Resolve(const References& references, const LandElement& element, LandPoint* point, ImportedRoad* road) {
  if (point->IsKnown() || point->reference < 0) return;
  const Reference& found = references.points[static_cast<size_t>(point->reference)];
  point->north = found.point.north;
  point->east = found.point.east;
  if (point->IsKnown() && found.other_line == 0) return;
  Refuse(element.line,
         (element.kind == LandKind::kChain ? "Chain: " : "pntRef ") + Quoted(*found.name) +
             (found.other_line != 0 ? " names two points, in lines " + std::to_string(found.line) + " and " +
                                          std::to_string(found.other_line)
              : found.line == 0 ? " names no point"
                                : " names a point without coordinates"),
         road);
}

}  // namespace

std::optional<XmlProblem> ReadLandXml(const OpenSource& open, const ImportOptions& options,
                                      std::vector<ImportedRoad>* roads) {
  AlignmentsHandler handler;
  if (auto problem = ReadXml(open(), &handler)) return problem;
  if (!handler.IsLandXml()) return XmlProblem{0, "is not LandXML: its first element is another"};
  if (handler.TooManyAlignments()) return XmlProblem{0, kTooManyRoads};
  References& references = handler.Points();
  if (!references.points.empty()) {
    PointsHandler points(&references);
    if (auto problem = ReadXml(open(), &points)) return problem;
  }
  std::vector<std::string> suffixes;
  for (LandAlignment& alignment : handler.Alignments()) {
    suffixes.push_back(" line " + std::to_string(alignment.line));
    for (LandElement& element : alignment.elements) {
      for (LandPoint* point : {&element.start, &element.centre, &element.end, &element.intersection})
        Resolve(references, element, point, &alignment.road);
      if (element.list)
        for (LandPoint& point : *element.list) Resolve(references, element, &point, &alignment.road);
    }
    MakeRoad(handler.Units(), options, &alignment);
    roads->push_back(std::move(alignment.road));
  }
  MakeNamesUnique(suffixes, roads);
  return std::nullopt;
}

}  // namespace velmora::exchange
