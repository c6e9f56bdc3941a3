#pragma once

#include "data/from-csv.h"

#include <cstdint>

// The abundance classes that each survey type offers.
class AbundanceChoices : public FromCSV
{
public:
  struct Choice {
    std::int16_t responseid = -1; // the server's number of this choice; -1 in a filler
    std::int16_t abun = 0;        // abundance class, as surveys store it
    Glib::ustring label;
  };
  struct SurveySubtypeChoiceInfo {
    std::vector<Choice> choices; // the index is the abundance class
  };

  // The pseudo survey type with the choices for species of which surveys record only the
  // presence (RegionFishInfo::Species::is_presence_only).
  static constexpr int presence_subtype = 99;

  // Reads abundance-choices.csv in `dir`, which ends in a slash.
  explicit AbundanceChoices(const std::string& dir);
  ~AbundanceChoices() override;
  RetCode process_line(const std::vector<Glib::ustring>& fields) override;
  RetCode process_headings(const std::vector<Glib::ustring>& the_headings) override;

  // Returns the choices of a survey type, which are empty if the file skips the id. Returns null
  // if the id is negative or larger than all ids of the file.
  const SurveySubtypeChoiceInfo* find_subtype(int survey_type_id) const;
  SurveySubtypeChoiceInfo* find_subtype(int survey_type_id);

  std::vector<SurveySubtypeChoiceInfo> subtypes; // by survey type id; gaps are empty lists

private:
  void add_choice(std::size_t subtype, const Choice& choice);
  void trace_choices() const;
};
