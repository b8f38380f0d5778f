// Which column of a list is which: by its header in any case, by position without one.
#ifndef VELMORA_CLI_INPUT_COLUMNS_H_
#define VELMORA_CLI_INPUT_COLUMNS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/input/row_blocks.h"
#include "cli/input/rows.h"

namespace velmora::cli {

// A column that a reader asks for. Without a header the columns are in the order of their roles.
struct Role {
  std::string name;                  // in error lines
  std::vector<std::wstring> titles;  // of several present the earlier in this list wins
  bool required = false;             // a number that every row needs
};

// Why a field is not the number it should be, for the status of a row: `northing "66x" is not a number`.
std::string NotANumber(const Role& role, const std::string& field);

// Rows of a list by role.
class ListReader {
 public:
  // Reads the first row. Throws a Refusal when the file cannot be opened, or has a header without a
  // required column.
  ListReader(const std::string& file, std::vector<Role> roles);

  // The next row of data. False at the end.
  bool Next();
  // Whether Next gives the first row, because it is not a header.
  bool FirstIsData() const { return first_is_data_; }

  std::int64_t Line() const { return rows_.Line(); }
  bool DecimalComma() const { return rows_.DecimalComma(); }
  // Empty when the row has no such field.
  std::wstring Text(size_t role) const;
  std::string Utf8(size_t role) const;
  bool IsEmpty(size_t role) const { return Text(role).empty(); }
  // Nothing when the field is empty or not a number.
  std::optional<double> Value(size_t role) const;
  // As NotANumber, for a role's field.
  std::string Problem(size_t role) const;

  const RowReader& Rows() const { return rows_; }

  // The rows after the last Next, many at once; RowFields splits them.
  bool NextBlock(RowBlock* block) { return rows_.NextBlock(block); }
  RowLayout Layout() const { return {rows_.File(), rows_.Separator(), columns_}; }

 private:
  bool LooksLikeData() const;
  void TakeHeader();

  RowReader rows_;
  std::vector<Role> roles_;
  std::vector<std::optional<size_t>> columns_;  // by role
  bool first_is_data_ = false;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_COLUMNS_H_
