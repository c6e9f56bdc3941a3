#include "cli/finding-writer.h"

#include <glibmm/ustring.h>

#include <nlohmann/json.hpp>

#include "cli/output.h"

namespace {

const char* name_of(Severity severity)
{
  switch (severity) {
  case Severity::error:
    return "error";
  case Severity::warning:
    return "warning";
  case Severity::hint:
    break;
  }
  return "hint";
}

std::string valid_text(const std::string& text)
{
  return Glib::ustring(text).make_valid().raw();
}

// Returns the text without line ends and other control characters, for a terminal.
std::string plain_text(const std::string& text)
{
  Glib::ustring plain;
  for (const gunichar character : Glib::ustring(valid_text(text)))
    plain += g_unichar_iscntrl(character) ? 0xFFFDU : character;
  return plain.raw();
}

std::string json_line(const Finding& finding)
{
  nlohmann::ordered_json object;
  object["file"] = valid_text(finding.file);
  object["line"] = nullptr;
  if (finding.line)
    object["line"] = *finding.line;
  object["rule"] = finding.rule;
  object["severity"] = name_of(finding.severity);
  object["consequence"] = valid_text(finding.consequence);
  return object.dump() + "\n";
}

} // namespace

std::string plain_line(const Finding& finding)
{
  const std::string line = finding.line ? ":" + std::to_string(*finding.line) : std::string();
  return plain_text(finding.file) + line + ": " + name_of(finding.severity) + ": " +
         plain_text(finding.consequence) + " [" + finding.rule + "]\n";
}

FindingWriter::FindingWriter(Output& the_out, Format the_format, bool is_strict)
    : out(the_out), format(the_format), strict(is_strict)
{
}

void FindingWriter::write(const Finding& finding)
{
  out.write(format == Format::JSON ? json_line(finding) : plain_line(finding));
  ++counts.at(static_cast<std::size_t>(finding.severity));
}

std::size_t FindingWriter::count(Severity severity) const
{
  return counts.at(static_cast<std::size_t>(severity));
}

bool FindingWriter::is_fault(Severity severity) const
{
  return severity == Severity::error || (strict && severity == Severity::warning);
}

ExitStatus FindingWriter::status() const
{
  const bool has_faults = count(Severity::error) > 0 || (strict && count(Severity::warning) > 0);
  return has_faults ? ExitStatus::FAULTS : ExitStatus::FINE;
}
