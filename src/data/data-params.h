#pragma once

#include "data/from-csv.h"

// Named limits for the checks of a survey, as whole numbers.
class DataParams : public FromCSV
{
public:
  // Reads data-parameters.csv in `dir`, which ends in a slash.
  explicit DataParams(const std::string& dir);
  ~DataParams() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  std::map<Glib::ustring, int> params; // operator[] is safe: a missing limit is 0
};
