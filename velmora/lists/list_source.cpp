#include "velmora/lists/list_source.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "velmora/common/paths.h"
#include "velmora/exchange/ags.h"
#include "velmora/exchange/geopackage.h"
#include "velmora/lists/fields.h"
#include "velmora/lists/list_error.h"
#include "velmora/lists/row_text.h"
#include "velmora/lists/titles.h"
#include "velmora/platform/files.h"
#include "velmora/platform/table_database.h"
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

// Lines that are not rows of LOCA become empty ones.
class AgsText {
 public:
  explicit AgsText(const std::string& file) : file_(file), bytes_(ReadWholeList(file)), rows_(bytes_) {}

  // Appends rows of about `size` bytes, nothing at the end.
  void Read(size_t size, std::string* text) {
    while (text_.Size() < size && rows_.Next()) {
      for (; line_ < rows_.Line(); ++line_) text_.EndRow();
      for (size_t i = 0; i < rows_.Fields(); ++i) text_.AddText(rows_.Field(i));
      text_.EndRow();
      ++line_;
    }
    if (!rows_.Problem().text.empty()) throw ListError{file_, rows_.Problem().line, rows_.Problem().text};
    text_.MoveTo(text);
  }

 private:
  std::string file_;
  std::string bytes_;
  exchange::AgsRows rows_;
  std::int64_t line_ = 1;  // the next one
  RowText text_{false};
};

// Northing, easting and level of the geometry, then the layer's columns.
class GeoPackageText : exchange::FeatureSink {
 public:
  GeoPackageText(const ListName& name, const std::string& list)
      : list_(list), points_(PathFromSystem(name.file), name.layer) {
    Check();
  }

  // As AgsText::Read.
  void Read(size_t size, std::string* text) {
    if (std::exchange(at_header_, false)) AddHeader();
    size_ = size;
    if (text_.Size() < size) points_.Read(this);
    Check();
    text_.MoveTo(text);
  }

 private:
  void Begin(std::int64_t number, const std::optional<exchange::BlobPoint>& place) override {
    AddNumber(place ? std::optional(place->northing) : std::nullopt);
    AddNumber(place ? std::optional(place->easting) : std::nullopt);
    if (points_.HasLevels()) AddNumber(place ? place->level : std::nullopt);
    if (is_numbered_) text_.AddInteger(number);
  }
  void Field(const TableCell& cell) override {
    if (cell.kind == TableCell::Kind::kInteger)
      text_.AddInteger(cell.integer);
    else if (cell.kind == TableCell::Kind::kReal && std::isfinite(cell.number))
      text_.AddNumber(cell.number);
    else if (cell.kind != TableCell::Kind::kText || !text_.AddPlain(cell.bytes))
      text_.AddText(exchange::TextOf(cell));
  }
  bool End() override {
    text_.EndRow();
    return text_.Size() >= size_;
  }

  void AddNumber(std::optional<double> number) {
    if (number)
      text_.AddNumber(*number);
    else
      text_.AddEmpty();
  }
  void Check() const {
    if (!points_.Problem().empty()) throw ListError{list_, 0, points_.Problem()};
  }

  // The titles of the geometry's columns are the first of their roles.
  void AddHeader() {
    const auto add = [&](PointRole role) {
      text_.AddText(Utf8FromWide(std::wstring(PointRoles()[role].titles.front())));
    };
    add(kNorthing);
    add(kEasting);
    if (points_.HasLevels()) add(kLevel);
    is_numbered_ = !HasId();
    if (is_numbered_) add(kPointId);
    for (const std::string& title : points_.Titles()) text_.AddText(title);
    text_.EndRow();
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
  RowText text_{true};
  size_t size_ = 0;  // of the text, at which to stop
};

template <class Text>
ListSource FromText(std::int64_t first_line, std::shared_ptr<Text> rows) {
  ListSource source;
  source.first_line = first_line;
  source.read = [rows = std::move(rows)](size_t size, std::string* text) {
    rows->Read(size, text);
    return true;
  };
  return source;
}

bool ReadText(InputFile* input, size_t size, std::string* text) {
  const size_t before = text->size();
  text->resize(before + size);
  const std::int64_t count = input->Read(std::span(*text).subspan(before));
  text->resize(before + static_cast<size_t>(std::max<std::int64_t>(count, 0)));
  return count >= 0;
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
    return {[input](size_t size, std::string* text) { return ReadText(input.get(), size, text); },
            input->Size(), 1};
  }
  if (EndingOfName(name.file) == kAgs) return FromText(1, std::make_shared<AgsText>(name.file));
  if (!IsPresent(name.file)) throw Unopened(name.file);
  ListSource source = FromText(0, std::make_shared<GeoPackageText>(name, list));
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
