#include "cli/help/man_page.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "cli/help/topics.h"
#include "velmora/text/codepage.h"
#include "velmora/version.h"

namespace velmora::cli {
namespace {

// Text as the formatter shows it: no requests, no escapes, ASCII.
std::string Roff(std::string_view text) {
  std::string roff;
  for (bool line_start = true; !text.empty();) {
    char32_t c = 0;
    const size_t length = std::max<size_t>(DecodeUtf8Sequence(text, &c), 1);
    if (line_start && (c == '.' || c == '\'')) roff += "\\&";
    if (c == '\\') {
      roff += "\\e";
    } else if (c == '-') {
      roff += "\\-";
    } else if (c == '\'') {
      roff += "\\(aq";
    } else if (c >= 0x80) {
      std::array<char, 16> escape{};
      std::snprintf(escape.data(), escape.size(), "\\[u%04X]", static_cast<unsigned>(c));
      roff += escape.data();
    } else {
      roff += text[0];
    }
    line_start = c == '\n';
    text.remove_prefix(length);
  }
  return roff;
}

std::string Capitals(std::string text) {
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return text;
}

std::string Heading(const std::string& text) { return ".SH \"" + Roff(Capitals(text)) + "\"\n"; }

std::string Head(const std::string& page, char section, std::string title) {
  if (title.ends_with('.')) title.pop_back();
  // A topic's is its own name: a narrow terminal has no room for a longer one twice.
  const std::string head = section == '1' ? page : page.substr(page.find('-') + 1);
  return ".TH " + Roff(Capitals(head)) + " " + section + " \"\" \"velmora " + VersionText() +
         "\" \"velmora manual\"\n.ad l\n.nh\n" + Heading("Name") + Roff(page) + " \\- " + Roff(title) + "\n";
}

std::string Blocks(const TextBlocks& blocks) {
  std::string page;
  for (const TextBlock& block : blocks) {
    switch (block.kind) {
      case TextBlock::kHeading:
        page += Heading(block.text);
        break;
      case TextBlock::kParagraph:
        page += ".PP\n" + Roff(block.text) + "\n";
        break;
      case TextBlock::kEntry:
        page += ".TP\n\\fB" + Roff(block.term) + "\\fR\n" + Roff(block.text) + "\n";
        break;
      case TextBlock::kVerbatim:
        page += ".PP\n.in +4n\n.nf\n" + Roff(block.text) + "\n.fi\n.in\n";
        break;
    }
  }
  // A heading makes the distance to its first paragraph itself.
  for (size_t at = 0; (at = page.find("\"\n.PP\n", at)) != std::string::npos;) page.erase(at + 2, 4);
  return page;
}

std::string Listed(const std::vector<std::string>& words) {
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

std::string Option(const OptionText& option) {
  std::string heading;
  for (const std::string& name : option.names)
    heading += (heading.empty() ? "" : ", ") +
               (option.positional ? "\\fI" + Roff(name) + "\\fR" : "\\fB" + Roff(name) + "\\fR");
  if (!option.positional && !option.value.empty()) heading += " \\fI" + Roff(option.value) + "\\fR";
  std::string text = option.help + ".";
  if (option.required && !option.positional) text += " Required.";
  if (!option.required && option.positional) text += " Optional.";
  if (!option.values.empty()) text += " One of " + Listed(option.values) + ".";
  if (!option.range.empty()) text += " A number from " + option.range + ".";
  if (!option.excludes.empty()) text += " Not with " + Listed(option.excludes) + ".";
  return ".TP\n" + heading + "\n" + Roff(text) + "\n";
}

// The options of a verb; --help is described once, on the page of the command.
std::string Options(const VerbText& verb) {
  std::string page;
  for (const OptionText& option : verb.options)
    if (option.names.back() != "--help") page += Option(option);
  return page;
}

void AddVerbs(const VerbText& verb, std::string* page) {
  for (const VerbText& below : verb.verbs) {
    if (!below.verbs.empty()) {
      AddVerbs(below, page);
      continue;
    }
    const std::string name = below.call.substr(below.call.find(' ') + 1);
    *page += ".SS \"" + Roff(name) + "\"\n\\fB" + Roff(UsageLine(below)) + "\\fR\n.PP\n" +
             Roff(below.help + ".") + "\n" + Options(below);
  }
}

std::string See(const std::vector<std::string>& pages) {
  std::string text;
  for (const std::string& page : pages) {
    const size_t dot = page.rfind('.');
    text += (text.empty() ? "" : ",\n") + (".BR " + Roff(page.substr(0, dot))) + " (" + page.substr(dot + 1) +
            ")";
  }
  return Heading("See also") + text + "\n";
}

std::string AreaPage(const VerbText& area) {
  std::string page = Head("velmora-" + area.name, '1', area.help) + Heading("Synopsis") + "\\fB" +
                     Roff(UsageLine(area)) + "\\fR\n" + Heading("Description") + Roff(area.help) +
                     ".\nThe options that every verb takes are those of\n.BR velmora (1).\n";
  if (!area.footer.empty()) page += ".PP\n" + Roff(area.footer) + "\n";
  page += Heading(area.verbs.empty() ? "Options" : "Verbs") + Options(area);
  AddVerbs(area, &page);
  return page + Blocks(TextFor(area.name));
}

std::string CommandPage(const VerbText& command) {
  std::string page = Head(command.name, '1', command.help) + Heading("Synopsis") + "\\fB" +
                     Roff(UsageLine(command)) + "\\fR\n" + Heading("Description") + Roff(command.help) +
                     "\n" + Heading("Verbs");
  for (const VerbText& area : command.verbs)
    page += ".TP\n\\fBvelmora " + Roff(area.name) + "\\fR\n" + Roff(area.help) + ".\n";
  page += Heading("Options");
  for (const OptionText& option : command.options) page += Option(option);
  return page + Blocks(TextFor(command.name));
}

// The first paragraph is the title.
std::string TopicPage(const std::string& topic, TextBlocks blocks) {
  const std::string title = blocks.front().text;
  blocks.front() = {TextBlock::kHeading, "Description", ""};
  return Head("velmora-" + topic, '7', title) + Blocks(blocks);
}

}  // namespace

std::vector<ManPage> ManPages(const VerbText& command) {
  std::vector<ManPage> pages = {{command.name + ".1", CommandPage(command)}};
  for (const VerbText& area : command.verbs)
    pages.push_back({command.name + "-" + area.name + ".1", AreaPage(area)});
  for (const std::string& topic : Topics())
    pages.push_back({command.name + "-" + topic + ".7", TopicPage(topic, TextFor(topic))});
  // The command's page names all others, theirs the command's.
  std::vector<std::string> others;
  for (size_t i = 1; i < pages.size(); ++i) {
    others.push_back(pages[i].file);
    pages[i].text += See({pages[0].file});
  }
  pages[0].text += See(others);
  return pages;
}

}  // namespace velmora::cli
