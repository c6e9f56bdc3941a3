#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <string_view>
#include <vector>

// A callback for a field with botched quoting. Receives the field's number in the line, which
// starts at 1, and the field's text.
using BotchedField = std::function<void(std::size_t, const Glib::ustring&)>;

// Splits one line of a data file, without its line feed, into `fields` and replaces their
// previous content. docs/data-files.md describes the quoting rules. Text between a closing
// quote and the next comma is botched quoting: the field then includes that text and its own
// quotes, and the function calls `botched`. Bytes that are not valid UTF-8 become U+FFFD.
void split_csv_line(std::string_view line, std::vector<Glib::ustring>& fields,
                    const BotchedField& botched);
