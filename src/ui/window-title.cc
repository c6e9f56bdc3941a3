#include "ui/window-title.h"

#include <array>
#include <cstdio>
#include <string>

namespace {

std::string date_text(int year, int month, int mday)
{
  std::array<char, 48> text; // large enough for any three ints
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, mday);
  return text.data();
}

} // namespace

Glib::ustring window_title(int year, int month, int mday, const Glib::ustring& dive_start,
                           const Glib::ustring& site, const Glib::ustring& base_title)
{
  Glib::ustring title = date_text(year, month, mday);
  if (year == 0 && month == 0 && mday == 0)
    title.clear();
  if (!dive_start.empty())
    title += " " + dive_start;
  if (!site.empty())
    title += title.empty() ? site : " - " + site;
  if (!title.empty())
    title += " - ";
  return title + base_title;
}
