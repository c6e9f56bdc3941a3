#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <string_view>
#include <vector>

// Is told of a field with botched quoting: its number in the line, from 1, and its text.
using BotchedField = std::function<void(std::size_t, const Glib::ustring&)>;

// Splits one line of a data file (without its line feed) into `fields`, whose
// former content is lost. The one place that knows the quoting rules. Text that
// follows a quoted field is botched quoting: the field keeps it, quotes and
// all, and `botched` is called. Bytes that are not UTF-8 become U+FFFD in their
// field.
void split_csv_line(std::string_view line, std::vector<Glib::ustring>& fields,
                    const BotchedField& botched);
