// Texts of the manual beyond verbs and options, from the files in cli/help/topics. A text belongs to the page
// of the area of its name, "velmora" to the command's own page; any other is a page of its own, a topic.
//
//   # Heading
//   - term: what it is        an entry of a list
//       as it stands          indented by four blanks
//   Anything else is a paragraph; a blank line ends it. A topic begins with a paragraph, its title; the text
//   for another page with a heading.
#ifndef VELMORA_CLI_HELP_TOPICS_H_
#define VELMORA_CLI_HELP_TOPICS_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::cli {

struct TopicFile {
  std::wstring_view name;  // "align.txt"
  std::string_view text;
};
// The files, in the executable.
std::span<const TopicFile> TopicFiles();

struct TextBlock {
  enum Kind { kHeading, kParagraph, kEntry, kVerbatim } kind;
  std::string text;
  std::string term;  // of kEntry
};
using TextBlocks = std::vector<TextBlock>;

TextBlocks ParseTopic(std::string_view text);

// The text for the page of an area, or of the command for "velmora"; empty when there is none.
TextBlocks TextFor(const std::string& page);
// The names of the pages that are neither.
std::vector<std::string> Topics();

// As plain text, in lines of at most `width` characters.
std::string PlainText(const TextBlocks& blocks, size_t width);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_HELP_TOPICS_H_
