#pragma once

#include <glibmm/ustring.h>

#include <cstddef>

// One line on a survey of which so many entries are missing or cannot be right.
Glib::ustring verdict_on(std::size_t marked);
