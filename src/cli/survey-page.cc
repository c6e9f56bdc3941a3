#include "cli/survey-page.h"

#include <string_view>

namespace {

const char* const style = R"css(
:root { color-scheme: light dark; --line: #b8c4cc; --faint: #eef3f6; --strong: #0b4f6c; --fault: #b3261e; }
@media (prefers-color-scheme: dark) {
  :root { --line: #45525a; --faint: #1d262b; --strong: #8fd0ee; --fault: #ffb4ab; }
}
body { font: 1rem/1.45 system-ui, sans-serif; max-width: 52rem; margin: 0 auto; padding: 1.5rem 1rem; overflow-wrap: anywhere; }
h1 { font-size: 1.5rem; line-height: 1.2; color: var(--strong); margin: 0 0 1rem; }
h2 { font-size: 1.15rem; color: var(--strong); margin: 1.75rem 0 .5rem; }
dl { display: grid; grid-template-columns: minmax(8rem, max-content) 1fr; margin: 0; }
dt, dd { margin: 0; padding: .3rem 1.25rem .3rem 0; border-top: 1px solid var(--line); }
dd { padding-right: 0; }
dt { font-weight: 600; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .3rem .6rem .3rem 0; border-top: 1px solid var(--line); }
th { background: var(--faint); }
th:first-child, td:first-child { padding-left: .4rem; font-variant-numeric: tabular-nums; white-space: nowrap; }
.faults { border-left: .25rem solid var(--fault); padding-left: 1rem; }
.faults h2 { color: var(--fault); }
footer { margin-top: 2rem; font-size: .85rem; opacity: .8; }
@media screen and (max-width: 34rem) {
  dl { display: block; }
  dd { border-top: 0; padding-top: 0; }
  thead { display: none; }
  tr { display: block; border-top: 1px solid var(--line); padding: .3rem 0; }
  td { display: block; border: 0; padding: 0; }
  td:first-child { padding: 0; float: right; opacity: .7; }
}
@media print {
  :root { color-scheme: light; --line: #999; --faint: #fff; --strong: #000; --fault: #000; }
  body { max-width: none; padding: 0; font-size: 9.5pt; line-height: 1.3; }
  dt, dd, th, td { padding-top: .15rem; padding-bottom: .15rem; }
  h1 { font-size: 15pt; }
  h2 { font-size: 12pt; margin-top: 1rem; }
  tr, dl { break-inside: avoid; }
  h2 { break-after: avoid; }
  thead { display: table-header-group; }
}
@page { margin: 15mm; }
)css";

bool is_html_character(gunichar c)
{
  const bool is_control = (c < 0x20 && c != '\t' && c != '\n') || (c >= 0x7F && c <= 0x9F);
  return !is_control && (c & 0xFFFEU) != 0xFFFEU && !(c >= 0xFDD0 && c <= 0xFDEF);
}

// Returns `text` with escapes for the content of elements and attributes in double quotes.
// Replaces characters that XML does not allow by U+FFFD.
std::string escaped(const Glib::ustring& text)
{
  std::string markup;
  for (const gunichar c : text.make_valid()) {
    if (c == '&')
      markup += "&amp;";
    else if (c == '<')
      markup += "&lt;";
    else if (c == '>')
      markup += "&gt;";
    else if (c == '"')
      markup += "&quot;";
    else
      markup += Glib::ustring(1, is_html_character(c) ? c : 0xFFFDU).raw();
  }
  return markup;
}

std::string element(const char* name, const Glib::ustring& text)
{
  return std::string("<") + name + ">" + escaped(text) + "</" + name + ">";
}

// Returns a text of users or data as an element that isolates its writing direction.
std::string isolated(const Glib::ustring& text)
{
  return "<bdi>" + escaped(text) + "</bdi>";
}

std::string page(const Glib::ustring& title, const std::string& body)
{
  return R"(<!DOCTYPE html>
<html lang="en" xmlns="http://www.w3.org/1999/xhtml">
<head>
<meta charset="utf-8"/>
<meta name="viewport" content="width=device-width, initial-scale=1"/>
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'"/>
)" + element("title", title) +
         "\n<style>" + style + "</style>\n</head>\n<body>\n" + body + "</body>\n</html>\n";
}

std::string list_of(const std::vector<ReadableSurvey::Fact>& facts)
{
  std::string list = "<dl>\n";
  for (const auto& fact : facts)
    list += element("dt", fact.label) + "<dd>" +
            (fact.text.empty() ? "\u2013" : isolated(fact.text)) + "</dd>\n";
  return list + "</dl>\n";
}

std::string table_of(const std::vector<ReadableSurvey::Species>& species)
{
  if (species.empty())
    return "";
  std::string table = "<table>\n<thead><tr><th scope=\"col\">ID</th><th scope=\"col\">Common name"
                      "</th><th scope=\"col\">Scientific name</th><th scope=\"col\">Family</th>"
                      "<th scope=\"col\">Number seen</th></tr></thead>\n<tbody>\n";
  for (const auto& row : species) {
    table += "<tr>" + element("td", std::to_string(row.id)) + "<td>" + isolated(row.common_name) +
             "</td><td><i>" + isolated(row.scientific_name) + "</i></td><td>" +
             isolated(row.family) + "</td><td>" + isolated(row.abundance) + "</td></tr>\n";
  }
  return table + "</tbody>\n</table>\n";
}

} // namespace

std::string survey_page(const ReadableSurvey& survey, const std::string& file)
{
  std::string body = "<main>\n" + element("h1", survey.title) + "\n";
  if (!survey.complaints.empty())
    body += "<section class=\"faults\">\n<h2>Missing or not right</h2>\n" +
            list_of(survey.complaints) + "</section>\n";
  body += "<section>\n<h2>Survey</h2>\n" + list_of(survey.facts) + "</section>\n<section>\n" +
          element("h2", "Species seen: " + std::to_string(survey.species.size())) + "\n" +
          table_of(survey.species) + "</section>\n</main>\n<footer>" + isolated(file) +
          "</footer>\n";
  return page(survey.title, body);
}

std::string failure_page(const std::string& file, const Glib::ustring& reason)
{
  const Glib::ustring title = "This survey cannot be shown";
  return page(title, "<main>\n" + element("h1", title) + "\n<p>" + isolated(file) + "</p>\n<p>" +
                         isolated(reason) + "</p>\n</main>\n");
}
