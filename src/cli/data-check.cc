#include "cli/data-check.h"

#include "cli/data-set-check.h"

void DataCheck::add_options(Glib::OptionGroup& options)
{
  finding_options.add_to(options);
}

ExitStatus DataCheck::run(const std::vector<std::string>& arguments, Output& out)
{
  FindingWriter writer = finding_options.make_writer(out);
  for (const std::string& dir : arguments)
    for (const Finding& finding : check_data_set(dir))
      writer.write(finding);
  return writer.status();
}
