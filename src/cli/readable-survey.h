#pragma once

#include "store/survey-judgement.h"
#include "store/survey-names.h"

#include <glibmm/ustring.h>

#include <vector>

// A survey as people read it: names in the place of ids, in plain text.
struct ReadableSurvey {
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
  std::vector<Species> species; // in the order of their ids
  // What the Confirmation page would mark: the label of the entry and what is wrong.
  std::vector<Fact> complaints;
};

// A name that the data lack is shown as the number that stands for it.
ReadableSurvey readable_survey(const Survey& survey, const SurveyNames& names,
                               const std::vector<SurveyComplaint>& complaints);

// The same as lines of text for a terminal.
std::string survey_text(const ReadableSurvey& survey);
