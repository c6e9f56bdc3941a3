#include "faults/killed-process.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

// How the system marks a stop for a call: ptrace(2), PTRACE_O_TRACESYSGOOD.
constexpr int stopped_for_call = SIGTRAP | 0x80;

[[noreturn]] void be_watched(const std::function<void()>& action)
{
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
  raise(SIGSTOP);
  action();
  _exit(0);
}

int wait_for(pid_t process)
{
  int status = 0;
  EXPECT_EQ(process, waitpid(process, &status, 0));
  return status;
}

pid_t start_watched(const std::function<void()>& action)
{
  const pid_t process = fork();
  if (process == 0)
    be_watched(action);
  wait_for(process);
  ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD);
  return process;
}

// Lets it run until it is about to make its `nth` call. False if it ended before.
bool run_to_call(pid_t process, int nth)
{
  bool is_inside = false; // each call stops twice: before and after
  int calls = 0;
  long signal = 0; // to hand on
  while (true) {
    ptrace(PTRACE_SYSCALL, process, nullptr, signal);
    const int status = wait_for(process);
    if (!WIFSTOPPED(status)) {
      EXPECT_TRUE(WIFEXITED(status)) << "it ended by itself: " << status;
      return false;
    }
    signal = WSTOPSIG(status) == stopped_for_call ? 0 : WSTOPSIG(status);
    if (signal != 0)
      continue;
    is_inside = !is_inside;
    if (is_inside && ++calls == nth)
      return true;
  }
}

} // namespace

bool killed_at_system_call(int nth, const std::function<void()>& action)
{
  const pid_t process = start_watched(action);
  if (!run_to_call(process, nth))
    return false;
  kill(process, SIGKILL);
  wait_for(process);
  return true;
}

bool held_at_system_call(int nth, const std::function<void()>& action,
                         const std::function<void()>& meanwhile)
{
  const pid_t process = start_watched(action);
  if (!run_to_call(process, nth))
    return false;
  meanwhile();
  ptrace(PTRACE_DETACH, process, nullptr, 0);
  const int status = wait_for(process);
  EXPECT_TRUE(WIFEXITED(status)) << "it ended by itself: " << status;
  return true;
}
