// A program that runs beside the test, and is killed at the end of it if it has not ended before.
#ifndef VELMORA_TESTS_SUPPORT_BACKGROUND_COMMAND_H_
#define VELMORA_TESTS_SUPPORT_BACKGROUND_COMMAND_H_

#include <cstdint>
#include <string>
#include <vector>

#include "velmora/text/string.h"

namespace velmora::testing {

class BackgroundCommand {
 public:
  // Program and arguments in UTF-8; what it writes goes to `output`.
  BackgroundCommand(const std::vector<std::string>& words, const CString& output);
  ~BackgroundCommand() { Kill(); }
  BackgroundCommand(const BackgroundCommand&) = delete;
  BackgroundCommand& operator=(const BackgroundCommand&) = delete;

  void Kill();
  // As the system names it; 0 when it could not be started.
  std::intptr_t Process() const { return process_; }

 private:
  std::intptr_t process_ = 0;
};

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_SUPPORT_BACKGROUND_COMMAND_H_
