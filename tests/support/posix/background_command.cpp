#include "tests/support/background_command.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "velmora/platform/files.h"

namespace velmora::testing {

BackgroundCommand::BackgroundCommand(const std::vector<std::string>& words, const CString& output) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const std::string file = PathForDisplay(output);
  process_ = fork();
  if (process_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int to = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(to, STDOUT_FILENO);
  dup2(to, STDERR_FILENO);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

void BackgroundCommand::Kill() {
  if (process_ <= 0) return;
  kill(static_cast<pid_t>(process_), SIGKILL);
  waitpid(static_cast<pid_t>(process_), nullptr, 0);
  process_ = 0;
}

}  // namespace velmora::testing
