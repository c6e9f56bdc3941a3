#pragma once

#include <string>

// Opens an HTML page in the user's browser. The page is a file that only the user can read,
// in the directory mavo-surveys of the user's runtime directory, which the system clears at
// logout, or else of the cache directory. There is one page for each `source`, the path of
// what it shows. Throws CouldNotRun if there is no browser or the page cannot be written.
void open_in_browser(const std::string& page, const std::string& source);
