#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <string>
#include <vector>

// Splits one line of a data file (without its line feed) into `fields`, whose
// former content is lost. The one place that knows the quoting rules. Text that
// follows a quoted field is botched quoting: the field keeps it, quotes and
// all, and `botched` is called with the field's number, from 1, and its text.
// Bytes that are not UTF-8 become U+FFFD in their field.
void split_csv_line(const std::string& line, std::vector<Glib::ustring>& fields,
                    const std::function<void(std::size_t, const Glib::ustring&)>& botched);
