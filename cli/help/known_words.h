// Lists of words that the command knows without reading a file, for CompletesWord().
#ifndef VELMORA_CLI_HELP_KNOWN_WORDS_H_
#define VELMORA_CLI_HELP_KNOWN_WORDS_H_

#include <string>
#include <vector>

namespace velmora::cli {

// "keys" are the settings' keys in the parameter file `of`, TUNDRIL.PAR when it is empty; "ini sections"
// those of Velmora.ini, "ini keys" the keys of its section `of`; "statuses" a project's, "sheets" the drawing
// formats. Empty for another name.
std::vector<std::string> KnownWords(const std::string& list, const std::string& of);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_HELP_KNOWN_WORDS_H_
