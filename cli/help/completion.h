// What a shell offers for the word at the cursor.
#ifndef VELMORA_CLI_HELP_COMPLETION_H_
#define VELMORA_CLI_HELP_COMPLETION_H_

#include <optional>
#include <string>
#include <vector>

#include "cli/help/description.h"

namespace velmora::cli {

struct Completion {
  struct Word {
    std::string text;
    std::string help;
  };
  std::vector<Word> words;
  std::optional<std::string> file_endings;  // files too: ".vl .txt", empty for all
  bool folders = false;                     // folders too
};

// `line` is what follows "velmora", the word at the cursor last; an empty one when nothing is there yet. A
// shell that makes words of their own of "=" may pass them so.
Completion Complete(const VerbText& command, std::vector<std::string> line);

// The answer for the shells' scripts in cli/completion: a line a word, with a tab before its help; ":files"
// with the endings, ":folders".
std::string CompletionLines(const Completion& completion);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_HELP_COMPLETION_H_
