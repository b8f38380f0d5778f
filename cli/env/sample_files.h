// The files of the sample installation, carried in the command (examples/installation).
#ifndef VELMORA_CLI_ENV_SAMPLE_FILES_H_
#define VELMORA_CLI_ENV_SAMPLE_FILES_H_

#include <span>
#include <string_view>

namespace velmora::cli {

struct SampleFile {
  const wchar_t* name;
  std::string_view bytes;
};

std::span<const SampleFile> SampleFiles();

}  // namespace velmora::cli

#endif  // VELMORA_CLI_ENV_SAMPLE_FILES_H_
