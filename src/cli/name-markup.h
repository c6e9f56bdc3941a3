#pragma once

#include <string>

class TableCheck;

// Reports a name with tags that Pango cannot parse, which is shown tags and all. An ampersand
// is always plain text in a name.
void check_name_markup(TableCheck& table, const std::string& name);

// The same for a text in which an ampersand is part of the markup, if it has tags at all.
void check_text_markup(TableCheck& table, const std::string& text);
