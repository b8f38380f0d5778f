#include "tests/platform/posix_processes.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

namespace velmora {

void RunTogether(int count, const std::function<bool(const CString& name)>& write) {
  std::vector<pid_t> writers;
  for (int i = 0; i < count; ++i) {
    writers.push_back(fork());
    if (writers.back() == 0) _exit(write(FromUtf8(std::to_string(i))) ? 0 : 1);
  }
  for (const pid_t writer : writers) {
    int status = -1;
    EXPECT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
  }
}

pid_t StartTurns(const std::function<bool()>& turn) {
  const pid_t process = fork();
  while (process == 0)
    if (!turn()) _exit(1);
  return process;
}

void Kill(pid_t process) {
  kill(process, SIGKILL);
  int status = 0;
  waitpid(process, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
}

}  // namespace velmora
