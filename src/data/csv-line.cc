#include "data/csv-line.h"

#include "core/c-resource.h"

#include <glib.h>

#include <algorithm>

namespace {

// A walk along the bytes of a line, one UTF-8 sequence at a time.
class LineWalk
{
public:
  explicit LineWalk(const std::string& the_line) : line(the_line) {}

  bool at_end() const { return pos >= line.size(); }
  bool at(char c) const { return !at_end() && line[pos] == c; }
  bool at_field_end() const { return at_end() || line[pos] == ',' || line[pos] == '\r'; }

  void skip() { ++pos; }

  // Appends the character here to `text`. Its length is what its lead byte
  // says, but never more than the line has.
  void take(std::string& text)
  {
    const auto lead = static_cast<unsigned char>(line[pos]);
    if (lead < 0x80) {
      text.push_back(line[pos++]);
      return;
    }
    const auto length = static_cast<unsigned char>(g_utf8_skip[lead]);
    text.append(line, pos, length); // no more than there is
    pos = std::min(pos + length, line.size());
  }

  // The same, but a backslash stands for the character behind it. At the end of
  // the line it stands for itself.
  void take_escaped(std::string& text)
  {
    if (line[pos] == '\\' && pos + 1 < line.size())
      ++pos;
    take(text);
  }

private:
  const std::string& line;
  std::size_t pos = 0;
};

void read_unquoted(LineWalk& walk, std::string& text)
{
  while (!walk.at_field_end())
    walk.take_escaped(text);
}

// Stands behind the opening quote. A quote that is never closed ends with the line.
void read_quoted(LineWalk& walk, std::string& text)
{
  while (!walk.at_end()) {
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
void set_field(Glib::ustring& field, const std::string& text)
{
  const auto length = static_cast<gssize>(text.size());
  if (g_utf8_validate(text.data(), length, nullptr)) {
    field = text;
  } else {
    const GMemory<char> mended(g_utf8_make_valid(text.data(), length));
    field = mended.get();
  }
}

// The fields of one line; the strings of the line before are used again.
class FieldList
{
public:
  explicit FieldList(std::vector<Glib::ustring>& the_fields) : fields(the_fields) {}
  ~FieldList() { fields.resize(count); }
  FieldList(const FieldList&) = delete;
  FieldList& operator=(const FieldList&) = delete;

  const Glib::ustring& add(const std::string& text)
  {
    if (count == fields.size())
      fields.emplace_back();
    set_field(fields[count], text);
    return fields[count++];
  }
  std::size_t size() const { return count; }

private:
  std::vector<Glib::ustring>& fields;
  std::size_t count = 0;
};

} // namespace

void split_csv_line(const std::string& line, std::vector<Glib::ustring>& fields,
                    const std::function<void(std::size_t, const Glib::ustring&)>& botched)
{
  FieldList list(fields);
  LineWalk walk(line);
  std::string text;
  while (!walk.at_end()) {
    // A carriage return where a field would start is dropped, so "a,b,\r" has
    // two fields while "a,b," has three. Existing files rely on it: keep it.
    if (walk.at('\r')) {
      walk.skip();
      continue;
    }
    text.clear();
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
    const Glib::ustring& field = list.add(text);
    if (is_botched)
      botched(list.size(), field);
    if (walk.at(',')) {
      walk.skip();
      if (walk.at_end())
        list.add({});
    }
  }
}
