#include "cli/finding-options.h"

#include "cli/could-not-run.h"
#include "cli/option-entry.h"

void FindingOptions::add_to(Glib::OptionGroup& options)
{
  options.add_entry(
      option_entry("format", "print findings as 'plain' lines or as 'json'", "FORMAT"), format);
  options.add_entry(option_entry("strict", "count warnings as faults, too"), strict);
}

FindingWriter FindingOptions::make_writer(Output& out) const
{
  if (format == "plain")
    return {out, FindingWriter::Format::PLAIN, strict};
  if (format == "json")
    return {out, FindingWriter::Format::JSON, strict};
  throw CouldNotRun("there is no format '" + format.raw() + "'");
}
