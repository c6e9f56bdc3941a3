#include "ui/species-window.h"

#include "support/main-loop.h"
#include "ui/listed-panel.h"
#include "ui/survey-window.h"

#include <gtkmm/menuitem.h>
#include <pango/pango.h>

namespace {

std::string without_markup(const Glib::ustring& markup)
{
  char* words = nullptr;
  if (!pango_parse_markup(markup.c_str(), -1, 0, nullptr, &words, nullptr, nullptr)) {
    ADD_FAILURE() << "invalid markup: " << markup;
    return markup;
  }
  std::string text = words;
  g_free(words);
  return text;
}

} // namespace

void SpeciesWindowTest::open_survey(const Glib::ustring& subregion,
                                    const Glib::ustring& survey_type)
{
  open_window();
  choose_subregion(subregion);
  choose_survey_type(survey_type);
  go_to_page(window->listed_panel->page);
}

std::string SpeciesWindowTest::rows(const Glib::RefPtr<Gtk::TreeModel>& model) const
{
  const auto& columns = window->species_columns;
  std::string text;
  model->foreach_iter([&](const Gtk::TreeIter& row) {
    const int id = row->get_value(columns.col_id);
    const std::string name = without_markup(row->get_value(columns.col_common));
    const std::string in_view = row->get_value(columns.col_in_view) ? "*" : "";
    if (id < 0)
      text += name + ":" + in_view + "\n";
    else
      text += "  " + std::to_string(id) + " " + name + " = " +
              row->get_value(columns.col_abundance_label) + in_view + "\n";
    return false;
  });
  return text;
}

std::string SpeciesWindowTest::listed_rows() const
{
  return rows(window->listed_model);
}

std::string SpeciesWindowTest::unlisted_rows() const
{
  return rows(window->unlisted_model);
}

std::string SpeciesWindowTest::unfolded() const
{
  std::string text;
  for (const auto& row : window->listed_model->children())
    text += (text.empty() ? "" : " ") +
            std::to_string(tree().row_expanded(window->listed_model->get_path(row)));
  return text;
}

std::string SpeciesWindowTest::titles_of(Gtk::TreeView& any_tree)
{
  std::string text;
  for (auto* column : any_tree.get_columns())
    text += (text.empty() ? "" : "|") + column->get_title();
  return text;
}

Gtk::TreePath SpeciesWindowTest::path_of(int id) const
{
  Gtk::TreePath found;
  window->listed_model->foreach_iter([&](const Gtk::TreeIter& row) {
    if (row->get_value(window->species_columns.col_id) != id)
      return false;
    found = window->listed_model->get_path(row);
    return true;
  });
  EXPECT_FALSE(found.empty()) << id;
  return found;
}

void SpeciesWindowTest::choose_item(Gtk::Menu& menu, const Glib::ustring& label)
{
  for (auto* child : menu.get_children()) {
    auto* item = dynamic_cast<Gtk::MenuItem*>(child);
    if (!item || item->get_label() != label)
      continue;
    menu.activate_item(*item, true);
    settle();
    return;
  }
  ADD_FAILURE() << "no item " << label << " in " << item_labels(menu);
}

std::string SpeciesWindowTest::item_labels(Gtk::Menu& menu)
{
  std::string labels;
  for (auto* child : menu.get_children())
    if (auto* item = dynamic_cast<Gtk::MenuItem*>(child))
      labels += (labels.empty() ? "" : "|") + item->get_label();
  return labels;
}

void SpeciesWindowTest::mark(int id, int abundance) const
{
  window->abundance_target = id;
  window->on_abundance_menu_item(abundance);
}

Gtk::Menu* SpeciesWindowTest::close_open_menu() const
{
  settle();
  Gtk::Menu* open = nullptr;
  for (auto* menu : window->abundance_menus) {
    if (!menu || !menu->get_visible() || !menu->get_mapped())
      continue;
    EXPECT_EQ(nullptr, open) << "two menus";
    open = menu;
    menu->popdown();
  }
  settle();
  if (open)
    wait_until("the keyboard is back from the menu",
               [this] { return window->has_toplevel_focus(); });
  return open;
}

GdkEventButton SpeciesWindowTest::press_in(Gtk::TreeView& any_tree, const Gtk::TreePath& path,
                                           unsigned int button)
{
  Gdk::Rectangle area;
  auto* name_column = any_tree.get_column(1);
  any_tree.scroll_to_row(path);
  settle();
  any_tree.get_cell_area(path, *name_column, area);
  EXPECT_GT(area.get_height(), 0) << path.to_string();

  GdkEventButton event{};
  event.type = GDK_BUTTON_PRESS;
  event.window = any_tree.get_bin_window()->gobj();
  event.time = GDK_CURRENT_TIME;
  event.x = area.get_x() + 3.5;
  event.y = area.get_y() + area.get_height() / 2.0;
  event.button = button;
  return event;
}

GdkEventKey SpeciesWindowTest::key_press(unsigned int keyval)
{
  GdkEventKey event{};
  event.type = GDK_KEY_PRESS;
  event.time = GDK_CURRENT_TIME;
  event.keyval = keyval;
  return event;
}

void SpeciesWindowTest::put_cursor(const Gtk::TreePath& path) const
{
  if (path.size() > 1)
    tree().expand_to_path(path);
  tree().grab_focus();
  tree().set_cursor(path);
  settle();
}

Gtk::TreeView& SpeciesWindowTest::tree() const
{
  return *window->listed_panel->species_tree;
}
