// The output of a command: standard output, or a file that appears only when it is complete.
#ifndef VELMORA_CLI_OUTPUT_OUTPUT_FILE_H_
#define VELMORA_CLI_OUTPUT_OUTPUT_FILE_H_

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/platform/files.h"

namespace velmora::cli {

class OutputFile {
 public:
  OutputFile() : stream_(stdout) {}
  // Standard output for an empty name and for "-". A pipe or a device is written as it comes; any other
  // file is replaced in one step by Finish. Throws a Refusal when it cannot be written, and when it is
  // one of `inputs`, the files that the command reads or changes ("-" is standard input).
  OutputFile(const std::string& file, const std::vector<std::string>& inputs);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Of the terminal that it goes to; 0 and false for anything else.
  size_t TerminalColumns() const;
  bool ShowsColours() const;

  void Write(std::string_view text);
  void Finish();

 private:
  void Fail() const;

  std::string file_;
  std::FILE* stream_ = nullptr;
  std::optional<FileReplacement> replacement_;
};

// Throws a Refusal for a file that could not be written and is as it was.
[[noreturn]] void RefuseUnwritable(const std::string& file);

}  // namespace velmora::cli

#endif  // VELMORA_CLI_OUTPUT_OUTPUT_FILE_H_
