#include "ui/type-ahead.h"

#include "core/text.h"

namespace {

constexpr std::uint32_t pause_ms = 1000;

// Returns the text without case and accents.
Glib::ustring folded(const Glib::ustring& text)
{
  Glib::ustring result;
  for (const gunichar c : text.normalize(Glib::NORMALIZE_ALL).casefold())
    if (!g_unichar_ismark(c))
      result += c;
  return result;
}

// Returns the first row that begins with `beginning`, or -1 if there is none. Searches from
// `start` to the end, then from the top.
int find_row(const Glib::ustring& beginning, std::size_t start,
             const std::vector<Glib::ustring>& labels)
{
  if (beginning.empty())
    return -1;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const std::size_t row = (start + i) % labels.size();
    if (begins_with(folded(trim_ws(labels[row])), beginning))
      return static_cast<int>(row);
  }
  return -1;
}

bool is_one_letter_repeated(const Glib::ustring& text)
{
  return text.find_first_not_of(text[0]) == Glib::ustring::npos;
}

} // namespace

int TypeAhead::type(gunichar letter, std::uint32_t time, int current,
                    const std::vector<Glib::ustring>& labels)
{
  if (!is_under_way(time))
    reset();
  const bool is_first = typed.empty();
  last_time = time;
  typed += folded(Glib::ustring(1, letter));

  const std::size_t here = current < 0 ? 0 : static_cast<std::size_t>(current);
  const std::size_t next = current < 0 ? 0 : here + 1;
  int row = find_row(typed, is_first ? next : here, labels);
  if (row < 0 && !typed.empty() && is_one_letter_repeated(typed))
    row = find_row(typed.substr(0, 1), next, labels);
  if (row < 0)
    reset();
  return row;
}

bool TypeAhead::is_under_way(std::uint32_t time) const
{
  return !typed.empty() && time - last_time < pause_ms;
}

void TypeAhead::reset()
{
  typed.clear();
}
