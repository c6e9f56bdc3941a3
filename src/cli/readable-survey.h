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

// Returns the survey with the names of the data set. If the data set lacks a name, the result
// has the number instead.
ReadableSurvey readable_survey(const Survey& survey, const SurveyNames& names,
                               const std::vector<SurveyComplaint>& complaints);

// Returns the survey as lines of text for a terminal.
std::string survey_text(const ReadableSurvey& survey);
