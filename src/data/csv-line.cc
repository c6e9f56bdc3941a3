#include "data/csv-line.h"

#include <glib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

bool is_valid(std::string_view text)
{
  return g_utf8_validate_len(text.data(), text.size(), nullptr) != 0;
}

constexpr std::uint64_t every_byte = 0x0101'0101'0101'0101;
constexpr std::uint64_t high_bits = 0x8080'8080'8080'8080;

// Not 0 if one of the eight bytes is `c`.
std::uint64_t has(std::uint64_t bytes, char c)
{
  const std::uint64_t difference = bytes ^ (every_byte * static_cast<unsigned char>(c));
  return (difference - every_byte) & ~difference & high_bits;
}

// What matters of a line: whether bytes that make others mean something else, or that
// are no text in ASCII, are among them. Eight at a time, since all lines are looked at.
class LineContents
{
public:
  explicit LineContents(std::string_view line)
  {
    if (line.size() < step) {
      char padded[step] = "       ";
      std::copy(line.begin(), line.end(), padded);
      look_at(padded);
      return;
    }
    for (std::size_t at = 0; at + step < line.size(); at += step)
      look_at(line.data() + at);
    look_at(line.data() + line.size() - step);
  }
  bool has_syntax() const { return syntax != 0; }
  bool is_ascii() const { return others == 0; }

private:
  static constexpr std::size_t step = sizeof(std::uint64_t);

  void look_at(const char* text)
  {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, step);
    syntax |= has(bytes, '\\') | has(bytes, '\r');
    others |= (bytes & high_bits) | has(bytes, '\0');
  }

  std::uint64_t syntax = 0;
  std::uint64_t others = 0;
};

// Whether a byte decides where a field ends only if it is a comma or a quote: there
// is no backslash or carriage return, and no character that could swallow another.
bool is_simple(std::string_view line)
{
  const LineContents contents(line);
  return !contents.has_syntax() && (contents.is_ascii() || is_valid(line));
}

// A walk along the bytes of a line, one UTF-8 sequence at a time.
class LineWalk
{
public:
  explicit LineWalk(std::string_view line)
      : pos(line.data()), end(pos + line.size()), simple(is_simple(line))
  {
  }

  bool at_end() const { return pos == end; }
  bool at(char c) const { return !at_end() && *pos == c; }
  bool at_field_end() const { return at_end() || *pos == ',' || *pos == '\r'; }
  // Whether all that is taken is valid.
  bool is_valid() const { return simple; }

  void skip() { ++pos; }

  // Appends the character here to `text`. Its length is what its lead byte
  // says, but never more than the line has.
  void take(std::string& text)
  {
    const auto lead = static_cast<unsigned char>(*pos);
    take_up_to(pos + std::min<std::ptrdiff_t>(g_utf8_skip[lead], end - pos), text);
  }

  // The same, but a backslash stands for the character behind it. At the end of
  // the line it stands for itself.
  void take_escaped(std::string& text)
  {
    if (*pos == '\\' && end - pos > 1)
      ++pos;
    take(text);
  }

  // Appends what stands before the next `stop`, as far as that is known to stand for
  // itself: all of it in nearly all lines.
  void take_run(char stop, std::string& text)
  {
    if (!simple)
      return;
    const void* const found = std::memchr(pos, stop, static_cast<std::size_t>(end - pos));
    take_up_to(found ? static_cast<const char*>(found) : end, text);
  }

private:
  void take_up_to(const char* stop, std::string& text)
  {
    text.append(pos, static_cast<std::size_t>(stop - pos));
    pos = stop;
  }

  const char* pos;
  const char* const end;
  const bool simple;
};

void read_unquoted(LineWalk& walk, std::string& text)
{
  walk.take_run(',', text);
  while (!walk.at_field_end())
    walk.take_escaped(text);
}

// Stands behind the opening quote. A quote that is never closed ends with the line.
void read_quoted(LineWalk& walk, std::string& text)
{
  for (walk.take_run('"', text); !walk.at_end(); walk.take_run('"', text)) {
    if (walk.at('"')) {
      walk.skip();
      if (!walk.at('"'))
        return;
      walk.take(text);
    } else {
      walk.take_escaped(text);
    }
  }
}

// What follows a quoted field up to the field's end, put behind it as it stands.
void read_botched_rest(LineWalk& walk, std::string& text)
{
  text = '"' + text + '"';
  while (!walk.at_field_end())
    walk.take(text);
}

// The library's collation reads past the end of text that is not valid UTF-8,
// so none may get into a table.
void mend(std::string& text)
{
  if (is_valid(text))
    return;
  text = Glib::ustring(text).make_valid().raw();
}

// The fields of one line; the strings of the line before are used again.
class FieldList
{
public:
  explicit FieldList(std::vector<Glib::ustring>& the_fields) : fields(the_fields) {}
  ~FieldList() { fields.resize(count); }
  FieldList(const FieldList&) = delete;
  FieldList& operator=(const FieldList&) = delete;

  // The bytes of a new, empty field, which must be valid UTF-8 in the end.
  // Glib::ustring itself takes bytes only with counting their characters.
  std::string& add()
  {
    if (count == fields.size())
      fields.emplace_back();
    auto& bytes = const_cast<std::string&>(fields[count++].raw());
    bytes.clear();
    return bytes;
  }
  const Glib::ustring& back() const { return fields[count - 1]; }
  std::size_t size() const { return count; }

private:
  std::vector<Glib::ustring>& fields;
  std::size_t count = 0;
};

} // namespace

void split_csv_line(std::string_view line, std::vector<Glib::ustring>& fields,
                    const BotchedField& botched)
{
  FieldList list(fields);
  LineWalk walk(line);
  while (!walk.at_end()) {
    // A carriage return where a field would start is dropped, so "a,b,\r" has
    // two fields while "a,b," has three. Existing files rely on it: keep it.
    if (walk.at('\r')) {
      walk.skip();
      continue;
    }
    std::string& text = list.add();
    bool is_botched = false;
    if (walk.at('"')) {
      walk.skip();
      read_quoted(walk, text);
      is_botched = !walk.at_field_end();
      if (is_botched)
        read_botched_rest(walk, text);
    } else {
      read_unquoted(walk, text);
    }
    if (!walk.is_valid())
      mend(text);
    if (is_botched)
      botched(list.size(), list.back());
    if (walk.at(',')) {
      walk.skip();
      if (walk.at_end())
        list.add();
    }
  }
}
