#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

// A callback for a field with botched quoting. Receives the field's number in the line, which
// starts at 1, and the field's text.
using BotchedField = std::function<void(std::size_t, const Glib::ustring&)>;

// The fields of one line of a data file. docs/data-files.md describes the quoting rules.
class CsvLine
{
public:
  // Splits `line`, without its line feed, and replaces the previous fields. The fields reuse their
  // memory. Text between a closing quote and the next comma is botched quoting: the field then
  // includes that text and its own quotes, and the function calls `botched`, if there is one.
  // Bytes that are not valid UTF-8 become U+FFFD.
  void split(std::string_view line, const BotchedField& botched = {});
  // Returns the fields. They are valid until the next split().
  const std::vector<Glib::ustring>& fields() const { return all; }

private:
  std::vector<Glib::ustring> all;
  std::string scratch; // the memory for a field that split() cannot copy in one piece
};
