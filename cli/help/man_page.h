// Manual pages in the language of man(7): one of the command, one an area, one a topic.
#ifndef VELMORA_CLI_HELP_MAN_PAGE_H_
#define VELMORA_CLI_HELP_MAN_PAGE_H_

#include <string>
#include <vector>

#include "cli/help/description.h"

namespace velmora::cli {

struct ManPage {
  std::string file;  // "velmora-align.1", "velmora-formats-of-files.7"
  std::string text;
};
std::vector<ManPage> ManPages(const VerbText& command);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_HELP_MAN_PAGE_H_
