// A program that runs beside the test and is killed at its end if it has not ended before.
#ifndef VELMORA_TESTS_SUPPORT_BACKGROUND_COMMAND_H_
#define VELMORA_TESTS_SUPPORT_BACKGROUND_COMMAND_H_

#include <cstdint>
#include <string>
#include <vector>

#include "velmora/text/string.h"

namespace velmora::testing {

class BackgroundCommand {
 public:
  // Program and arguments in UTF-8. Standard output goes to the file `output`, standard error to `errors` or,
  // without one, to `output` too; standard input is the file `input` or empty.
  BackgroundCommand(const std::vector<std::string>& words, const CString& output, const CString& errors = {},
                    const CString& input = {});
  ~BackgroundCommand() { Kill(); }
  BackgroundCommand(const BackgroundCommand&) = delete;
  BackgroundCommand& operator=(const BackgroundCommand&) = delete;

  // The exit status; -1 when it was killed or could not be started.
  int Wait();
  void Kill();
  // The system's process; 0 when it could not be started, and after its end.
  std::intptr_t Process() const { return process_; }

 private:
  std::intptr_t process_ = 0;
};

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_SUPPORT_BACKGROUND_COMMAND_H_
