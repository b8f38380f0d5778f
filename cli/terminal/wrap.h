// Text in lines of limited width.
#ifndef VELMORA_CLI_TERMINAL_WRAP_H_
#define VELMORA_CLI_TERMINAL_WRAP_H_

#include <string>
#include <string_view>
#include <vector>

namespace velmora::cli {

// The columns that UTF-8 text takes on a terminal: most characters one, those of East Asia two, accents that
// join the character before none.
size_t DisplayWidth(std::string_view text);

// The text in pieces of at most `width` columns, broken at blanks, and within a word that is longer.
std::vector<std::string> Wrapped(std::string_view text, size_t width);
// Its first `width` columns; cut text ends in "…".
std::string Cut(const std::string& text, size_t width);

// The lines of a text wrapped. What follows the first piece of a line starts where the line's last column
// starts: after its indentation and, in a line of two columns, after the blanks between them. A `width` of 0
// leaves the text as it is.
std::string WrapLines(const std::string& text, size_t width);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_WRAP_H_
