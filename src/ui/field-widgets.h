#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/container.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <map>

class DataDefs;
class DropDownBox;
struct SurveyField;

// The widgets of the table of fields (store/survey-fields.h). The window of the definition file
// owns them. The use of a missing widget ends the program.
class FieldWidgets
{
public:
  // Finds all widgets. REQUIRES: the panels have not searched for their widgets yet.
  void find(const Glib::RefPtr<Gtk::Builder>& builder);

  // Return the widget in which the user enters the field: an entry for a text, a box for a
  // choice.
  Gtk::Widget& input(const SurveyField& field) const;
  Gtk::Entry& entry(const SurveyField& field) const;
  DropDownBox& box(const SurveyField& field) const;
  // Return the labels on the Confirmation page. REQUIRES: the field has a row there.
  Gtk::Label& summary_name(const SurveyField& field) const;
  Gtk::Label& summary_value(const SurveyField& field) const;

  // Fills the boxes of the fields that have a group of choices in the table.
  void fill_boxes(DataDefs& defs) const;
  // Returns the value of the input as text for the document. REQUIRES: the field is not the
  // location, which has no such widget.
  Glib::ustring text(const SurveyField& field) const;
  // Returns the displayed text of the input, which is the label of a choice.
  Glib::ustring shown_text(const SurveyField& field) const;
  // Makes the inputs on a panel read-only for an uploaded survey.
  void lock(Gtk::Container& panel) const;

private:
  struct Widgets {
    Gtk::Widget* input = nullptr;
    Gtk::Label* summary_name = nullptr;
    Gtk::Label* summary_value = nullptr;
  };

  std::map<const SurveyField*, Widgets> widgets;
};
