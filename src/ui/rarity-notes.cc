#include "ui/rarity-notes.h"

#include "data/region-fish-info.h"
#include "ui/species-instructions.h"
#include "ui/survey-window.h"

#include <atk/atk.h>
#include <gtkmm/tooltip.h>
#include <gtkmm/treeview.h>

namespace {

Glib::ustring note_on_row(const SurveyWindow& window, const Gtk::TreeIter& row)
{
  const RegionFishInfo* const fish = window.survey.region_fish;
  const int id = row->get_value(window.species_columns.col_id);
  const auto* const species = fish && id >= 0 ? fish->find_species(id) : nullptr;
  return species ? rarity_note(species->rarefishind, fish->max_rarefishind) : "";
}

bool show_note(SurveyWindow& window, Gtk::TreeView& tree, int x, int y, bool by_keyboard,
               const Glib::RefPtr<Gtk::Tooltip>& tooltip)
{
  Gtk::TreeIter row;
  if (!tree.get_tooltip_context_iter(x, y, by_keyboard, row))
    return false;
  const Glib::ustring note = note_on_row(window, row);
  if (note.empty())
    return false;
  tooltip->set_text(note);
  tree.set_tooltip_row(tooltip, tree.get_model()->get_path(row));
  return true;
}

const char* const window_key = "window of shaded rows";

// The toolkit creates a cell's accessible object when it is first requested. When the tree
// announces the cell under its cursor, the object exists.
void describe_cell(AtkObject* announcing, AtkObject* cell)
{
  auto* const widget = GTK_IS_ACCESSIBLE(announcing)
                           ? gtk_accessible_get_widget(GTK_ACCESSIBLE(announcing))
                           : nullptr;
  const auto* const window =
      widget ? static_cast<SurveyWindow*>(g_object_get_data(G_OBJECT(widget), window_key))
             : nullptr;
  if (!window || !cell)
    return;
  auto& tree = *Glib::wrap(GTK_TREE_VIEW(widget));
  Gtk::TreePath path;
  Gtk::TreeViewColumn* column = nullptr;
  tree.get_cursor(path, column);
  const auto row = path.empty() ? Gtk::TreeIter() : tree.get_model()->get_iter(path);
  if (row)
    atk_object_set_description(cell, note_on_row(*window, row).c_str());
}

// Uses an emission hook, which costs nothing if no assistive program runs. A handler would
// need the tree's accessible object, which slows down every change of the tree's rows.
void watch_announcements()
{
  static bool is_watching = false;
  if (is_watching)
    return;
  is_watching = true;
  g_type_class_unref(g_type_class_ref(ATK_TYPE_OBJECT)); // creates the class and its signal
  const auto hook = [](GSignalInvocationHint*, guint, const GValue* values, gpointer) {
    describe_cell(ATK_OBJECT(g_value_get_object(&values[0])),
                  static_cast<AtkObject*>(g_value_get_pointer(&values[1])));
    return static_cast<gboolean>(TRUE); // keeps the hook
  };
  g_signal_add_emission_hook(g_signal_lookup("active-descendant-changed", ATK_TYPE_OBJECT), 0, hook,
                             nullptr, nullptr);
}

} // namespace

void explain_rarity(SurveyWindow& window, Gtk::TreeView& tree)
{
  tree.set_has_tooltip();
  tree.signal_query_tooltip().connect(
      [&window, &tree](int x, int y, bool by_keyboard, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
        return show_note(window, tree, x, y, by_keyboard, tooltip);
      });
  g_object_set_data(G_OBJECT(tree.gobj()), window_key, &window);
  watch_announcements();
}
