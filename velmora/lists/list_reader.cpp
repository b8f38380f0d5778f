#include "velmora/lists/list_reader.h"

#include <utility>

#include "velmora/lists/find_columns.h"
#include "velmora/lists/list_error.h"
#include "velmora/lists/list_source.h"

namespace velmora {
namespace {

// The options as they apply to the list.
const ListOptions& Checked(const ListOptions& options, const std::string& file) {
  const char* const option = options.delimiter != 0 ? "--delimiter"
                             : options.decimal      ? "--decimal"
                             : options.encoding     ? "--encoding"
                                                    : nullptr;
  if (option != nullptr && !IsTextList(file))
    throw ListError{file, 0,
                    std::string(option) + " does not apply to " + Quoted(file) + ", which is not text", false,
                    true};
  return options;
}

}  // namespace

ListReader::ListReader(const std::string& file, const std::vector<Role>& roles, const ListOptions& options,
                       size_t block_size)
    : roles_(roles),
      rows_(file, Checked(options, file).encoding, block_size),
      layout_(FindColumns(roles, options, &rows_)),
      fields_(layout_) {
  constexpr size_t kUsualColumns = 8;
  rows_.ShrinkBlocks(1 + layout_.carried.size() / kUsualColumns);
}

Findings ListReader::TakeNotes() {
  Findings notes = std::exchange(layout_.notes, {});
  if (rows_.EndNote() && !std::exchange(end_noted_, true)) notes.push_back(*rows_.EndNote());
  return notes;
}

bool ListReader::Next() {
  while (rows_.NextRow(layout_.separator, &row_))
    if (fields_.Split(row_, rows_.Encoding())) return true;
  return false;
}

std::string ListReader::Problem(size_t role) const {
  return fields_.Problem().empty() ? NotANumber(roles_[role], fields_.Text(role)) : fields_.Problem();
}

std::string NotANumber(const Role& role, std::string_view field) {
  if (field.empty()) return role.name + " is missing";
  return role.name + " " + Quoted(field) + " is not a number";
}

}  // namespace velmora
