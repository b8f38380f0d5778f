// What a file says about itself.
#ifndef VELMORA_CLI_REPORT_DOCUMENT_FACTS_H_
#define VELMORA_CLI_REPORT_DOCUMENT_FACTS_H_

#include <cstdint>
#include <string>

namespace velmora::cli {

// The texts are UTF-8 and may be empty.
struct DocumentFacts {
  std::string title;
  std::string author;
  std::int64_t created = 0;  // seconds since 1970 UTC
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_REPORT_DOCUMENT_FACTS_H_
