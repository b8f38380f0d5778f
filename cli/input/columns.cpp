#include "cli/input/columns.h"

#include <algorithm>

#include "cli/terminal/error.h"
#include "velmora/text/codepage.h"
#include "velmora/text/letters.h"

namespace velmora::cli {
namespace {

// "Northing (m)" and "z [m]" are found by their names.
std::wstring_view WithoutUnit(std::wstring_view title) {
  return TrimBlanks(title.substr(0, std::min(title.find_first_of(L"(["), title.size())));
}

std::string Titles(const Role& role) {
  std::string list;
  for (const std::wstring& title : role.titles) list += (list.empty() ? "" : ", ") + Utf8FromWide(title);
  return list;
}

}  // namespace

ListReader::ListReader(const std::string& file, std::vector<Role> roles)
    : rows_(file), roles_(std::move(roles)), columns_(roles_.size()) {
  if (!rows_.Next()) return;
  first_is_data_ = LooksLikeData();
  if (!first_is_data_) {
    TakeHeader();
    return;
  }
  for (size_t i = 0; i < columns_.size(); ++i) columns_[i] = i;
}

// Whether a required column holds a number at its position without a header. One is enough: the other is
// then a damaged number and not a title.
bool ListReader::LooksLikeData() const {
  for (size_t i = 0; i < roles_.size(); ++i)
    if (roles_[i].required && i < rows_.Fields().size() &&
        FieldNumber(rows_.Fields()[i], rows_.DecimalComma()))
      return true;
  return false;
}

// Finds the columns in the row at hand.
void ListReader::TakeHeader() {
  const std::vector<std::wstring>& fields = rows_.Fields();
  if (fields.size() == 1)
    throw Refusal(At(rows_.File(), rows_.Line(),
                     "has only one column; a list has a comma, semicolon or tab between its columns, and is "
                     "UTF-8 or Windows-1252 text"));
  for (size_t i = 0; i < roles_.size(); ++i)
    for (const std::wstring& title : roles_[i].titles) {
      const auto found = std::find_if(fields.begin(), fields.end(), [&](const std::wstring& field) {
        return EqualNoCase(WithoutUnit(field), title);
      });
      if (found == fields.end() || columns_[i]) continue;
      columns_[i] = static_cast<size_t>(found - fields.begin());
    }
  for (size_t i = 0; i < roles_.size(); ++i)
    if (roles_[i].required && !columns_[i])
      throw Refusal(At(rows_.File(), rows_.Line(),
                       "no column for " + roles_[i].name + "; use one of the titles " + Titles(roles_[i]) +
                           ", or omit the header"));
}

bool ListReader::Next() {
  if (first_is_data_) {
    first_is_data_ = false;
    return true;
  }
  return rows_.Next();
}

std::wstring ListReader::Text(size_t role) const {
  const std::optional<size_t> column = columns_[role];
  return column && *column < rows_.Fields().size() ? rows_.Fields()[*column] : std::wstring();
}

std::string ListReader::Utf8(size_t role) const { return Utf8FromWide(Text(role)); }

std::optional<double> ListReader::Value(size_t role) const {
  return FieldNumber(Text(role), rows_.DecimalComma());
}

std::string ListReader::Problem(size_t role) const { return NotANumber(roles_[role], Utf8(role)); }

std::string NotANumber(const Role& role, const std::string& field) {
  if (field.empty()) return role.name + " is missing";
  return role.name + " " + Quoted(field) + " is not a number";
}

}  // namespace velmora::cli
