#include "data/naive-csv-line.h"

namespace {

unsigned int byte_at(const std::string& text, std::size_t at)
{
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

// Returns the length that the lead byte gives: up to six bytes, as in the first definition of
// UTF-8.
std::size_t length_of(unsigned int lead)
{
  if (lead < 0xC0 || lead >= 0xFE)
    return 1;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : lead < 0xFC ? 5 : 6;
}

std::vector<std::string> characters_of(const std::string& line)
{
  std::vector<std::string> characters;
  for (std::size_t at = 0; at < line.size(); at += characters.back().size())
    characters.push_back(line.substr(at, length_of(byte_at(line, at))));
  return characters;
}

// Returns the length of the valid sequence at `at`, or 0 if there is none.
std::size_t valid_length(const std::string& text, std::size_t at)
{
  const unsigned int lead = byte_at(text, at);
  if (lead < 0x80)
    return lead == 0 ? 0 : 1;
  const std::size_t length = length_of(lead);
  if (length == 1 || length > 4)
    return 0;
  static const unsigned int lowest[] = {0, 0, 0x80, 0x800, 0x10000};
  unsigned int code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned int next = byte_at(text, at + i);
    if (next < 0x80 || next > 0xBF)
      return 0;
    code = code * 64 + next - 0x80;
  }
  const bool is_surrogate = code >= 0xD800 && code <= 0xDFFF;
  return code < lowest[length] || code > 0x10FFFF || is_surrogate ? 0 : length;
}

// Returns the text with a replacement character for each byte that is not valid UTF-8.
std::string with_replacements(const std::string& text)
{
  std::string valid;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = valid_length(text, at);
    valid += length == 0 ? "\xEF\xBF\xBD" : text.substr(at, length);
    at += length == 0 ? 1 : length;
  }
  return valid;
}

enum Place { FIELD_START, PLAIN, QUOTED, AFTER_QUOTE, BOTCHED };

} // namespace

NaiveCsvLine::NaiveCsvLine(const std::string& line)
{
  const std::vector<std::string> characters = characters_of(line);
  std::string text;
  Place place = FIELD_START;
  const auto end_field = [&] {
    fields.push_back(with_replacements(text));
    if (place == BOTCHED)
      botched.push_back({fields.size(), fields.back()});
    text.clear();
    place = FIELD_START;
  };

  for (std::size_t i = 0; i < characters.size(); ++i) {
    const std::string& c = characters[i];
    const bool is_last = i + 1 == characters.size();
    if (place == FIELD_START && c == "\r")
      continue;
    if (place != QUOTED && (c == "," || c == "\r")) {
      end_field();
      if (c == "," && is_last)
        end_field();
    } else if (place == FIELD_START && c == "\"") {
      place = QUOTED;
    } else if (place == QUOTED && c == "\"") {
      place = AFTER_QUOTE;
    } else if (place == AFTER_QUOTE && c == "\"") {
      text += c;
      place = QUOTED;
    } else if (place == AFTER_QUOTE) {
      text.insert(0, 1, '"');
      text += '"' + c;
      place = BOTCHED;
    } else {
      if (place == FIELD_START)
        place = PLAIN;
      const bool is_escape = c == "\\" && place != BOTCHED && !is_last;
      text += is_escape ? characters[++i] : c;
    }
  }
  if (place != FIELD_START)
    end_field();
}
