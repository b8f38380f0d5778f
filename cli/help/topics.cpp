#include "cli/help/topics.h"

#include <algorithm>

#include "cli/terminal/wrap.h"
#include "velmora/text/codepage.h"

namespace velmora::cli {
namespace {

std::string NameOf(const TopicFile& file) { return Utf8FromWide(file.name.substr(0, file.name.find(L'.'))); }

// Adds a line's text to the last block, where it goes on.
void Continue(std::string_view line, TextBlock* block) {
  block->text += (block->kind == TextBlock::kVerbatim ? "\n" : " ");
  block->text += line;
}

}  // namespace

TextBlocks ParseTopic(std::string_view text) {
  TextBlocks blocks;
  bool open = false;  // the last block may go on
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty()) {
      open = false;
    } else if (line.starts_with("# ")) {
      blocks.push_back({TextBlock::kHeading, std::string(line.substr(2)), ""});
      open = false;
    } else if (line.starts_with("    ")) {
      if (open && blocks.back().kind == TextBlock::kVerbatim)
        Continue(line.substr(4), &blocks.back());
      else
        blocks.push_back({TextBlock::kVerbatim, std::string(line.substr(4)), ""});
      open = true;
    } else if (line.starts_with("- ")) {
      const size_t colon = std::min(line.find(": "), line.size() - 2);
      blocks.push_back(
          {TextBlock::kEntry, std::string(line.substr(colon + 2)), std::string(line.substr(2, colon - 2))});
      open = true;
    } else if (open && blocks.back().kind != TextBlock::kVerbatim) {
      Continue(line.substr(line.find_first_not_of(' ')), &blocks.back());
    } else {
      blocks.push_back({TextBlock::kParagraph, std::string(line), ""});
      open = true;
    }
  }
  return blocks;
}

TextBlocks TextFor(const std::string& page) {
  for (const TopicFile& file : TopicFiles())
    if (NameOf(file) == page) return ParseTopic(file.text);
  return {};
}

std::vector<std::string> Topics() {
  std::vector<std::string> topics;
  for (const TopicFile& file : TopicFiles())
    if (!file.text.starts_with("# ")) topics.push_back(NameOf(file));
  return topics;
}

std::string PlainText(const TextBlocks& blocks, size_t width) {
  std::string plain;
  TextBlock::Kind before = TextBlock::kHeading;
  for (const TextBlock& block : blocks) {
    const bool goes_on =
        before == TextBlock::kHeading || (block.kind == before && before == TextBlock::kEntry);
    if (!plain.empty() && (!goes_on || block.kind == TextBlock::kHeading)) plain += '\n';
    before = block.kind;
    switch (block.kind) {
      case TextBlock::kHeading:
        plain += block.text + "\n";
        break;
      case TextBlock::kParagraph:
        plain += WrapLines(block.text, width);
        break;
      case TextBlock::kEntry:
        plain += WrapLines("- " + block.term + ": " + block.text, width);
        break;
      case TextBlock::kVerbatim:
        plain += "    ";
        for (const char c : block.text) plain += c == '\n' ? std::string("\n    ") : std::string(1, c);
        plain += '\n';
        break;
    }
  }
  return plain;
}

}  // namespace velmora::cli
