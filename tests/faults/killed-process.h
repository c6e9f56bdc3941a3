#pragma once

#include <functional>
#include <string>

// Runs `action` in a copy of this process and kills the copy before its `nth` system call,
// counted from 1. Returns false if it ends before that. REQUIRES: the action does not use the
// display, which the copy shares.
bool killed_at_system_call(int nth, const std::function<void()>& action);

// Like killed_at_system_call(), but the copy is not killed. It waits there until this process has
// done `meanwhile`, and then continues to its end.
bool held_at_system_call(int nth, const std::function<void()>& action,
                         const std::function<void()>& meanwhile);

// Runs `action` in a copy of this process and kills the first process that runs the command
// `command` before its `nth` system call. The copy itself continues to its end. Returns false if
// the command ends before that.
bool command_killed_at_system_call(const std::string& command, int nth,
                                   const std::function<void()>& action);
