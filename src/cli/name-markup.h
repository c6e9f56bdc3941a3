#pragma once

#include <string>

class TableCheck;

// Reports a name with tags that Pango cannot parse: the program displays such a name with its
// tags. An ampersand in a name is always plain text.
void check_name_markup(TableCheck& table, const std::string& name);

// Does the same for a text that can have entities: if it has tags, an ampersand is markup.
void check_text_markup(TableCheck& table, const std::string& text);
