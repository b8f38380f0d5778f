// Why a list cannot be read.
#ifndef VELMORA_LISTS_LIST_ERROR_H_
#define VELMORA_LISTS_LIST_ERROR_H_

#include <cstdint>
#include <string>

namespace velmora {

// Thrown by the readers of this folder.
struct ListError {
  std::string list;          // its name as given
  std::int64_t line = 0;     // 0: the list as a whole
  std::string text;          // for a user; names the command's options
  bool is_unopened = false;  // the file itself
  bool is_usage = false;     // an option does not apply to the list
};

}  // namespace velmora

#endif  // VELMORA_LISTS_LIST_ERROR_H_
