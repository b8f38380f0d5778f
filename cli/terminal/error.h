// How a command ends when it does not simply finish.
#ifndef VELMORA_CLI_TERMINAL_ERROR_H_
#define VELMORA_CLI_TERMINAL_ERROR_H_

#include <cstdint>
#include <stdexcept>
#include <string>

#include "velmora/text/quoted.h"

namespace velmora::cli {

// Exit status 1 with one line: what, where, what to do.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// An exit status when everything has been said already.
struct ExitWith {
  int status;
};

// "file: what" and "file:7: what"; the name as the user wrote it, "-" as "standard input".
std::string At(const std::string& file, const std::string& what);
std::string At(const std::string& file, std::int64_t line, const std::string& what);

// A line on standard error beside the result. Notes never change the exit status.
void Warn(const std::string& text);

// Text as one line that a terminal takes no orders from: a line end becomes a blank, any other control
// character "?".
std::string Printable(std::string_view text);

// The button that a box answers with where nobody can press one.
int DefaultButton(unsigned style);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_ERROR_H_
