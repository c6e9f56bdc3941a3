#pragma once

#include <string>
#include <unordered_map>

class TableCheck;

// Finds equal and similar names in a list from which users choose by name.
class AlikeNames
{
public:
  // Whether equal names are a fault, or only names that differ in case or blanks.
  enum class Equal { FAULT, FINE };

  // `of_what` is the noun for an item of the list in messages, such as "zone". REQUIRES: it
  // is a string literal.
  AlikeNames(const char* of_what, Equal is_equal) : what(of_what), equal(is_equal) {}

  // Records the name of the current row of `table` in the list called `list`. Reports a
  // fault if that list already has a similar name. Ignores an empty name.
  void add(TableCheck& table, const std::string& name, const std::string& list = {});

private:
  struct Named {
    std::string name;
    long line;
  };

  const char* const what;
  const Equal equal;
  std::unordered_map<std::string, Named> names; // by list and folded name
};
