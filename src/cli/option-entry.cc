#include "cli/option-entry.h"

Glib::OptionEntry option_entry(const char* name, const char* description, const char* value,
                               char letter)
{
  Glib::OptionEntry entry;
  entry.set_long_name(name);
  entry.set_description(description);
  if (value)
    entry.set_arg_description(value);
  if (letter)
    entry.set_short_name(letter);
  return entry;
}
