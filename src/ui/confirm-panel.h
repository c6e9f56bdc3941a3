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

// The Confirmation page. It shows and checks all entries of the survey.
class ConfirmPanel : public Gtk::Grid
{
public:
  ConfirmPanel(BaseObjectType* cobject, const Glib::RefPtr<Gtk::Builder>& builder);
  // Connects the page to its window. Call it once, after the constructor.
  void ctor_continued(const Glib::RefPtr<Gtk::Builder>& builder, SurveyWindow* the_window);

  // Shows and checks the current survey. Marks missing and wrong entries in bold red and sets
  // survey_complete. Enables or disables marking as ready and uploading.
  void refresh();
  // Shows the columns that the name buttons of the Listed Species page select.
  void update_columns();
  // Detach the trees from both stores before these are filled, and attach them again.
  void detach_models();
  void attach_models();

  // Shows a value. If it is missing but required, marks the label and clears `ok`. `required` is
  // a value of Required (store/survey-fields.h): 1 always, 0 never, -1 unless surveys of the
  // type record only presence. Returns whether the entry is good.
  bool set_simple_field(Gtk::Label* name_label, Gtk::Label* value_label, const Glib::ustring& value,
                        bool& ok, int required);
  // Returns the markup `text` in bold red.
  Glib::ustring redbold(const Glib::ustring& text) const;
  // Set and remove the bold red style of a label.
  void set_redbold(Gtk::Label* label) const;
  void clear_redbold(Gtk::Label* label) const;

  // Return whether the summary of species inside or outside of the view shows a row. It shows
  // marked species and the families that have one.
  bool listed_check_visible(const Gtk::TreeIter& iter) const;
  bool unlisted_check_visible(const Gtk::TreeIter& iter) const;
  // Expand or collapse the family that was clicked in a summary.
  void on_listed_clicked();
  void on_unlisted_clicked();
  // Fill the "ID" cell of a row in a summary.
  void listed_render_id(Gtk::CellRenderer* cell, const Gtk::TreeIter& iter);
  void unlisted_render_id(Gtk::CellRenderer* cell, const Gtk::TreeIter& iter);

  MyApp* my_app = nullptr;
  SurveyWindow* window = nullptr;
  int page = -1;                          // the index in the notebook
  Gtk::Button* confirm_verdict = nullptr; // shows how many entries are marked and leads to them
  // Each value is beside the label with its name.
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
  // An entry of the summary, and the widget in which the user corrects it.
  struct Entry {
    Gtk::Label* name;
    Gtk::Widget* field;
  };

  void find_labels(const Glib::RefPtr<Gtk::Builder>& builder);
  void connect_trees();

  // Checks the fields that can only be missing.
  void check_plain_fields(bool& ok);
  Glib::ustring chosen_text(const SurveyField& field) const;
  // Check the other fields, which have special rules.
  void check_survey_type(bool& ok);
  void check_survey_date(bool& ok);
  void check_zone_code(bool& ok);
  void check_temperatures(bool& ok);
  void check_bottom_time(bool& ok);
  void check_order_of_depths(bool& ok);
  void check_species(bool& ok);
  void show_verdict(bool ok);
  // Return all entries or the marked entries, in the order of the page.
  std::vector<Entry> entries() const;
  std::vector<Entry> entries_with_own_rules() const;
  std::vector<Entry> marked_entries() const;
  bool is_marked(const Gtk::Label* label) const;
  // Turns to the first marked entry. If no entry is marked, gives the focus to the button that
  // marks the survey as ready.
  void on_verdict_clicked();
  void show_summaries();

  // Shows a value and marks its name if the value is wrong.
  void show_checked(Gtk::Label* name_label, Gtk::Label* value_label, const Glib::ustring& text,
                    bool good, bool& ok);
  void show_temperature(Gtk::Label* name_label, Gtk::Label* value_label, const Gtk::Entry& entry,
                        bool& ok);
  int limit(const Glib::ustring& parameter) const;
  void trace_selected(const Gtk::TreeRow& row) const;
  void on_summary_clicked(Gtk::TreeView& tree);

  int num_listed = 0;   // marked species in the view
  int num_unlisted = 0; // marked species outside of the view
};
