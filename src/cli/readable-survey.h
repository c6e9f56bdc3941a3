#pragma once

#include "store/survey-judgement.h"
#include "store/survey-names.h"

#include <glibmm/ustring.h>

#include <vector>

// A survey for display: plain text with names instead of ids.
struct ReadableSurvey {
  // One entry of the survey.
  struct Fact {
    const char* label;
    Glib::ustring text; // empty if nothing was entered
  };
  // One species of the survey. The common name is "Unknown species" if the species is not in
  // the data set. A name or family that the data set does not have is empty.
  struct Species {
    int id;
    Glib::ustring common_name;
    Glib::ustring scientific_name;
    Glib::ustring family;
    Glib::ustring abundance;
  };

  Glib::ustring title;
  std::vector<Fact> facts;
  std::vector<Species> species; // by ascending id
  // The entries that the Confirmation page would mark: their labels and what is wrong.
  std::vector<Fact> complaints;
};

// Returns the survey with the names of the data set. If a name is not in the data set, the
// result has the number instead. `complaints` are the result of survey_complaints().
ReadableSurvey readable_survey(const Survey& survey, const SurveyNames& names,
                               const std::vector<SurveyComplaint>& complaints);

// Returns the survey as lines of text for a terminal.
std::string survey_text(const ReadableSurvey& survey);
