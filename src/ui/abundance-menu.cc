#include "core/displayed-text.h"
#include "core/my-app.h"
#include "core/report.h"
#include "core/text.h"
#include "data/abundance-choices.h"
#include "data/region-fish-info.h"
#include "ui/name-match.h"
#include "ui/survey-window.h"
#include "ui/tree-rows.h"
#include "ui/unlisted-panel.h"

#include <gdkmm/monitor.h>
#include <gtkmm/menuitem.h>
#include <gtkmm/treeview.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace {

// Returns whether a class of the data can be stored. Prints a complaint if not.
bool is_storable(const AbundanceChoices::Choice& choice, int subtype)
{
  if (choice.abun >= 0)
    return true;
  if (debug_level >= -1)
    printf("Warning: survey type %d offers no \"%s\": its abundance %d is negative\n", subtype,
           choice.label.c_str(), choice.abun);
  return false;
}

// Returns a menu item that is not wider than a screen, even with a long label.
Gtk::MenuItem* make_item(const Glib::ustring& label)
{
  auto* const item = Gtk::make_managed<Gtk::MenuItem>(displayed_line(label));
  if (auto* const shown = dynamic_cast<Gtk::Label*>(item->get_child())) {
    shown->set_ellipsize(Pango::ELLIPSIZE_END);
    shown->set_max_width_chars(static_cast<int>(longest_displayed_line));
  }
  return item;
}

// Returns the rectangle on the screen of a row's last column, the abundance.
Gdk::Rectangle place_on_screen(Gtk::TreeView& tree, const Gtk::TreePath& row)
{
  const int last = static_cast<int>(tree.get_n_columns()) - 1;
  Gdk::Rectangle cell;
  tree.get_cell_area(row, *tree.get_column(last), cell);
  int x = 0;
  int y = 0;
  tree.get_bin_window()->get_root_coords(cell.get_x(), cell.get_y(), x, y);
  return {x, y, cell.get_width(), cell.get_height()};
}

struct Row {
  Gtk::TreeView* tree;
  Gtk::TreePath path;
};

// Places the menu below the row, or above it if there is no room below, so that the row stays
// visible.
void put_beside(GtkMenu* menu, gint* x, gint* y, gboolean* push_in, gpointer data)
{
  const auto& row = *static_cast<const Row*>(data);
  const Gdk::Rectangle place = place_on_screen(*row.tree, row.path);
  GtkRequisition natural;
  gtk_widget_get_preferred_size(GTK_WIDGET(menu), nullptr, &natural);
  Gdk::Rectangle screen;
  const auto display = row.tree->get_display();
  display->get_monitor_at_point(place.get_x(), place.get_y())->get_workarea(screen);
  const int below = place.get_y() + place.get_height();
  const bool has_room = below + natural.height <= screen.get_y() + screen.get_height();
  *x = place.get_x();
  *y = has_room ? below : place.get_y() - natural.height;
  *push_in = TRUE;
}

// Opens a menu beside a row. gtkmm frees the slot of the position after the first call, but the
// menu computes its position again when it moves. So the menu owns a copy of the row.
void popup_beside(Gtk::Menu& menu, const Row& row, guint32 time)
{
  constexpr guint no_button = 0;
  auto* const kept = new Row(row);
  const auto destroy = [](gpointer data) { delete static_cast<Row*>(data); };
  g_object_set_data_full(G_OBJECT(menu.gobj()), "row", kept, destroy);
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS // the newer functions do not accept a position on the screen
      gtk_menu_popup(menu.gobj(), nullptr, nullptr, put_beside, kept, no_button, time);
  G_GNUC_END_IGNORE_DEPRECATIONS
}

// Chooses the item if it is the only one whose label begins with the typed letter or digit.
bool choose_by_first_character(GdkEventKey* event, Gtk::Menu& menu)
{
  const gunichar character = typed_character(event);
  if (!character)
    return false;
  const std::string typed = folded_name(Glib::ustring(1, character));
  Gtk::MenuItem* chosen = nullptr;
  for (auto* child : menu.get_children()) {
    auto* const item = dynamic_cast<Gtk::MenuItem*>(child);
    if (!item || !begins_with(folded_name(item->get_label()), typed))
      continue;
    if (chosen)
      return false; // several labels begin with that character
    chosen = item;
  }
  if (chosen)
    menu.activate_item(*chosen, true);
  return chosen != nullptr;
}

} // namespace

void SurveyWindow::build_abundance_menus()
{
  const auto& subtypes = reference_data.abundance_choices->subtypes;
  for (std::size_t i = 0; i < subtypes.size(); ++i)
    abundance_menus.push_back(make_abundance_menu(static_cast<int>(i), subtypes[i].choices));
}

Gtk::Menu* SurveyWindow::make_abundance_menu(int subtype,
                                             const std::vector<AbundanceChoices::Choice>& choices)
{
  if (choices.empty())
    return nullptr;
  auto* menu = Gtk::make_managed<Gtk::Menu>();
  menu->attach_to_widget(*this);
  for (const auto& choice : choices) {
    if (!is_storable(choice, subtype))
      continue;
    if (debug_level >= 30)
      printf("For %d, adding %d %s\n", subtype, choice.abun, choice.label.c_str());
    auto* item = make_item(choice.label);
    item->signal_activate().connect(
        sigc::bind(sigc::mem_fun(*this, &SurveyWindow::on_abundance_menu_item),
                   static_cast<std::uint16_t>(choice.abun)));
    menu->append(*item);
  }
  menu->signal_key_press_event().connect(
      [menu](GdkEventKey* event) { return choose_by_first_character(event, *menu); }, false);
  menu->show_all();
  return menu;
}

void SurveyWindow::popup_abundance_menu(int species_id, int button, guint32 time)
{
  if (auto* menu = prepare_abundance_menu(species_id))
    menu->popup(static_cast<guint>(button), time);
}

void SurveyWindow::popup_abundance_menu_beside(Gtk::TreeView& tree, const Gtk::TreePath& row,
                                               int species_id, guint32 time)
{
  auto* const menu = prepare_abundance_menu(species_id);
  if (!menu)
    return;
  menu_follows_row = tree.signal_draw().connect([menu](const Cairo::RefPtr<Cairo::Context>&) {
    menu->reposition(); // does nothing if the menu is closed
    return false;
  });
  popup_beside(*menu, {&tree, row}, time);
}

Gtk::Menu* SurveyWindow::prepare_abundance_menu(int species_id)
{
  menu_follows_row.disconnect();
  abundance_target = species_id;
  auto* const menu = abundance_menu_for(species_id);
  if (!menu) {
    error("The number seen of species %04d cannot be chosen, because the data files lack the "
          "choices for it. Nothing has been changed.",
          species_id);
  }
  return menu;
}

// Returns null if the reference data have no list for the species.
Gtk::Menu* SurveyWindow::abundance_menu_for(int species_id) const
{
  const auto* species = survey.region_fish ? survey.region_fish->find_species(species_id) : nullptr;
  if (!species)
    return nullptr;
  if (!species->is_presence_only())
    return current_abundance_menu;
  constexpr auto presence_list = static_cast<std::size_t>(PRESENCE_MENU_INDEX);
  return presence_list < abundance_menus.size() ? abundance_menus[presence_list] : nullptr;
}

void SurveyWindow::on_abundance_menu_item(int abundance)
{
  const int id = abundance_target;
  if (id < 1) {
    error("**** Invalid ab chg target!!  abun=%d species id %d\n", abundance, id);
    return;
  }
  survey.abundances[id] = abundance;
  const auto update_row =
      sigc::bind(sigc::mem_fun(*this, &SurveyWindow::update_row_from_abundance), id);
  listed_model->foreach_iter(update_row);
  unlisted_model->foreach_iter(update_row);
  unlisted_panel->refilter();
  if (debug_level >= 1)
    printf("abun_menu: species id %d abundance = %d\n", id, abundance);
}

// Ends the walk at the first row of the species. If a view lists the species twice, the second
// row keeps its old label until the store is filled again.
bool SurveyWindow::update_row_from_abundance(const Gtk::TreeIter& iter, int id)
{
  if (iter->get_value(species_columns.col_id) != id)
    return false;
  species_columns.set_abundance(*iter, survey.abundances[id]);
  return true;
}

bool SurveyWindow::update_from_abundance(const Gtk::TreeIter& iter)
{
  const int id = iter->get_value(species_columns.col_id);
  if (id >= 0)
    species_columns.set_abundance(*iter, survey.abundances[id]);
  return false;
}
