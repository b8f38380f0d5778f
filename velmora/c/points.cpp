#include <cmath>
#include <limits>
#include <memory>

#include "velmora/c/handles.h"
#include "velmora/lists/list_error.h"
#include "velmora/lists/list_source.h"
#include "velmora/lists/point_list.h"
#include "velmora/lists/repeated_ids.h"
#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"

using velmora::c::Failure;
using velmora::c::Require;

// Texts one behind the other, each with its zero.
class TextPool {
 public:
  void Add(std::string_view text) {
    starts_.push_back(bytes_.size());
    bytes_.append(text.substr(0, text.find('\0')));
    bytes_ += '\0';
  }
  // Empty where there is none.
  const char* At(size_t i) const { return i < starts_.size() ? bytes_.c_str() + starts_[i] : ""; }
  size_t Size() const { return starts_.size(); }

 private:
  std::string bytes_;
  std::vector<size_t> starts_;
};

struct velmora_points {
  std::vector<double> northing;
  std::vector<double> easting;
  std::vector<double> level;
  std::vector<std::int64_t> line;
  TextPool ids;
  TextPool titles;
  TextPool fields;  // of each point in turn
  velmora::Findings findings;
};

namespace velmora::c {
namespace {

constexpr size_t kMostFindings = 10'000;

std::optional<TextEncoding> EncodingNamed(const char* name) {
  if (name == nullptr) return std::nullopt;
  const std::pair<const char*, TextEncoding> kNames[] = {{"utf-8", TextEncoding::kUtf8},
                                                         {"windows-1252", TextEncoding::kWindows1252},
                                                         {"utf-16le", TextEncoding::kUtf16Le},
                                                         {"utf-16be", TextEncoding::kUtf16Be}};
  for (const auto& [known, encoding] : kNames)
    if (std::string_view(known) == name) return encoding;
  throw Failure{VELMORA_BAD_ARGUMENT, "there is no encoding of this name"};
}

ListOptions OptionsOfList(const velmora_list_options& given) {
  ListOptions options;
  const std::pair<PointRole, const char*> kColumns[] = {
      {kPointId, given.id}, {kNorthing, given.northing}, {kEasting, given.easting}, {kLevel, given.level}};
  for (const auto& [role, column] : kColumns)
    if (column != nullptr)
      options.columns[PointRoles()[role].key] = Text(column, "a column's title is not UTF-8");
  options.encoding = EncodingNamed(given.encoding);
  Require(given.delimiter == 0 || std::string_view(",;\t|:").find(given.delimiter) != std::string_view::npos,
          "the delimiter is not a comma, semicolon, tab, | or :");
  options.delimiter = given.delimiter;
  Require(given.decimal == 0 || given.decimal == '.' || given.decimal == ',',
          "the decimal sign is not . or ,");
  if (given.decimal != 0) options.decimal = given.decimal == ',' ? DecimalSign::kComma : DecimalSign::kPoint;
  options.east_first = given.east_first != 0;
  return options;
}

void Add(Findings more, velmora_points* points) {
  for (Finding& finding : more)
    if (points->findings.size() < kMostFindings) points->findings.push_back(std::move(finding));
}

std::unique_ptr<velmora_points> ReadPoints(const char* path, const ListOptions& options) {
  auto points = std::make_unique<velmora_points>();
  PointList list(path, options);
  const ListLayout& layout = list.Layout();
  for (const ListLayout::Carried& carried : layout.carried) points->titles.Add(carried.title);
  Add(list.TakeNotes(), points.get());
  RepeatedIds ids;
  size_t left_out = 0;
  for (RowBlock block; list.NextBlock(&block);) {
    std::vector<ListedPoint> rows;
    CarriedFields carried(layout.carried.size());
    PointsOfBlock(block, layout, &rows, &carried);
    for (size_t i = 0; i < rows.size(); ++i) {
      const ListedPoint& row = rows[i];
      ids.Add(row.id, row.line);
      if (!row.problem.empty()) {
        left_out += points->findings.size() >= kMostFindings ? 1 : 0;
        Add({{row.line, row.problem}}, points.get());
        continue;
      }
      points->northing.push_back(row.northing);
      points->easting.push_back(row.easting);
      points->level.push_back(row.level.value_or(std::numeric_limits<double>::quiet_NaN()));
      points->line.push_back(row.line);
      points->ids.Add(row.id);
      for (size_t column = 0; column < carried.Columns(); ++column)
        points->fields.Add(carried.Field(i, column));
    }
  }
  if (left_out > 0) points->findings.push_back({0, "and " + std::to_string(left_out) + " more rows"});
  for (Finding& note : list.TakeNotes()) points->findings.push_back(std::move(note));
  if (auto repeated = ids.Note()) points->findings.push_back({repeated->line, repeated->text, false, false});
  return points;
}

}  // namespace
}  // namespace velmora::c

namespace c = velmora::c;

velmora_status velmora_points_read(const char* path, const velmora_list_options* options,
                                   velmora_points** points, velmora_error* error) {
  return c::Made(points, error, [&] {
    Require(path != nullptr && *path != '\0', "the path is null or empty");
    const velmora_list_options usual = VELMORA_LIST_OPTIONS_INIT;
    const velmora::ListOptions used = c::OptionsOfList(c::OptionsOf(options, usual));
    // Reading from a pipe could wait for ever.
    const velmora::CString file = velmora::PathFromSystem(velmora::FileOfList(path));
    if (!velmora::IsFile(file)) throw Failure{VELMORA_NOT_OPENED, velmora::WhyUnopened(file), path};
    try {
      return c::ReadPoints(std::string_view(path) == "-" ? "./-" : path, used);
    } catch (const velmora::ListError& problem) {
      const auto status = problem.is_usage      ? VELMORA_BAD_ARGUMENT
                          : problem.is_unopened ? VELMORA_NOT_OPENED
                                                : VELMORA_NOT_READ;
      throw Failure{status, problem.text, path, problem.line};
    }
  });
}

void velmora_points_close(velmora_points* points) { delete points; }

size_t velmora_points_arrays(const velmora_points* points, const double** northing, const double** easting,
                             const double** level, const int64_t** line) {
  if (northing != nullptr) *northing = points == nullptr ? nullptr : points->northing.data();
  if (easting != nullptr) *easting = points == nullptr ? nullptr : points->easting.data();
  if (level != nullptr) *level = points == nullptr ? nullptr : points->level.data();
  if (line != nullptr) *line = points == nullptr ? nullptr : points->line.data();
  return points == nullptr ? 0 : points->northing.size();
}

const char* velmora_points_id(const velmora_points* points, size_t point) {
  return points == nullptr ? "" : points->ids.At(point);
}

size_t velmora_points_column(const velmora_points* points, size_t column, const char** title) {
  if (points == nullptr) return 0;
  if (title != nullptr && column < points->titles.Size()) *title = points->titles.At(column);
  return points->titles.Size();
}

const char* velmora_points_field(const velmora_points* points, size_t point, size_t column) {
  if (points == nullptr || column >= points->titles.Size()) return "";
  return points->fields.At(point * points->titles.Size() + column);
}

size_t velmora_points_finding(const velmora_points* points, size_t index, velmora_finding* finding) {
  return points == nullptr ? 0 : c::FindingAt(points->findings, index, finding);
}
