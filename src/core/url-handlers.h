#pragma once

#include <string>

// These functions check and change the default handlers of URL schemes: the programs that open
// links.
//
// If a scheme has no handler, the program registers the system's "open" command as the
// user's default. On some systems "open" is another name of xdg-open. xdg-open starts the
// default handler, so as the default handler it would start itself without end.

// Returns whether the "open" command of the search path can be registered: it exists and
// does not resolve to xdg-open.
bool has_open_command();

// Returns whether the handler of `scheme`, such as "http", is an "open" that an earlier start
// registered and that would start itself without end.
bool has_endless_handler(const std::string& scheme);

// Returns whether a program opens addresses of `scheme`. An endless handler counts as none.
bool has_url_handler(const std::string& scheme);

// Removes the user's registrations of "open" by earlier starts: the desktop files below
// `data_dir` and their entries in mimeapps.list in `config_dir`. Keeps all other entries.
// Ignores failures.
void remove_open_handlers(const std::string& data_dir, const std::string& config_dir);

// Registers "open" for each of http, https and mailto that has no handler. If "open" cannot be
// registered, calls remove_open_handlers() first and then registers nothing. Prints to standard
// output what it finds.
void check_url_handlers();
