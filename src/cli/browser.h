#pragma once

#include <string>

// Opens an HTML page in the user's browser. Writes the page to a file that only the user can
// read, in the directory mavo-surveys of the user's runtime directory, which the system clears
// at logout. Without a runtime directory, it uses the cache directory. `source` is the path of
// the file that the page shows; a new page for the same path replaces the old page. Throws
// CouldNotRun if there is no browser or the page cannot be written.
void open_in_browser(const std::string& page, const std::string& source);
