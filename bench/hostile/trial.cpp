#include "bench/hostile/trial.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace velmora::bench {
namespace {

// Unlike the clock it does not run for other programs.
double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

[[noreturn]] void Child(const std::function<void()>& action, int result) {
  const rlimit work{kMostSeconds, kMostSeconds + 5};
  const rlimit memory{rlim_t{kMostMegabytes} << 20, rlim_t{kMostMegabytes} << 20};
  setrlimit(RLIMIT_CPU, &work);
  setrlimit(RLIMIT_AS, &memory);
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
  const double before = ProcessorSeconds();
  action();
  const double seconds = ProcessorSeconds() - before;
  const bool told = write(result, &seconds, sizeof seconds) == sizeof seconds;
  std::_Exit(told ? 0 : 1);
}

std::string HowItEnded(int status) {
  if (WIFSIGNALED(status))
    return WTERMSIG(status) == SIGXCPU ? "takes too long" : "signal " + std::to_string(WTERMSIG(status));
  return "exit " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

Trial RunAlone(const std::function<void()>& action) {
  Trial trial;
  int ends[2];
  std::fflush(nullptr);
  if (pipe2(ends, O_CLOEXEC) != 0) return {.failure = "no pipe"};
  const pid_t child = fork();
  if (child < 0) return {.failure = "no process"};
  if (child == 0) Child(action, ends[1]);
  close(ends[1]);
  const bool told = read(ends[0], &trial.seconds, sizeof trial.seconds) == sizeof trial.seconds;
  close(ends[0]);
  int status = 0;
  rusage used{};
  wait4(child, &status, 0, &used);
  trial.megabytes = static_cast<double>(used.ru_maxrss) / 1024;
  if (!told || status != 0) trial.failure = HowItEnded(status);
  return trial;
}

}  // namespace velmora::bench
