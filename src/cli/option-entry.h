#pragma once

#include <glibmm/optionentry.h>

// Returns an option --NAME, or --NAME=VALUE if `value` is not null. `description` and `value`
// appear in the help. `letter` is the short name, or 0 for none.
Glib::OptionEntry option_entry(const char* name, const char* description,
                               const char* value = nullptr, char letter = 0);
