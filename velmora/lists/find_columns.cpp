#include "velmora/lists/find_columns.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "velmora/lists/list_error.h"
#include "velmora/lists/packed_number.h"
#include "velmora/text/letters.h"
#include "velmora/text/nearest.h"

namespace velmora {
namespace {

using Fields = std::vector<std::string>;
using Columns = std::vector<std::optional<size_t>>;  // by role

constexpr size_t kRowsToHeader = 10;  // the header is among the first ones
// Of columns that are carried, as every row of the result has them.
constexpr size_t kMostColumns = 256;
constexpr size_t kLongestTitle = 200;  // bytes

// A row at the start of a list.
struct Candidate {
  std::int64_t line;
  size_t end;              // bytes through this row
  std::int64_t lines_end;  // and lines
  char separator;
  Fields fields;  // without empty ones at the end
  size_t count;   // with them
  bool unclosed;  // as in RowExtent
};

// The number of a column that --columns gives, from 0; nothing for a title.
std::optional<size_t> ColumnNumber(const std::string& column) {
  constexpr size_t kMostDigits = 4;
  if (column.empty() || column.size() > kMostDigits ||
      column.find_first_not_of("0123456789") != std::string::npos || std::stoul(column) == 0)
    return std::nullopt;
  return std::stoul(column) - 1;
}

// "a, b, c...", for a message.
std::string Listed(const Fields& titles) {
  constexpr size_t kMost = 6;
  std::string list;
  size_t count = 0;
  for (const std::string& title : titles) {
    if (title.empty()) continue;
    if (++count > kMost) return list + "...";
    const std::string quoted = Quoted(title);
    list += (list.empty() ? "" : ", ") + quoted.substr(1, quoted.size() - 2);
  }
  return list;
}

class Finder {
 public:
  Finder(const std::vector<Role>& roles, const ListOptions& options, RowReader* rows)
      : roles_(roles), options_(options), rows_(rows), first_line_(rows->Line()) {}

  ListLayout Find() {
    ReadFirstRows();
    layout_.columns.resize(roles_.size());
    if (candidates_.empty()) return std::move(layout_);
    layout_.separator = candidates_[0].separator;
    for (const Candidate& row : candidates_) {
      Columns columns;
      if (IsHeader(row, &columns)) {
        TakeHeader(row, columns);
        return Finished();
      }
      if (IsWholePoint(row)) break;
    }
    TakePositions();
    return Finished();
  }

 private:
  // The row `at` bytes on, and its separator.
  RowExtent Measure(size_t at, char* separator) const {
    const std::string_view text = rows_->Pending().substr(at);
    const std::optional<char> found = options_.delimiter != 0 ? options_.delimiter
                                      : named_ != 0           ? named_
                                                              : DetectSeparator(text, rows_->AtEnd());
    *separator = found.value_or(0);
    return found ? MeasureRow(text, *found, rows_->AtEnd()) : RowExtent();
  }
  DecimalSign DecimalOf(char separator) const {
    return options_.decimal.value_or(separator == ',' ? DecimalSign::kPoint : DecimalSign::kEither);
  }
  ListError Error(std::int64_t line, std::string what) const {
    return {rows_->File(), line, std::move(what)};
  }
  void Note(std::int64_t line, std::string what) {
    layout_.notes.push_back({line, std::move(what), false, false});
  }

  void ReadFirstRows() {
    size_t at = 0;
    std::int64_t line = first_line_;
    while (candidates_.size() < kRowsToHeader) {
      char separator = 0;
      RowExtent extent = Measure(at, &separator);
      while (extent.size == 0 && !extent.too_long && !rows_->AtEnd()) {
        rows_->More();
        extent = Measure(at, &separator);
      }
      if (extent.too_long && candidates_.empty()) rows_->RefuseLongRow(line);
      if (extent.size == 0) return;
      Add({WithoutLineEnd(rows_->Pending().substr(at, extent.size)), line, extent.unclosed}, separator);
      at += extent.size;
      line += extent.lines;
      if (candidates_.empty()) {
        // Blank rows, and the separator on a line of its own, as some spreadsheets name it.
        rows_->Skip(at, line - first_line_);
        first_line_ = line;
        at = 0;
        continue;
      }
      candidates_.back().end = at;
      candidates_.back().lines_end = line - first_line_;
    }
  }

  void Add(const Row& row, char separator) {
    std::string decoded;
    std::string unquoted;
    std::vector<std::string_view> views;
    const std::string_view text = DecodeRow(row.bytes, rows_->Encoding(), &decoded);
    if (candidates_.empty() && named_ == 0 && text.size() == 5 && text[4] > 0 &&
        EqualNoCase(WideFromUtf8(text.substr(0, 4)), L"sep=")) {
      named_ = text[4];
      return;
    }
    SplitRow(text, separator, kMostColumns + 1, &views, &unquoted);
    Fields fields(views.begin(), views.end());
    std::array<char, kLongestShortest> room;
    if (rows_->PacksNumbers())
      for (std::string& field : fields)
        if (field.starts_with(kPackedMark)) field = std::string(TextOfPacked(field, room.data()));
    while (!fields.empty() && fields.back().empty()) fields.pop_back();
    if (candidates_.empty() && HasLoneReturn(row.bytes))
      throw Error(row.line, "its lines end in CR alone; save the list with CR LF or LF");
    if (!fields.empty() || !candidates_.empty())
      candidates_.push_back({row.line, 0, 0, separator, std::move(fields), views.size(), row.unclosed});
  }

  // Whether a field of the row is a number, by a role's column or without one by its position.
  bool HasNumber(const Candidate& row, size_t role) const {
    size_t column = role;
    if (const auto named = options_.columns.find(roles_[role].key); named != options_.columns.end())
      column = ColumnNumber(named->second).value_or(kMostColumns);
    return column < row.fields.size() && FieldNumber(row.fields[column], DecimalOf(row.separator));
  }

  bool IsWholePoint(const Candidate& row) const {
    for (size_t i = 0; i < roles_.size(); ++i)
      if (roles_[i].required && !HasNumber(row, i)) return false;
    return true;
  }
  // One number is enough: the other is then a damaged one and not a title.
  bool LooksLikeData(const Candidate& row) const {
    for (size_t i = 0; i < roles_.size(); ++i)
      if (roles_[i].required && HasNumber(row, i)) return true;
    return false;
  }

  // Whether the row has all titles that it needs; `columns` are then those of the roles, else what was found
  // of them.
  bool IsHeader(const Candidate& row, Columns* columns) const {
    std::vector<std::wstring> keys;
    for (const std::string& field : row.fields) keys.push_back(TitleKey(WideFromUtf8(field)));
    columns->assign(roles_.size(), std::nullopt);
    bool complete = row.fields.size() > 1 || HasOneColumn();
    bool by_title = false;
    for (size_t i = 0; i < roles_.size(); ++i) {
      const auto named = options_.columns.find(roles_[i].key);
      if (named == options_.columns.end()) continue;
      (*columns)[i] = NamedColumn(row, keys, named->second);
      complete = complete && (*columns)[i];
      by_title = by_title || !ColumnNumber(named->second);
    }
    // A column that the user names for one role is no other's by its title.
    for (const std::optional<size_t>& column : *columns)
      if (column && *column < keys.size()) keys[*column].clear();
    for (size_t i = 0; i < roles_.size(); ++i) {
      if (options_.columns.contains(roles_[i].key)) continue;
      for (const std::wstring_view title : roles_[i].titles)
        if (!(*columns)[i]) (*columns)[i] = FindTitle(keys, title);
      if ((*columns)[i]) keys[*(*columns)[i]].clear();
      if (!roles_[i].required) continue;
      complete = complete && (*columns)[i];
      by_title = true;
    }
    return complete && (by_title || !LooksLikeData(row));
  }

  // A line of text alone is the header only of a list whose rows have no more.
  bool HasOneColumn() const {
    return std::all_of(candidates_.begin(), candidates_.end(),
                       [](const Candidate& row) { return row.fields.size() < 2; });
  }

  // The column that --columns gives by its number or its title; nothing when the row has no such one.
  static std::optional<size_t> NamedColumn(const Candidate& row, const std::vector<std::wstring>& keys,
                                           const std::string& named) {
    if (const std::optional<size_t> number = ColumnNumber(named))
      return *number < row.count ? number : std::nullopt;
    const std::wstring title = WideFromUtf8(named);
    for (size_t k = 0; k < row.fields.size(); ++k)
      if (EqualNoCase(WideFromUtf8(row.fields[k]), title)) return k;
    return FindTitle(keys, title);
  }

  static std::optional<size_t> FindTitle(const std::vector<std::wstring>& keys, std::wstring_view title) {
    const std::wstring key = TitleKey(title);
    const auto found = std::find(keys.begin(), keys.end(), key);
    if (key.empty() || found == keys.end()) return std::nullopt;
    return static_cast<size_t>(found - keys.begin());
  }

  void TakeHeader(const Candidate& row, const Columns& columns) {
    if (row.unclosed) RefuseUnclosed(row);
    layout_.has_header = true;
    layout_.separator = row.separator;
    layout_.columns = columns;
    layout_.width = row.fields.size();
    layout_.header_count = row.count;
    for (const std::optional<size_t>& column : columns)
      if (column) layout_.width = std::max(layout_.width, *column + 1);
    titles_ = row.fields;
    NoteSameTitles(row);
    header_line_ = row.line;
    if (row.line != candidates_[0].line)
      Note(row.line, "is taken for the header, and what is above it for a title");
    rows_->Skip(row.end, row.lines_end);
  }

  // A list can have coordinates in two systems.
  void NoteSameTitles(const Candidate& row) {
    for (size_t i = 0; i < roles_.size(); ++i) {
      const std::optional<size_t> column = layout_.columns[i];
      if (!column || *column >= row.fields.size() || options_.columns.contains(roles_[i].key)) continue;
      const std::wstring key = TitleKey(WideFromUtf8(row.fields[*column]));
      for (size_t k = *column + 1; k < row.fields.size(); ++k) {
        if (TitleKey(WideFromUtf8(row.fields[k])) != key) continue;
        Note(row.line, roles_[i].name + " is column " + std::to_string(*column + 1) + ", though column " +
                           std::to_string(k + 1) + " has the same title; --columns " + roles_[i].key +
                           "=NUMBER takes another");
        break;
      }
    }
  }

  // Without a header, or with one that lacks a required column.
  void TakePositions() {
    const Candidate& row = candidates_[0];
    if (!LooksLikeData(row)) RefuseHeader(row);
    for (size_t i = 0; i < roles_.size(); ++i) {
      const auto named = options_.columns.find(roles_[i].key);
      if (named == options_.columns.end()) continue;
      layout_.columns[i] = ColumnNumber(named->second);
      if (!layout_.columns[i]) RefuseTitle(row, named->second);
      layout_.width = std::max(layout_.width, *layout_.columns[i] + 1);
    }
    if (options_.columns.empty()) {
      RefuseAmbiguous(row);
      for (size_t i = 0; i < positions_; ++i) layout_.columns[i] = i;
      layout_.width = positions_;
    }
    for (size_t i = 0; i < roles_.size(); ++i)
      if (roles_[i].required && !layout_.columns[i])
        throw Error(row.line, "has no header; name " + roles_[i].name + " by its number too: --columns " +
                                  roles_[i].key + "=NUMBER");
    layout_.width = std::max(layout_.width, row.count);
  }

  [[noreturn]] void RefuseUnclosed(const Candidate& row) const {
    throw Error(row.line, "a quote in the header is not closed; close or remove it");
  }

  [[noreturn]] void RefuseTitle(const Candidate& row, const std::string& title) const {
    throw Error(row.line, "no column " + Quoted(title) + " among " + Listed(row.fields) +
                              "; give --columns a title or a number that the list has" +
                              DidYouMean(title, row.fields));
  }

  [[noreturn]] void RefuseHeader(const Candidate& row) const {
    if (row.unclosed) RefuseUnclosed(row);
    if (row.fields.size() == 1 && !HasOnlyNumber(row))
      throw Error(row.line,
                  "has only one column; a list has a comma, semicolon or tab between its columns, and is "
                  "UTF-8 or Windows-1252 text");
    Columns columns;
    IsHeader(row, &columns);
    std::string missing;
    std::string names;
    for (size_t i = 0; i < roles_.size(); ++i) {
      if (columns[i]) continue;
      if (const auto named = options_.columns.find(roles_[i].key); named != options_.columns.end()) {
        if (!ColumnNumber(named->second)) RefuseTitle(row, named->second);
        throw Error(row.line,
                    "has " + std::to_string(row.count) + " columns; --columns gives a number beyond them");
      }
      if (!roles_[i].required) continue;
      missing += (missing.empty() ? "" : " and ") + roles_[i].name;
      names += (names.empty() ? "" : ",") + roles_[i].key + "=COLUMN";
    }
    throw Error(row.line, "no column for " + missing + " among " + Listed(row.fields) +
                              "; name it with --columns " + names + " (its title or number)");
  }

  // A row of a list without a header that has one column, in which a single required number can be.
  bool HasOnlyNumber(const Candidate& row) const {
    return HasOneColumn() && FieldNumber(row.fields[0], DecimalOf(row.separator)) &&
           std::count_if(roles_.begin(), roles_.end(), [](const Role& role) { return role.required; }) == 1;
  }

  // Numbers that can be coordinates as well as a name, or halves of numbers with a decimal comma.
  void RefuseAmbiguous(const Candidate& row) const {
    const DecimalSign decimal = DecimalOf(row.separator);
    size_t numbers = 0;
    bool points = false;
    for (const std::string& field : row.fields) {
      const bool is_number = FieldNumber(field, decimal).has_value();
      numbers += is_number ? 1 : 0;
      points = points || (is_number && field.find('.') != std::string::npos);
    }
    const std::optional<double> id = FieldNumber(row.fields[0], decimal);
    const size_t count = row.fields.size();
    if ((count <= 3 && numbers == count) || (id && std::trunc(*id) != *id)) {
      const std::string with_id = Positions(0, count);
      throw Error(row.line, "has " + std::to_string(numbers) +
                                " numbers and no header; say which is which: " + with_id +
                                (with_id.empty() ? "" : " or ") + Positions(1, count));
    }
    if (row.separator == ',' && !points && count > positions_ && FieldNumber(row.fields[positions_], decimal))
      throw Error(row.line,
                  "has " + std::to_string(count) +
                      " columns and no header; with decimal commas, separate the columns by semicolons, "
                      "else say which is which: " +
                      Positions(0, count));
  }

  // "--columns id=1,n=2": the roles from `first` on in the list's columns; empty when a required one is
  // missing.
  std::string Positions(size_t first, size_t count) const {
    std::string columns;
    for (size_t i = 0; i < positions_; ++i) {
      if (roles_[i].required && (i < first || i - first >= count)) return "";
      if (i < first || i - first >= count) continue;
      columns += (columns.empty() ? "--columns " : ",") + roles_[i].key + "=" + std::to_string(i - first + 1);
    }
    return columns;
  }

  ListLayout Finished() {
    if (layout_.width > kMostColumns)
      throw Error(candidates_[0].line, "has more than " + std::to_string(kMostColumns) +
                                           " columns; is the file a list of points?");
    for (size_t i = 0; i < roles_.size(); ++i)
      for (size_t k = 0; k < i; ++k)
        if (layout_.columns[i] && layout_.columns[i] == layout_.columns[k])
          throw Error(candidates_[0].line,
                      "--columns gives " + roles_[k].name + " and " + roles_[i].name + " the same column");
    layout_.packs_numbers = rows_->PacksNumbers();
    layout_.decimal = DecimalOf(layout_.separator);
    layout_.doubtful_commas = layout_.separator == ',' && options_.decimal != DecimalSign::kPoint;
    for (size_t i = 0; i + 1 < roles_.size(); ++i)
      if (roles_[i].required && roles_[i + 1].required)
        NoteSecond(*layout_.columns[i], *layout_.columns[i + 1]);
    Carry();
    if (layout_.has_header) NoteUnknown();
    if (options_.east_first) std::swap(layout_.columns[kNorthing], layout_.columns[kEasting]);
    return std::move(layout_);
  }

  void NoteSecond(size_t a, size_t b) {
    if (a + 1 == b || b + 1 == a) layout_.second = std::max(a, b);
  }

  void Carry() {
    titles_.resize(layout_.width);
    for (size_t column = 0; column < layout_.width; ++column) {
      if (std::find(layout_.columns.begin(), layout_.columns.end(), column) != layout_.columns.end()) {
        titles_[column].clear();
        continue;
      }
      const std::string& title = titles_[column];
      if (options_.only) continue;
      const bool usable = !title.empty() && title.size() <= kLongestTitle;
      layout_.carried.push_back({column, usable ? title : "column" + std::to_string(column + 1)});
    }
  }

  // The titles that are no role's where a role has no column.
  void NoteUnknown() {
    const std::string unknown = Listed(titles_);
    std::string missing;
    std::string names;
    for (size_t i = 0; i < roles_.size(); ++i) {
      if (layout_.columns[i] || !roles_[i].has_position) continue;
      missing += (missing.empty() ? "" : " or ") + roles_[i].name;
      names += (names.empty() ? "" : ",") + roles_[i].key + "=TITLE";
    }
    if (unknown.empty() || missing.empty()) return;
    Note(header_line_,
         "no column for " + missing + " among " + unknown + "; name it with --columns " + names);
  }

  const std::vector<Role>& roles_;
  const size_t positions_ = static_cast<size_t>(
      std::count_if(roles_.begin(), roles_.end(), [](const Role& role) { return role.has_position; }));
  const ListOptions& options_;
  RowReader* rows_;
  ListLayout layout_;
  std::vector<Candidate> candidates_;
  Fields titles_;
  std::int64_t first_line_;
  std::int64_t header_line_ = 0;
  char named_ = 0;  // the separator that the file names
};

}  // namespace

ListLayout FindColumns(const std::vector<Role>& roles, const ListOptions& options, RowReader* rows) {
  return Finder(roles, options, rows).Find();
}

}  // namespace velmora
