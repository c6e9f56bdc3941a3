#include "core/displayed-text.h"
#include "core/my-app.h"
#include "core/report.h"
#include "data/abundance-choices.h"
#include "data/region-fish-info.h"
#include "ui/name-match.h"
#include "ui/survey-window.h"
#include "ui/tree-rows.h"
#include "ui/unlisted-panel.h"

#include <gtkmm/menuitem.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace {

// Of these animals only the presence is noted, whatever the survey's type.
constexpr int presence_only = 2;

// Whether a class of the data can be stored; complains if not.
bool is_storable(const AbundanceChoices::Choice& choice, int subtype)
{
  if (choice.abun >= 0)
    return true;
  if (debug_level >= -1)
    printf("Warning: survey type %d offers no \"%s\": its abundance %d is negative\n", subtype,
           choice.label.c_str(), choice.abun);
  return false;
}

// No wider than a screen, whatever letters the label has.
Gtk::MenuItem* make_item(const Glib::ustring& label)
{
  auto* const item = Gtk::make_managed<Gtk::MenuItem>(displayed_line(label));
  if (auto* const shown = dynamic_cast<Gtk::Label*>(item->get_child())) {
    shown->set_ellipsize(Pango::ELLIPSIZE_END);
    shown->set_max_width_chars(static_cast<int>(longest_displayed_line));
  }
  return item;
}

// Below the place on the screen, or above it where there is no room below: what is
// there stays in sight.
Gtk::Menu::SlotPositionCalc beside(const Gdk::Rectangle& place, Gtk::Menu& menu)
{
  return [place, &menu](int& x, int& y, bool& push_in) {
    Gtk::Requisition least;
    Gtk::Requisition natural;
    menu.get_preferred_size(least, natural);
    Gdk::Rectangle screen;
    const auto display = menu.get_display();
    display->get_monitor_at_point(place.get_x(), place.get_y())->get_workarea(screen);
    const int below = place.get_y() + place.get_height();
    const bool has_room = below + natural.height <= screen.get_y() + screen.get_height();
    x = place.get_x();
    y = has_room ? below : place.get_y() - natural.height;
    push_in = true;
  };
}

// Chooses the item whose label alone begins with the letter or digit that a key types.
bool choose_by_first_character(GdkEventKey* event, Gtk::Menu& menu)
{
  const gunichar character = typed_character(event);
  if (!character)
    return false;
  const std::string typed = folded_name(Glib::ustring(1, character));
  Gtk::MenuItem* chosen = nullptr;
  for (auto* child : menu.get_children()) {
    auto* const item = dynamic_cast<Gtk::MenuItem*>(child);
    if (!item || folded_name(item->get_label()).rfind(typed, 0) != 0)
      continue;
    if (chosen)
      return false; // several labels begin with it
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

void SurveyWindow::popup_abundance_menu(int species_id, int button, guint32 time,
                                        const Gdk::Rectangle& row)
{
  abundance_target = species_id;
  if (auto* menu = abundance_menu_for(species_id)) {
    if (row.has_zero_area())
      menu->popup(static_cast<guint>(button), time);
    else
      menu->popup(beside(row, *menu), static_cast<guint>(button), time);
    return;
  }
  error("The number seen of species %04d cannot be chosen, because the data files lack the "
        "choices for it. Nothing has been changed.",
        species_id);
}

// Null if the reference data have no list for the species.
Gtk::Menu* SurveyWindow::abundance_menu_for(int species_id) const
{
  const auto* species = survey.region_fish ? survey.region_fish->find_species(species_id) : nullptr;
  if (!species)
    return nullptr;
  if (species->invertebratetype != presence_only)
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

// A species that a view lists twice keeps its old label in the second row until
// the store is built anew: the walk ends at the first.
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
