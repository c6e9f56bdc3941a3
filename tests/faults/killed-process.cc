#include "faults/killed-process.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <set>
#include <utility>

namespace {

// The signal of a stop for a system call: ptrace(2), PTRACE_O_TRACESYSGOOD.
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

pid_t start_watched(const std::function<void()>& action, long options = PTRACE_O_TRACESYSGOOD)
{
  const pid_t process = fork();
  if (process == 0)
    be_watched(action);
  wait_for(process);
  ptrace(PTRACE_SETOPTIONS, process, nullptr, options);
  return process;
}

// Lets the process run until it is going to make its `nth` system call. Returns false if it ends
// before.
bool run_to_call(pid_t process, int nth)
{
  bool is_inside = false; // each call stops the process twice: before and after
  int calls = 0;
  long signal = 0; // the signal to deliver
  while (true) {
    ptrace(PTRACE_SYSCALL, process, nullptr, signal);
    const int status = wait_for(process);
    if (!WIFSTOPPED(status)) {
      EXPECT_TRUE(WIFEXITED(status)) << "a signal ended it: " << status;
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

// A traced process and all processes that it starts, until they end.
class Family
{
public:
  Family(pid_t first, std::string command_) : members{first}, command(std::move(command_)) {}

  // Lets the processes run until all have ended. Kills the one that runs the command before its
  // `nth` system call. Returns false if it makes fewer calls.
  bool run(int nth)
  {
    resume(*members.begin());
    while (!members.empty()) {
      int status = 0;
      const pid_t process = waitpid(-1, &status, __WALL);
      if (process < 0)
        break;
      if (WIFSTOPPED(status))
        handle_stop(process, status, nth);
      else
        members.erase(process);
    }
    return was_killed;
  }

private:
  // Handles a process that has stopped.
  void handle_stop(pid_t process, int status, int nth)
  {
    const bool is_new = members.insert(process).second;
    if (status >> 8 == (SIGTRAP | PTRACE_EVENT_EXEC << 8) && watched == 0 && runs_command(process))
      watched = process;
    if (process == watched && WSTOPSIG(status) == stopped_for_call && is_due(nth)) {
      was_killed = kill(process, SIGKILL) == 0;
      return;
    }
    const bool is_signal = status >> 16 == 0 && WSTOPSIG(status) != stopped_for_call;
    const bool is_beginning = is_new && WSTOPSIG(status) == SIGSTOP;
    resume(process, is_signal && !is_beginning ? WSTOPSIG(status) : 0);
  }

  // Each call stops the process twice, before and after. The first stop is after the call that
  // started the command.
  bool is_due(int nth) { return stops++ % 2 == 1 && stops / 2 == nth; }

  bool runs_command(pid_t process) const
  {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    return name == command;
  }

  void resume(pid_t process, long signal = 0) const
  {
    ptrace(process == watched ? PTRACE_SYSCALL : PTRACE_CONT, process, nullptr, signal);
  }

  std::set<pid_t> members;
  const std::string command;
  pid_t watched = 0; // the process that runs the command; 0 until it exists
  int stops = 0;
  bool was_killed = false;
};

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
  EXPECT_TRUE(WIFEXITED(status)) << "a signal ended it: " << status;
  return true;
}

bool command_killed_at_system_call(const std::string& command, int nth,
                                   const std::function<void()>& action)
{
  const long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACEEXEC | PTRACE_O_TRACEFORK |
                       PTRACE_O_TRACEVFORK | PTRACE_O_TRACECLONE;
  return Family(start_watched(action, options), command).run(nth);
}
