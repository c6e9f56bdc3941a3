#pragma once

#include <string>

// The programs of the system that open links: the default handlers of URL schemes.
//
// Where a scheme has none, the program registers the system's "open" command as the
// user's default. On some systems "open" is another name of xdg-open, which starts the
// default handler: as that handler it would start itself without end.

// Whether the command "open" of the search path can be registered: it exists, and does
// not resolve to xdg-open.
bool has_open_command();

// Whether the handler of that scheme ("http") is an "open" that an earlier start registered
// and that must not be started: see above.
bool has_endless_handler(const std::string& scheme);

// Whether a program opens addresses of that scheme. An endless handler counts as none.
bool has_url_handler(const std::string& scheme);

// Removes what earlier starts registered as "open" for the user: the desktop files below
// `data_dir`, and their entries in the file mimeapps.list of `config_dir`. Other entries
// stay. What cannot be removed stays too, without a complaint.
void remove_open_handlers(const std::string& data_dir, const std::string& config_dir);

// Sees to it, as far as possible, that addresses of http, https and mailto can be opened.
// Says on standard output what it finds. A start that finds what it needs changes nothing.
void check_url_handlers();
