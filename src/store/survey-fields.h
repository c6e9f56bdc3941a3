#pragma once

#include "store/survey.h"

#include <variant>
#include <vector>

// How a widget represents the value of a field.
enum class FieldKind {
  text,         // the text of an entry without leading and trailing blanks
  choice_by_id, // the id of the chosen item of a drop-down box
  // Each of the following kinds has only one field.
  location,     // a code; the panels adapt to it
  survey_type,  // a choice that the box may no longer offer
  year,         // a choice by its label, which the box may lack
  temp_units,   // a choice; the document has the first letter of its label
  bottom_time,  // a text that the user may have confirmed: the attribute "confirmed"
  species_view, // a choice that determines the listed species
};

// When the Confirmation page asks for a value.
enum class Required {
  never = 0,
  always = 1,
  unless_species_only = -1, // unless surveys of the type record only the presence of species
};

// A row of the table of fields. The table controls reading, writing, the panels and the
// Confirmation page.
struct SurveyField {
  const char* name; // the name of the element in the document and of the widget in survey-ui.glade
  FieldKind kind;
  std::variant<Glib::ustring Survey::*, int Survey::*> value;
  int digits = 1; // the smallest number of digits of a number in the document
  // The group in data-definitions.csv that fills the box; null if the panel fills the box.
  const char* choices = nullptr;
  // The row on the Confirmation page has the labels conf_label_SUMMARY and conf_SUMMARY. Null if
  // the page has a special check for the field or does not show it.
  const char* summary = nullptr;
  Required required = Required::never;
  bool locked_when_uploaded = true; // whether the input of an uploaded survey is read-only
};

// Returns all fields in the order of the document. The species follow them there.
const std::vector<SurveyField>& survey_fields();

// Returns the field with that name, or null if there is none.
const SurveyField* find_survey_field(const Glib::ustring& name);

// Returns a number in decimal, with leading zeros if it has fewer than `digits` digits.
Glib::ustring padded(int number, int digits);

// Returns the value of a field as text for the document.
Glib::ustring field_text(const SurveyField& field, const Survey& survey);
// Sets a field to the value of a text from a document.
void set_field_text(const SurveyField& field, const Glib::ustring& text, Survey& survey);
