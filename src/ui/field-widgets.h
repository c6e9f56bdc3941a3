#pragma once

#include <gtkmm/builder.h>
#include <gtkmm/container.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <map>

class DataDefs;
class DropDownBox;
struct SurveyField;

// The widgets of the table of fields, by the ids that the table has for them. The definition
// file's window owns them. A widget that is missing ends the program when it is used.
class FieldWidgets
{
public:
  // Call it before the panels look for their widgets.
  void find(const Glib::RefPtr<Gtk::Builder>& builder);

  // Where the user enters the field: an entry for a text, a box for a choice.
  Gtk::Widget& input(const SurveyField& field) const;
  Gtk::Entry& entry(const SurveyField& field) const;
  DropDownBox& box(const SurveyField& field) const;
  // The row of a field that has one on the Confirmation page.
  Gtk::Label& summary_name(const SurveyField& field) const;
  Gtk::Label& summary_value(const SurveyField& field) const;

  // Offers the choices of the fields whose choices the table names.
  void fill_boxes(DataDefs& defs) const;
  // What the input holds, as the document has it. No widget holds the location.
  Glib::ustring text(const SurveyField& field) const;
  // What the user reads in the input: a choice by its label.
  Glib::ustring shown_text(const SurveyField& field) const;
  // Makes the inputs on a panel read-only, as in an uploaded survey.
  void lock(Gtk::Container& panel) const;

private:
  struct Widgets {
    Gtk::Widget* input = nullptr;
    Gtk::Label* summary_name = nullptr;
    Gtk::Label* summary_value = nullptr;
  };

  std::map<const SurveyField*, Widgets> widgets;
};
