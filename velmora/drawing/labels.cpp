#include "velmora/drawing/labels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "velmora/text/codepage.h"

namespace velmora::drawing {
namespace {

constexpr double kTextHeight = 1.15;  // of the font size, ascenders and descenders
constexpr double kLeastCell = 8;      // mm
constexpr double kMostCells = 1'000'000;
constexpr size_t kCrowd = 2000;  // boxes in a cell
constexpr size_t kMostCellsOfBox = 10'000;
constexpr double kLeaderRoom = 0.3;
constexpr double kDegree = std::numbers::pi / 180;

// Of the font size; DejaVu Sans is the widest of the fonts that the drawing asks for.
double LetterWidth(char32_t c) {
  if (c >= U'0' && c <= U'9') return 0.64;
  if (c < 0x80 &&
      std::string_view(" .,:;|!'/()[]ijlIfrt-").find(static_cast<char>(c)) != std::string_view::npos) {
    return 0.40;
  }
  if (c == U'm' || c == U'w' || c == U'M' || c == U'W' || c == U'@' || c == U'%') return 1.0;
  if (c >= U'A' && c <= U'Z') return 0.74;
  if (c < 0x80) return 0.63;
  return c < 0x1100 ? 0.75 : 1.1;
}

}  // namespace

double TextWidth(std::string_view utf8, double size) {
  double width = 0;
  while (!utf8.empty()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(utf8, &c);
    utf8.remove_prefix(length == 0 ? 1 : length);
    width += LetterWidth(length == 0 ? 0xFFFD : c);
  }
  return width * size;
}

namespace {

// The bytes of the text that fit into `width`.
size_t Fitting(std::string_view utf8, double size, double width) {
  double used = 0;
  size_t kept = 0;
  while (kept < utf8.size()) {
    char32_t c = 0;
    const size_t length = DecodeUtf8Sequence(utf8.substr(kept), &c);
    used += LetterWidth(length == 0 ? 0xFFFD : c) * size;
    if (used > width) break;
    kept += length == 0 ? 1 : length;
  }
  return kept;
}

}  // namespace

std::string FitText(std::string_view utf8, double size, double width) {
  if (Fitting(utf8, size, width) == utf8.size()) return std::string(utf8);
  return std::string(utf8.substr(0, Fitting(utf8, size, width - LetterWidth(U'…') * size))) + "…";
}

std::vector<std::string> WrapText(std::string_view utf8, double size, double width, size_t most_lines) {
  std::vector<std::string> lines;
  while (!utf8.empty()) {
    if (lines.size() + 1 == most_lines) {
      lines.push_back(FitText(utf8, size, width));
      break;
    }
    size_t end = std::max<size_t>(Fitting(utf8, size, width), 1);
    size_t next = end;
    if (end < utf8.size()) {
      if (const size_t blank = utf8.rfind(' ', end); blank != std::string_view::npos && blank > 0) {
        end = blank;
        next = blank + 1;
      }
    }
    lines.emplace_back(utf8.substr(0, end));
    utf8.remove_prefix(next);
  }
  return lines;
}

Sides::Sides(const RotatedBox& box)
    : centre(box.centre), unit{SheetPoint{1, 0}, SheetPoint{0, 1}}, half{box.half_width, box.half_height} {
  if (box.angle == 0) return;
  const double c = std::cos(box.angle * kDegree);
  const double s = std::sin(box.angle * kDegree);
  unit = {SheetPoint{c, s}, SheetPoint{-s, c}};
}

double Sides::HalfExtent(SheetPoint direction) const {
  double sum = 0;
  for (size_t i = 0; i < 2; ++i)
    sum += half[i] * std::fabs(unit[i].x * direction.x + unit[i].y * direction.y);
  return sum;
}

// Two boxes are apart exactly when they are apart along one of their four sides' directions.
bool Overlap(const Sides& a, const Sides& b) {
  const SheetPoint between = {b.centre.x - a.centre.x, b.centre.y - a.centre.y};
  const double reach = a.half[0] + a.half[1] + b.half[0] + b.half[1];
  if (std::fabs(between.x) > reach || std::fabs(between.y) > reach) return false;
  for (const Sides* sides : {&a, &b}) {
    for (const SheetPoint& unit : sides->unit) {
      const double distance = std::fabs(between.x * unit.x + between.y * unit.y);
      if (distance >= a.HalfExtent(unit) + b.HalfExtent(unit)) return false;
    }
  }
  return true;
}

bool Contains(const SheetRect& area, const RotatedBox& box) {
  const Sides sides(box);
  const SheetPoint half = {sides.HalfExtent({1, 0}), sides.HalfExtent({0, 1})};
  return area.Contains({box.centre.x - half.x, box.centre.y - half.y}) &&
         area.Contains({box.centre.x + half.x, box.centre.y + half.y});
}

RotatedBox TextBox(SheetPoint centre, std::string_view utf8, double size, double angle) {
  return {centre, TextWidth(utf8, size) / 2, size * kTextHeight / 2, angle};
}

RotatedBox LineBox(SheetPoint a, SheetPoint b, double width) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return {
      {(a.x + b.x) / 2, (a.y + b.y) / 2}, std::hypot(dx, dy) / 2, width / 2, std::atan2(dy, dx) / kDegree};
}

double ReadableAngle(double dx, double dy) {
  double angle = std::atan2(dy, dx) / kDegree;
  if (angle >= 90 - 1e-6) angle -= 180;
  if (angle < -90 - 1e-6) angle += 180;
  return angle;
}

namespace {

double CellSize(const SheetRect& area) {
  // A long narrow area has no more cells than a square one.
  const double larger = std::max(area.width, area.height);
  return std::max(
      {kLeastCell, std::sqrt(std::max(area.width * area.height, 0.0) / kMostCells), larger / kMostCells});
}

}  // namespace

Obstacles::Obstacles(const SheetRect& area)
    : area_(area),
      cell_(CellSize(area)),
      columns_(1 + static_cast<size_t>(std::max(area.width, 0.0) / cell_)),
      rows_(1 + static_cast<size_t>(std::max(area.height, 0.0) / cell_)),
      cells_(columns_ * rows_) {}

template <class Take>
bool Obstacles::AnyCell(const Sides& box, const Take& take) const {
  const auto reach = [this](double low, double high, double from, size_t count) {
    const double last = static_cast<double>(count) - 1;
    const auto cell = [&](double at) {  // what is not a number counts as 0
      return static_cast<size_t>(std::min(std::max(0.0, (at - from) / cell_), last));
    };
    return std::pair(cell(low), cell(high));
  };
  const double half_x = box.HalfExtent({1, 0});
  const double half_y = box.HalfExtent({0, 1});
  const auto [left, right] = reach(box.centre.x - half_x, box.centre.x + half_x, area_.x, columns_);
  const auto [top, bottom] = reach(box.centre.y - half_y, box.centre.y + half_y, area_.y, rows_);
  for (size_t row = top; row <= bottom; ++row)
    for (size_t column = left; column <= right; ++column)
      if (take(row * columns_ + column)) return true;
  return false;
}

void Obstacles::Add(const RotatedBox& box, bool solid) {
  const auto number = static_cast<std::uint32_t>(all_.size());
  const Sides sides(box);
  all_.push_back({sides, solid});
  size_t left = kMostCellsOfBox;
  AnyCell(sides, [&](size_t cell) {
    if (cells_[cell].size() < kCrowd) cells_[cell].push_back(number);
    return --left == 0;
  });
}

void Obstacles::Add(const LabelPlace& label) {
  AddSolid(label.box);
  if (label.leader) AddLine(LineBox(label.leader->first, label.leader->second, kLeaderRoom));
}

bool Obstacles::Covers(const RotatedBox& box, bool lines_too) const {
  const Sides sides(box);
  return AnyCell(sides, [&](size_t cell) {
    if (cells_[cell].size() >= kCrowd) return true;
    return std::any_of(cells_[cell].begin(), cells_[cell].end(), [&](std::uint32_t number) {
      const Obstacle& obstacle = all_[number];
      return (lines_too || obstacle.solid) && Overlap(obstacle.sides, sides);
    });
  });
}

bool Obstacles::AllowsLabel(const RotatedBox& label) const {
  return Contains(area_, label) && !Covers(label, /*lines_too=*/true);
}

bool Obstacles::AllowsLeader(const RotatedBox& leader) const { return !Covers(leader, /*lines_too=*/false); }

bool Obstacles::Allows(const LabelPlace& label) const {
  return AllowsLabel(label.box) &&
         (!label.leader || AllowsLeader(LineBox(label.leader->first, label.leader->second, kLeaderRoom)));
}

LabelPlaces PlacesAround(SheetPoint at, double radius, double width, double height, SheetPoint direction) {
  const double preferred = std::atan2(direction.y, direction.x);
  return [=](size_t number) -> std::optional<LabelPlace> {
    constexpr double kTouching = 0.7;  // mm between symbol and label
    constexpr std::array kNear = {kTouching, 2.2, 4.0};
    constexpr std::array kFar = {6.5, 10.0, 14.0, 19.0, 25.0, 32.0, 40.0};
    // Farther away, more directions are told apart.
    constexpr size_t kNearDirections = 16;
    constexpr size_t kFarDirections = 48;
    constexpr size_t kNearPlaces = kNear.size() * kNearDirections;
    const bool near = number < kNearPlaces;
    const size_t directions = near ? kNearDirections : kFarDirections;
    const size_t row = (near ? number : number - kNearPlaces) / directions;
    if (!near && row >= kFar.size()) return std::nullopt;
    const double distance = near ? kNear[row] : kFar[row];
    const auto i = static_cast<int>((near ? number : number - kNearPlaces) % directions);
    // 0, +1, -1, +2, -2 ... steps away from the preferred direction.
    const int steps = i % 2 == 0 ? -i / 2 : (i + 1) / 2;
    const double angle = preferred + steps * 2 * std::numbers::pi / static_cast<double>(directions);
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    // The box touches the circle of this distance with the side or corner that faces the symbol.
    const double to_side =
        std::min(width / 2 / std::max(std::fabs(c), 1e-9), height / 2 / std::max(std::fabs(s), 1e-9));
    const double reach = radius + distance + to_side;
    const SheetPoint centre = {at.x + c * reach, at.y + s * reach};
    LabelPlace place = {{centre, width / 2, height / 2}};
    if (distance == kTouching) return place;
    const SheetPoint end = {std::clamp(at.x, centre.x - width / 2, centre.x + width / 2),
                            std::clamp(at.y, centre.y - height / 2, centre.y + height / 2)};
    const double skip = 1.45 * radius / std::hypot(end.x - at.x, end.y - at.y);  // the symbol's box
    place.leader = {{at.x + (end.x - at.x) * skip, at.y + (end.y - at.y) * skip}, end};
    return place;
  };
}

std::optional<LabelPlace> TakeFirst(Obstacles& obstacles, const LabelPlaces& places) {
  for (size_t number = 0; auto place = places(number); ++number) {
    if (!obstacles.Allows(*place)) continue;
    obstacles.Add(*place);
    return place;
  }
  return std::nullopt;
}

std::optional<size_t> WriteInFirst(Canvas& canvas, Obstacles& obstacles, std::span<const RotatedBox> boxes,
                                   std::string_view utf8, double size, const Style& style) {
  for (size_t i = 0; i < boxes.size(); ++i) {
    if (!obstacles.AllowsLabel(boxes[i])) continue;
    obstacles.AddSolid(boxes[i]);
    canvas.Text(boxes[i].centre, utf8, {.size = size, .angle = boxes[i].angle}, style);
    return i;
  }
  return std::nullopt;
}

}  // namespace velmora::drawing
