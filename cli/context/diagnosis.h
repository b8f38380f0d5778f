// What a check found, with its consequence and its correction.
#ifndef VELMORA_CLI_CONTEXT_DIAGNOSIS_H_
#define VELMORA_CLI_CONTEXT_DIAGNOSIS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace velmora::cli {

struct Diagnosis {
  std::string file;
  std::int64_t line = 0;  // from 1; 0: the file as a whole
  std::string finding;
  std::string meaning;  // what follows from it, and what to do
  std::string command;  // that corrects it, words in capitals to be filled in; empty when no command does
};
using Diagnoses = std::vector<Diagnosis>;

}  // namespace velmora::cli

#endif  // VELMORA_CLI_CONTEXT_DIAGNOSIS_H_
