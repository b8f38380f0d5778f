// A list read in blocks, whose rows several threads split at once.
#ifndef VELMORA_CLI_INPUT_ROW_BLOCKS_H_
#define VELMORA_CLI_INPUT_ROW_BLOCKS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/input/rows.h"

namespace velmora::cli {

// The layout of a list, from its first row.
struct RowLayout {
  std::string file;  // for error lines
  wchar_t separator = L',';
  std::vector<std::optional<size_t>> columns;  // by role
  // A comma is a decimal point unless it is the separator.
  bool DecimalComma() const { return separator != L','; }
};

// The fields of a line by role: views into the line when it is plain ASCII without quotes, else into
// copies of the fields. A field that the line lacks is empty.
class RowFields {
 public:
  explicit RowFields(const RowLayout& layout) : layout_(layout), plain_(layout.columns.size()) {}

  // False for a blank line. Throws a Refusal for one that is far too long.
  bool Split(std::string_view line, TextEncoding encoding, std::int64_t number);

  std::string Utf8(size_t role) const;
  bool IsEmpty(size_t role) const { return is_plain_ ? plain_[role].empty() : Wide(role).empty(); }
  // Nothing when the field is empty or not a number.
  std::optional<double> Value(size_t role) const;

 private:
  bool SplitPlain(std::string_view line);
  std::wstring Wide(size_t role) const;

  const RowLayout& layout_;
  bool is_plain_ = false;
  std::vector<std::string_view> plain_;  // by role
  std::vector<std::wstring> fields_;     // by column
};

// Calls take(line, number) for each line of the block.
template <class Take>
void ForEachLine(const RowBlock& block, Take take) {
  std::string_view rest = block.bytes;
  for (std::int64_t number = block.first_line; !rest.empty(); ++number) {
    const size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    take(line, number);
  }
}

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_ROW_BLOCKS_H_
