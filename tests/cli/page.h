// The examples of a page of documentation, docs/*.md. A block "console" holds commands and what they print; a
// block with a language and a name, as "text borings.csv", is a file that the commands after it find.
//
//   $ LINE         a command for the shell; lines "> " below it belong to it
//   ...            any lines
//   (exit status N)   after the output of a command that does not end with 0
#ifndef VELMORA_TESTS_CLI_PAGE_H_
#define VELMORA_TESTS_CLI_PAGE_H_

#include <functional>
#include <string>

namespace velmora::testing {

struct PageActions {
  // Runs a command and returns its output, with its exit status, as the page shows it.
  std::function<std::string(const std::string& line)> run;
  std::function<void(const std::string& name, const std::string& content)> write_file;
};

// The page with the actual output where it differs from the one in the page.
std::string PlayPage(const std::string& page, const PageActions& actions);

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_CLI_PAGE_H_
