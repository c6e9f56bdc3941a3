#pragma once

#include <functional>
#include <string>

// What `action` writes to standard output at that debug level.
std::string printed(int level, const std::function<void()>& action);
