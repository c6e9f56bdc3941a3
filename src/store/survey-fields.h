#pragma once

#include "store/survey.h"

#include <variant>
#include <vector>

// How a widget holds the value of a field.
enum class FieldKind {
  text,         // an entry, without the blanks around its text
  choice_by_id, // a drop-down box: the id of the chosen entry
  // Exceptions, each of one field.
  location,     // a code; the panels are set up for it
  survey_type,  // a choice that may be offered no more
  year,         // a choice by its label, which the box may lack
  temp_units,   // a choice of which the document has the first letter
  bottom_time,  // a text that the user may have confirmed: the attribute "confirmed"
  species_view, // a choice that decides which species are listed
};

// When the Confirmation page asks for a value.
enum class Required {
  never = 0,
  always = 1,
  unless_species_only = -1, // unless the survey type notes presence only
};

// A row of the table of fields. Reading, writing, the panels and the Confirmation page all
// go by it.
struct SurveyField {
  const char* name; // of the element in the document, and of the widget in survey-ui.glade
  FieldKind kind;
  std::variant<Glib::ustring Survey::*, int Survey::*> value;
  int digits = 1; // of a number in the document, at least
  // The group in data-definitions.csv that fills the box; null: the panel fills it itself.
  const char* choices = nullptr;
  // Its row on the Confirmation page has the labels conf_label_SUMMARY and conf_SUMMARY.
  // Null: the page has a check of its own for the field, or does not show it.
  const char* summary = nullptr;
  Required required = Required::never;
  bool locked_when_uploaded = true;
};

// All fields, in the order in which the document has them. The species follow them there.
const std::vector<SurveyField>& survey_fields();

// The field of that name; null if there is none.
const SurveyField* find_survey_field(const Glib::ustring& name);

// A number in decimal, with leading zeros up to that many digits.
Glib::ustring padded(int number, int digits);

// The value of a field as the document has it, and the other way round.
Glib::ustring field_text(const SurveyField& field, const Survey& survey);
void set_field_text(const SurveyField& field, const Glib::ustring& text, Survey& survey);
