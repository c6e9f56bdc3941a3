#include "cli/name-markup.h"

#include "core/markup.h"

#include "cli/table-check.h"

namespace {

bool has_tags(const std::string& text)
{
  return text.find('<') != std::string::npos;
}

void report_markup(TableCheck& table, const std::string& text)
{
  table.fault(DataRule::MARKUP_BROKEN,
              "The markup of " + quoted(text) + " is broken: users see the tags");
}

} // namespace

void check_name_markup(TableCheck& table, const std::string& name)
{
  if (has_tags(name) && !is_markup(escape_ampersands(name)))
    report_markup(table, name);
}

void check_text_markup(TableCheck& table, const std::string& text)
{
  if (has_tags(text) && !is_label_markup(text))
    report_markup(table, text);
}
