// Which column of a list is which: by its header in any case, by position without one.
#ifndef VELMORA_CLI_INPUT_COLUMNS_H_
#define VELMORA_CLI_INPUT_COLUMNS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/input/rows.h"

namespace velmora::cli {

// A column that is looked for. Without a header the columns stand in the order of their roles.
struct Role {
  std::string name;                  // in error lines
  std::vector<std::wstring> titles;  // that it goes by; of several present the earlier in this list wins
  bool required = false;             // a number that every row needs
};

// Rows of a list by role.
class ListReader {
 public:
  // Looks at the first row. Throws a Refusal when the file cannot be opened, or has a header without a
  // required column.
  ListReader(const std::string& file, std::vector<Role> roles);

  // The next row of data. False at the end.
  bool Next();

  std::int64_t Line() const { return rows_.Line(); }
  bool DecimalComma() const { return rows_.DecimalComma(); }
  // Empty when the row has no such field.
  std::wstring Text(size_t role) const;
  // Nothing when the field is empty or no number.
  std::optional<double> Value(size_t role) const;
  // Why a role's field is not the number it should be, for the status of a row: `northing "66x" is no
  // number`.
  std::string Problem(size_t role) const;

  const RowReader& Rows() const { return rows_; }

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
