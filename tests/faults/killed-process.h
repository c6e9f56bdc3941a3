#pragma once

#include <functional>
#include <string>

// Does `action` in a copy of this process that is killed as it is about to make
// its `nth` system call, counted from 1. False if it ended before that. The
// action must not use the display, which the copy shares.
bool killed_at_system_call(int nth, const std::function<void()>& action);

// The same, but the copy is not killed: it waits there until this process has
// done `meanwhile`, and then goes on to its end.
bool held_at_system_call(int nth, const std::function<void()>& action,
                         const std::function<void()>& meanwhile);

// Does `action` in a copy of this process and kills the first process that it
// starts to run `command`, by that name, before that one's `nth` system call; the
// copy itself goes on to its end. False if the command ended before that.
bool command_killed_at_system_call(const std::string& command, int nth,
                                   const std::function<void()>& action);
