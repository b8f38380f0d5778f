// What a shell completes the value of an option with. Such a mark stands beside the option's checks and
// accepts every value:
//
//   verb->add_option("FILE", options->file, "Alignment file")->check(CompletesFile(".vl"));
#ifndef VELMORA_CLI_TERMINAL_COMPLETES_H_
#define VELMORA_CLI_TERMINAL_COMPLETES_H_

#include <CLI/CLI.hpp>
#include <string>

namespace velmora::cli {

inline constexpr char kCompletesFile[] = "file ";
inline constexpr char kCompletesFolder[] = "folder";
inline constexpr char kCompletesWord[] = "word ";

// A file whose name has one of the endings, ".vl .txt"; any file without them.
inline CLI::Validator CompletesFile(const std::string& endings = "") {
  return {[](std::string&) { return std::string(); }, "", kCompletesFile + endings};
}
inline CLI::Validator CompletesFolder() {
  return {[](std::string&) { return std::string(); }, "", kCompletesFolder};
}
// A word of a list that the command knows by name; see cli/help/known_words.h.
inline CLI::Validator CompletesWord(const std::string& list) {
  return {[](std::string&) { return std::string(); }, "", kCompletesWord + list};
}

}  // namespace velmora::cli

#endif  // VELMORA_CLI_TERMINAL_COMPLETES_H_
