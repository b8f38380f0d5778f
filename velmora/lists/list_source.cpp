#include "velmora/lists/list_source.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "velmora/common/paths.h"
#include "velmora/exchange/ags.h"
#include "velmora/exchange/geopackage.h"
#include "velmora/lists/fields.h"
#include "velmora/lists/list_error.h"
#include "velmora/lists/packed_number.h"
#include "velmora/lists/rows.h"
#include "velmora/lists/titles.h"
#include "velmora/platform/files.h"
#include "velmora/platform/whole_file.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr char kGeoPackage[] = ".gpkg";
constexpr char kAgs[] = ".ags";

struct ListName {
  std::string file;
  std::string layer;
};

ListError Unopened(const std::string& list) { return {list, 0, WhyUnopened(PathFromSystem(list)), true}; }

bool IsPresent(const std::string& file) { return IsFile(PathFromSystem(file)); }

// A colon behind ".gpkg" begins a layer, unless it belongs to the name of a file or folder that exists.
ListName NameOf(const std::string& list) {
  if (list == "-" || IsPresent(list)) return {list, {}};
  ListName first{list, {}};
  const size_t size = sizeof kGeoPackage - 1;
  for (size_t colon = list.find(':'); colon != std::string::npos; colon = list.find(':', colon + 1)) {
    if (colon <= size || EndingOfName(list.substr(0, colon)) != kGeoPackage) continue;
    ListName name{list.substr(0, colon), list.substr(colon + 1)};
    if (IsPresent(name.file)) return name;
    if (first.layer.empty() && name.layer.find_first_of("/\\") == std::string::npos) first = std::move(name);
  }
  return first;
}

// With a tab behind it, which EndRow takes off the last one.
void AppendField(std::string_view text, std::string* row) {
  bool plain = true;
  for (const char c : text) plain &= (c != '"') & (c != '\t') & (c != '\n') & (c != '\r');
  if (plain) {
    row->append(text) += '\t';
    return;
  }
  const bool quoted = text.find_first_of("\"\t") != std::string_view::npos;
  if (quoted) *row += '"';
  for (const char c : text) {
    if (c == '"') *row += '"';
    *row += c == '\n' || c == '\r' ? ' ' : c;
  }
  if (quoted) *row += '"';
  *row += '\t';
}

void EndRow(std::string* rows) {
  if (rows->ends_with('\t')) rows->pop_back();
  *rows += '\n';
}

// A source of what `next` appends; it returns false at the end.
ListSource FromRows(std::function<bool(std::string*)> next, std::int64_t first_line) {
  ListSource source;
  source.first_line = first_line;
  source.read = [next = std::move(next), pending = std::string(),
                 goes_on = true](std::span<char> buffer) mutable {
    while (pending.size() < buffer.size() && goes_on) goes_on = next(&pending);
    const size_t count = pending.copy(buffer.data(), buffer.size());
    pending.erase(0, count);
    return static_cast<std::int64_t>(count);
  };
  return source;
}

// Lines that are not rows of LOCA become empty ones.
class AgsText {
 public:
  explicit AgsText(const std::string& file) : file_(file), bytes_(ReadWholeList(file)), rows_(bytes_) {}

  bool Next(std::string* text) {
    if (!rows_.Next()) {
      if (rows_.Problem().text.empty()) return false;
      throw ListError{file_, rows_.Problem().line, rows_.Problem().text};
    }
    text->append(static_cast<size_t>(rows_.Line() - line_), '\n');
    line_ = rows_.Line() + 1;
    for (size_t i = 0; i < rows_.Fields(); ++i) AppendField(rows_.Field(i), text);
    EndRow(text);
    return true;
  }

 private:
  std::string file_;
  std::string bytes_;
  exchange::AgsRows rows_;
  std::int64_t line_ = 1;  // the next one
};

// Northing, easting and level of the geometry, then the layer's columns.
class GeoPackageText {
 public:
  GeoPackageText(const ListName& name, const std::string& list)
      : list_(list), points_(PathFromSystem(name.file), name.layer) {
    Check();
  }

  bool Next(std::string* text) {
    if (std::exchange(at_header_, false)) {
      AppendHeader(text);
      return true;
    }
    if (!points_.Next()) {
      Check();
      return false;
    }
    const std::optional<exchange::BlobPoint>& place = points_.Place();
    AppendNumber(place ? std::optional(place->northing) : std::nullopt, text);
    AppendNumber(place ? std::optional(place->easting) : std::nullopt, text);
    if (points_.HasLevels()) AppendNumber(place ? place->level : std::nullopt, text);
    if (is_numbered_) AppendField(std::to_string(points_.Number()), text);
    for (size_t i = 0; i < points_.Titles().size(); ++i) {
      const exchange::GeoPackagePoints::Value value = points_.Field(i);
      if (const double* number = std::get_if<double>(&value))
        AppendNumber(*number, text);
      else
        AppendText(std::get<std::string_view>(value), text);
    }
    EndRow(text);
    return true;
  }

 private:
  static void AppendNumber(std::optional<double> number, std::string* row) {
    if (number)
      AppendPackedNumber(*number, '\t', row);
    else
      *row += '\t';
  }
  static void AppendText(std::string_view text, std::string* row) {
    if (TrimmedField(text).starts_with(kPackedMark))
      AppendField(std::string(1, kPackedMark).append(TrimmedField(text)), row);
    else
      AppendField(text, row);
  }
  void Check() const {
    if (!points_.Problem().empty()) throw ListError{list_, 0, points_.Problem()};
  }

  // The titles of the geometry's columns are the first of their roles.
  void AppendHeader(std::string* text) {
    const auto add = [&](PointRole role) {
      AppendField(Utf8FromWide(std::wstring(PointRoles()[role].titles.front())), text);
    };
    add(kNorthing);
    add(kEasting);
    if (points_.HasLevels()) add(kLevel);
    is_numbered_ = !HasId();
    if (is_numbered_) add(kPointId);
    for (const std::string& title : points_.Titles()) AppendText(title, text);
    EndRow(text);
  }

  bool HasId() const {
    const std::vector<std::wstring_view>& ids = PointRoles()[kPointId].titles;
    for (const std::string& title : points_.Titles())
      for (const std::wstring_view id : ids)
        if (TitleKey(WideFromUtf8(title)) == TitleKey(id)) return true;
    return false;
  }

  std::string list_;
  exchange::GeoPackagePoints points_;
  bool at_header_ = true;
  bool is_numbered_ = false;  // the feature's number is its id
};

// The constructor's arguments are those of the class.
template <class Text, class... Arguments>
ListSource FromText(std::int64_t first_line, const Arguments&... arguments) {
  return FromRows([text = std::make_shared<Text>(arguments...)](std::string* to) { return text->Next(to); },
                  first_line);
}

}  // namespace

bool IsTextList(const std::string& list) {
  const std::string ending = EndingOfName(NameOf(list).file);
  return list == "-" || (ending != kAgs && ending != kGeoPackage);
}

std::string FileOfList(const std::string& list) { return NameOf(list).file; }

ListSource OpenList(const std::string& list) {
  const ListName name = NameOf(list);
  if (IsTextList(list)) {
    const auto input = std::make_shared<InputFile>();
    const bool good = list == "-" ? input->OpenStandardInput() : input->Open(PathFromSystem(list));
    if (!good) throw Unopened(list);
    return {[input](std::span<char> buffer) { return input->Read(buffer); }, input->Size(), 1};
  }
  if (EndingOfName(name.file) == kAgs) return FromText<AgsText>(1, name.file);
  if (!IsPresent(name.file)) throw Unopened(name.file);
  ListSource source = FromText<GeoPackageText>(0, name, list);
  source.packs_numbers = true;
  return source;
}

std::string ReadWholeList(const std::string& list) {
  std::string bytes;
  const std::string problem = ReadWholeFile(PathFromSystem(list), &bytes);
  if (!problem.empty()) throw ListError{list, 0, problem};
  return bytes;
}

}  // namespace velmora
