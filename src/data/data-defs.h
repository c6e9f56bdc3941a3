#pragma once

#include "data/from-csv.h"

// The choices of the simple drop-down boxes, by the name of their group.
class DataDefs : public FromCSV
{
public:
  // Reads data-definitions.csv in `dir`, which ends in a slash.
  explicit DataDefs(const std::string& dir);
  ~DataDefs() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  std::map<Glib::ustring, Def> defs; // operator[] is safe: a missing group is an empty list

  // The group whose rows are being read.
  Glib::ustring current_group;
  std::vector<Glib::ustring> labels;
  std::vector<int> values;

private:
  void finish_group();
};
