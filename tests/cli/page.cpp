#include "tests/cli/page.h"

#include <span>
#include <sstream>
#include <vector>

namespace velmora::testing {
namespace {

using PageLines = std::vector<std::string>;

PageLines LinesOf(const std::string& text) {
  PageLines lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string JoinedLines(std::span<const std::string> lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

bool MatchesShown(std::span<const std::string> shown, std::span<const std::string> actual) {
  if (shown.empty()) return actual.empty();
  if (shown[0] == "...")
    return MatchesShown(shown.subspan(1), actual) ||
           (!actual.empty() && MatchesShown(shown, actual.subspan(1)));
  return !actual.empty() && shown[0] == actual[0] && MatchesShown(shown.subspan(1), actual.subspan(1));
}

std::string PlayConsole(std::span<const std::string> lines, const PageActions& actions) {
  std::string played;
  for (size_t i = 0; i < lines.size();) {
    std::string command = lines[i].starts_with("$ ") ? lines[i].substr(2) : "";
    played += lines[i++] + "\n";
    if (command.empty()) continue;
    for (; i < lines.size() && lines[i].starts_with("> "); ++i) {
      command += "\n" + lines[i].substr(2);
      played += lines[i] + "\n";
    }
    const size_t from = i;
    while (i < lines.size() && !lines[i].starts_with("$ ")) ++i;
    const std::span<const std::string> shown = lines.subspan(from, i - from);
    const std::string actual = actions.run(command);
    played += MatchesShown(shown, LinesOf(actual)) ? JoinedLines(shown) : actual;
  }
  return played;
}

}  // namespace

std::string PlayPage(const std::string& page, const PageActions& actions) {
  std::string played;
  const PageLines lines = LinesOf(page);
  for (size_t i = 0; i < lines.size(); ++i) {
    played += lines[i] + "\n";
    if (!lines[i].starts_with("```")) continue;
    const size_t from = i + 1;
    while (i + 1 < lines.size() && lines[i + 1] != "```") ++i;
    const auto inside = std::span(lines).subspan(from, i + 1 - from);
    const std::string& info = lines[from - 1];
    if (info == "```console") {
      played += PlayConsole(inside, actions);
    } else {
      played += JoinedLines(inside);
      if (const size_t blank = info.find(' '); blank != std::string::npos)
        actions.write_file(info.substr(blank + 1), JoinedLines(inside));
    }
    if (++i < lines.size()) played += lines[i] + "\n";
  }
  return played;
}

}  // namespace velmora::testing
