#pragma once

#include "data/abundance-choices.h"

#include <glibmm/ustring.h>
#include <gtkmm/treeiter.h>
#include <gtkmm/treemodelcolumn.h>

#include <vector>

class SurveyWindow;

// The row of every species table. A species row has a col_id of 0 or more, a
// family row -1. The abundance here is a copy for display.
class SpeciesTreeColumns : public Gtk::TreeModelColumnRecord
{
public:
  explicit SpeciesTreeColumns(SurveyWindow* the_window);
  ~SpeciesTreeColumns() override;

  // Writes all columns of a row; names are plain words, rarity shades them.
  void set(const Gtk::TreeRow& row, int id, const Glib::ustring& common,
           const Glib::ustring& scientific, const Glib::ustring& spanish, int abundance,
           bool in_view, int rarity);
  // Writes the abundance columns only. An abundance beyond the list shows as
  // the list's last; a negative one shows no label.
  void set_abundance(const Gtk::TreeRow& row, int abundance);

  Gtk::TreeModelColumn<int> col_id;
  Gtk::TreeModelColumn<Glib::ustring> col_common; // this and the next three: markup
  Gtk::TreeModelColumn<Glib::ustring> col_scientific;
  Gtk::TreeModelColumn<Glib::ustring> col_both;
  Gtk::TreeModelColumn<Glib::ustring> col_spanish;
  Gtk::TreeModelColumn<int> col_abundance;
  Gtk::TreeModelColumn<Glib::ustring> col_abundance_label;
  Gtk::TreeModelColumn<bool> col_in_view;

  const std::vector<AbundanceChoices::Choice>* choices = nullptr; // of the survey's type
  SurveyWindow* window;
  Glib::ustring no_label;
};
