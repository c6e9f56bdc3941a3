#pragma once

#include "ui/species-tree.h"

#include <gtkmm/box.h>
#include <gtkmm/builder.h>
#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/treemodelfilter.h>
#include <gtkmm/treeview.h>

#include <vector>

namespace Gtk {
class Entry;
}
class MyApp;
class SurveyWindow;
struct SurveyField;

// The Confirmation page: the whole survey at a glance, checked.
class ConfirmPanel : public Gtk::Grid
{
public:
  ConfirmPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Shows and checks the survey as it is now: whatever is missing or wrong is
  // marked in bold red, and survey_complete tells whether anything is. Allows
  // marking as ready and uploading, or forbids it.
  void refresh();
  // Shows the columns that the Listed Species page's name buttons ask for.
  void update_columns();
  // Let go of the two stores while they are filled, and take them up again.
  void detach_models();
  void attach_models();

  // Shows a value and whether it is missing; clears `ok` if it is. Required: 1
  // always, 0 never, -1 unless the survey's type notes presence only.
  bool set_simple_field(Gtk::Label* name_label, Gtk::Label* value_label, const Glib::ustring& value,
                        bool& ok, int required);
  // `text`, which is markup, in bold red.
  Glib::ustring redbold(const Glib::ustring& text) const;
  void set_redbold(Gtk::Label* label) const;
  void clear_redbold(Gtk::Label* label) const;

  // Whether a summary shows the row: a marked species in or outside the view,
  // or a family with one.
  bool listed_check_visible(const Gtk::TreeIter& iter) const;
  bool unlisted_check_visible(const Gtk::TreeIter& iter) const;
  void on_listed_clicked();
  void on_unlisted_clicked();
  void listed_render_id(Gtk::CellRenderer* cell, const Gtk::TreeIter& iter);
  void unlisted_render_id(Gtk::CellRenderer* cell, const Gtk::TreeIter& iter);

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1;                          // in the notebook
  Gtk::Button* confirm_verdict = nullptr; // tells how many entries are marked; goes there
  // Each value stands beside the label that names it.
  Gtk::Label* confirm_instructions = nullptr;
  Gtk::Label* conf_label_member_id = nullptr;
  Gtk::Label* conf_member_id = nullptr;
  Gtk::Label* conf_label_last_name = nullptr;
  Gtk::Label* conf_last_name = nullptr;
  Gtk::Label* conf_label_survey_type = nullptr;
  Gtk::Label* conf_survey_type = nullptr;
  Gtk::Label* conf_label_survey_date = nullptr;
  Gtk::Label* conf_survey_date = nullptr;
  Gtk::Label* conf_label_dive_start = nullptr;
  Gtk::Label* conf_dive_start = nullptr;
  Gtk::Label* conf_label_zone_code = nullptr;
  Gtk::Label* conf_zone_code = nullptr;
  Gtk::Label* conf_zone_name = nullptr;
  Gtk::Label* conf_label_surface_temp = nullptr;
  Gtk::Label* conf_surface_temp = nullptr;
  Gtk::Label* conf_label_bottom_temp = nullptr;
  Gtk::Label* conf_bottom_temp = nullptr;
  Gtk::Label* conf_label_bottom_time = nullptr;
  Gtk::Label* conf_bottom_time = nullptr;
  Gtk::Label* conf_label_visibility = nullptr;
  Gtk::Label* conf_visibility = nullptr;
  Gtk::Label* conf_label_avg_depth = nullptr;
  Gtk::Label* conf_avg_depth = nullptr;
  Gtk::Label* conf_label_max_depth = nullptr;
  Gtk::Label* conf_max_depth = nullptr;
  Gtk::Label* conf_label_current = nullptr;
  Gtk::Label* conf_current = nullptr;
  Gtk::Label* conf_label_habitat = nullptr;
  Gtk::Label* conf_habitat = nullptr;
  Gtk::Label* conf_label_total_species = nullptr;
  Gtk::Label* conf_total_species = nullptr;
  Gtk::Label* conf_listed_species = nullptr;
  Gtk::Label* conf_unlisted_species = nullptr;
  Gtk::CheckButton* confirm_bottom_time = nullptr; // confirms an unusual time
  Gtk::Box* conf_listed_box = nullptr;
  Gtk::TreeView* conf_listed_tree = nullptr;
  Gtk::Box* conf_unlisted_box = nullptr;
  Gtk::TreeView* conf_unlisted_tree = nullptr;
  const Glib::ustring red_begin = "<span weight=\"bold\" fgcolor=\"red\">";
  const Glib::ustring red_end = "</span>";
  Glib::RefPtr<Gtk::TreeSelection> listed_selection;
  Glib::RefPtr<Gtk::TreeSelection> unlisted_selection;
  Glib::RefPtr<Gtk::TreeModelFilter> listed_filter;
  Glib::RefPtr<Gtk::TreeModelFilter> unlisted_filter;
  SpeciesTreeParts listed_parts;
  SpeciesTreeParts unlisted_parts;

private:
  // An entry of the summary, and where it is put right.
  struct Entry {
    Gtk::Label* name;
    Gtk::Widget* field;
  };

  void find_labels(const Glib::RefPtr<Gtk::Builder>& builder);
  void connect_trees();

  // The fields that are good unless they are missing.
  void check_plain_fields(bool& ok);
  Glib::ustring chosen_text(const SurveyField& field) const;
  // The others, each with a rule of its own.
  void check_survey_type(bool& ok);
  void check_survey_date(bool& ok);
  void check_zone_code(bool& ok);
  void check_temperatures(bool& ok);
  void check_bottom_time(bool& ok);
  void check_order_of_depths(bool& ok);
  void check_species(bool& ok);
  void show_verdict(bool ok);
  // All entries in the order in which the page shows them, and those that are marked.
  std::vector<Entry> entries() const;
  std::vector<Entry> entries_with_own_rules() const;
  std::vector<Entry> marked_entries() const;
  bool is_marked(const Gtk::Label* label) const;
  // To the first marked entry; in a complete survey, to what comes next.
  void on_verdict_clicked();
  void show_summaries();

  // Shows a value that may be wrong, with its name marked if it is.
  void show_checked(Gtk::Label* name_label, Gtk::Label* value_label, const Glib::ustring& text,
                    bool good, bool& ok);
  void show_temperature(Gtk::Label* name_label, Gtk::Label* value_label, const Gtk::Entry& entry,
                        bool& ok);
  int limit(const Glib::ustring& parameter) const;
  void trace_selected(const Gtk::TreeRow& row) const;
  void on_summary_clicked(Gtk::TreeView& tree);

  int num_listed = 0;   // marked species of the view
  int num_unlisted = 0; // and outside it
};
