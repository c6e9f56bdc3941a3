#pragma once

#include <glibmm/ustring.h>

#include <string>

// The whole file's bytes. Empty if the library says that it could not load it;
// a Glib::Error that it throws passes through.
Glib::ustring read_file_contents(const std::string& path);
