#pragma once

#include <glibmm/optionentry.h>

// An option --NAME, or --NAME=VALUE if `value` names what it takes; `letter` is its short
// name, 0 if it has none. `description` stands in the help.
Glib::OptionEntry option_entry(const char* name, const char* description,
                               const char* value = nullptr, char letter = 0);
