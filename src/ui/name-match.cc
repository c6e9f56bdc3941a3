#include "ui/name-match.h"

#include <glib.h>

#include <algorithm>

namespace {

// In folded text, bytes beyond ASCII belong to letters.
bool is_in_word(char byte)
{
  return static_cast<unsigned char>(byte) >= 0x80 || g_ascii_isalnum(byte);
}

std::string without_accents(const Glib::ustring& text)
{
  Glib::ustring letters;
  for (const gunichar character : text.normalize(Glib::NORMALIZE_ALL))
    if (!g_unichar_ismark(character))
      letters += character;
  return letters.casefold().raw();
}

} // namespace

std::string folded_name(const Glib::ustring& text)
{
  if (!text.is_ascii())
    return without_accents(text);
  std::string letters = text.raw();
  std::transform(letters.begin(), letters.end(), letters.begin(), g_ascii_tolower);
  return letters;
}

NameMatch match_name(const std::string& name, const std::string& text)
{
  if (text.empty())
    return MATCHES_NOT;
  for (auto at = name.find(text); at != std::string::npos; at = name.find(text, at + 1)) {
    if (at == 0)
      return MATCHES_START;
    if (!is_in_word(name[at - 1]))
      return MATCHES_WORD;
  }
  return MATCHES_NOT;
}
