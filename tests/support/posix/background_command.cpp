#include "tests/support/background_command.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <utility>

#include "velmora/platform/files.h"

namespace velmora::testing {

BackgroundCommand::BackgroundCommand(const std::vector<std::string>& words, const CString& output,
                                     const CString& errors, const CString& input) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const std::string in = input.IsEmpty() ? "/dev/null" : PathForDisplay(input);
  const std::string out = PathForDisplay(output);
  const std::string err = errors.IsEmpty() ? out : PathForDisplay(errors);
  process_ = fork();
  if (process_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND;
  dup2(open(in.c_str(), O_RDONLY), STDIN_FILENO);
  dup2(open(out.c_str(), kWrite, 0600), STDOUT_FILENO);
  dup2(open(err.c_str(), kWrite, 0600), STDERR_FILENO);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

int BackgroundCommand::Wait() {
  int status = -1;
  if (process_ > 0) waitpid(static_cast<pid_t>(std::exchange(process_, 0)), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void BackgroundCommand::Kill() {
  if (process_ > 0) kill(static_cast<pid_t>(process_), SIGKILL);
  Wait();
}

}  // namespace velmora::testing
