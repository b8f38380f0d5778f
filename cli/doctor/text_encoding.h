// The encoding of a file that the suite's programs read as Windows-1252.
#ifndef VELMORA_CLI_DOCTOR_TEXT_ENCODING_H_
#define VELMORA_CLI_DOCTOR_TEXT_ENCODING_H_

#include <optional>
#include <string_view>

#include "cli/context/diagnosis.h"

namespace velmora::cli {

// A byte-order mark, or letters that are UTF-8 without one. `file` is for the diagnosis.
std::optional<Diagnosis> CheckEncoding(const std::string& file, std::string_view bytes);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_DOCTOR_TEXT_ENCODING_H_
