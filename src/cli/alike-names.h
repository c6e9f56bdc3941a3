#pragma once

#include <string>
#include <unordered_map>

class TableCheck;

// The names of one list that users choose from by name.
class AlikeNames
{
public:
  // Whether equal names are a fault, or only those that differ by case or blanks.
  enum class Equal { FAULT, FINE };

  // `what` names one of the list in messages, such as "zone".
  AlikeNames(const char* of_what, Equal is_equal) : what(of_what), equal(is_equal) {}

  // Notes the name of the row that `table` is at, in the list called `list`, and reports it
  // if another one there is like it. An empty name is left alone.
  void add(TableCheck& table, const std::string& name, const std::string& list = {});

private:
  struct Named {
    std::string name;
    long line;
  };

  const char* const what;
  const Equal equal;
  std::unordered_map<std::string, Named> names; // by list, and by name as readers see it
};
