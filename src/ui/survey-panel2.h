#pragma once

#include "core/ret-code.h"
#include "ui/drop-down-box.h"

#include <gtkmm/builder.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>

class MyApp;
class SurveyWindow;

// The Survey Info Part 2 page: the conditions of the dive.
class SurveyPanel2 : public Gtk::Grid
{
public:
  SurveyPanel2(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  // Connects the page to its window. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Offers the habitats of the survey's region. Returns RET_INTERNAL_ERROR if the survey has no
  // region.
  RetCode setup_for_subregion(const Glib::ustring& code);
  // Shows which entries the survey's type requires. REQUIRES: a type is chosen.
  RetCode setup_for_survey_subtype();
  // Chooses Celsius if `units` is "C", else Fahrenheit.
  void set_temp_units_short(const Glib::ustring& units);
  // Returns the first letter of the unit, or an empty text if none is chosen.
  Glib::ustring get_temp_units_short() const;
  // Makes the page read-only.
  void disable_inputs();

  // Withdraws the confirmation of an unusual bottom time.
  void on_bottom_time_changed() const;
  // A snorkel survey has no depths. If the user chooses "Snorkel" in one box, the handlers choose
  // it in the other box, too, and disable the maximum until the average changes.
  void on_avg_depth_changed() const;
  void on_max_depth_changed() const;

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1; // the index in the notebook
  Gtk::Label* sp2_instructions = nullptr;
  Gtk::Entry* surface_temp = nullptr;
  Gtk::Label* optional1 = nullptr;
  Gtk::Entry* bottom_temp = nullptr;
  Gtk::Label* optional2 = nullptr;
  DropDownBox* temp_units = nullptr;
  Gtk::Entry* bottom_time = nullptr;
  DropDownBox* visibility = nullptr;
  Gtk::Label* label_avg_depth = nullptr;
  DropDownBox* avg_depth = nullptr;
  Gtk::Label* label_max_depth = nullptr;
  DropDownBox* max_depth = nullptr;
  DropDownBox* current = nullptr;
  DropDownBox* habitat = nullptr;
  Gtk::Label* habitat_descr = nullptr;

private:
  void find_widgets(const Glib::RefPtr<Gtk::Builder>& builder);
  void fill_boxes();
};
