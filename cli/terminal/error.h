// How a command ends early, and its lines on standard error.
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

// Exit status 2 with the same and where the help is.
class WrongUsage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// An exit status without a message: everything has been printed already.
struct ExitWith {
  int status;
};

// "file: what" and "file:7: what"; the name as the user wrote it, "-" as "standard input". Line 0 is the
// file as a whole.
std::string At(const std::string& file, const std::string& what);
std::string At(const std::string& file, std::int64_t line, const std::string& what);

// Throws a Refusal that says why a file could not be opened.
[[noreturn]] void RefuseUnopened(const std::string& file);

// Print a line on standard error and do not change the exit status: a note, which --quiet suppresses, and an
// error.
void Warn(const std::string& text);
void PrintError(const std::string& text);

// --quiet: errors alone, no notes and no progress.
void SetQuiet(bool quiet);
bool IsQuiet();

// One line with control characters replaced: a line feed by a blank, any other by "?".
std::string Printable(std::string_view text);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_ERROR_H_
