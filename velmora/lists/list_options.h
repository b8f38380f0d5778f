// What a user says about a list: its columns, separator, decimal sign and encoding.
#ifndef VELMORA_LISTS_LIST_OPTIONS_H_
#define VELMORA_LISTS_LIST_OPTIONS_H_

#include <map>
#include <optional>
#include <string>

#include "velmora/lists/fields.h"
#include "velmora/text/codepage.h"

namespace velmora {

struct ListOptions {
  std::map<std::string, std::string> columns;  // a role's key: a title, or a number from 1
  char delimiter = 0;                          // 0: found from the first row
  std::optional<DecimalSign> decimal;          // nothing: either, and a point where commas separate
  std::optional<TextEncoding> encoding;        // of a file without a byte-order mark
  bool east_first = false;                     // northing and easting are exchanged
  bool only = false;                           // the list's other columns are not carried to the result
};

}  // namespace velmora

#endif  // VELMORA_LISTS_LIST_OPTIONS_H_
