// Tests how species trees explain shaded rows in tooltips and to screen readers.

#include "support/keys.h"
#include "support/main-loop.h"
#include "ui/confirm-panel.h"
#include "ui/listed-panel.h"
#include "ui/species-window.h"
#include "ui/survey-window.h"
#include "ui/unlisted-panel.h"

#include <atk/atk.h>
#include <gtkmm/tooltip.h>

namespace {

const std::string very_rare = "This species is very rare, often misidentified, and/or difficult to "
                              "identify. Please select with care.";

// A window with the shipped data, in which a search has found all species of a region.
class RarityNotes : public SpeciesWindowTest
{
public:
  RarityNotes()
  {
    application_dir.use_shipped_data();
    open_survey("Florida and Gulf of Mexico", "Florida: species and abundance");
    go_to_page(window->unlisted_panel->page);
    window->unlisted_panel->species_search->set_text("__all__");
    let_draw(*window);
  }

  Gtk::TreeView& found() const { return *window->unlisted_panel->found_species_tree; }

  // Returns the first species whose name is shaded, or not shaded.
  Gtk::TreePath first_row(bool is_shaded) const
  {
    Gtk::TreePath path;
    const auto model = found().get_model();
    model->foreach_iter([&](const Gtk::TreeIter& row) {
      const auto name = row->get_value(window->species_columns.col_common);
      const bool shaded = name.find("background") != Glib::ustring::npos;
      if (row->get_value(window->species_columns.col_id) < 0 || shaded != is_shaded)
        return false;
      path = model->get_path(row);
      return true;
    });
    EXPECT_FALSE(path.empty());
    return path;
  }

  // Returns the texts of all tooltips, or only of the visible ones.
  static std::string words_of_tooltips(bool only_visible = false)
  {
    std::string words;
    for (auto* const toplevel : Gtk::Window::list_toplevels()) {
      if (toplevel->get_type_hint() == Gdk::WINDOW_TYPE_HINT_TOOLTIP &&
          (toplevel->get_mapped() || !only_visible))
        add_words(*toplevel, words);
    }
    return words;
  }
  static void add_words(Gtk::Widget& widget, std::string& words)
  {
    if (const auto* const label = dynamic_cast<Gtk::Label*>(&widget))
      words += label->get_text();
    if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
      container->foreach ([&words](Gtk::Widget& child) { add_words(child, words); });
  }

  // Returns the text of the tooltip for the mouse at the row; empty if there is none.
  std::string tooltip_at(const Gtk::TreePath& path) const
  {
    found().scroll_to_row(path);
    let_draw(*window);
    Gdk::Rectangle cell;
    found().get_cell_area(path, *found().get_column(1), cell);
    int x = 0;
    int y = 0;
    found().convert_bin_window_to_widget_coords(cell.get_x() + 3, cell.get_y() + 3, x, y);
    auto* const tooltip = GTK_TOOLTIP(g_object_new(GTK_TYPE_TOOLTIP, nullptr));
    gboolean is_shown = FALSE;
    g_signal_emit_by_name(found().gobj(), "query-tooltip", x, y, FALSE, tooltip, &is_shown);
    const std::string text = words_of_tooltips();
    g_object_unref(tooltip);
    return is_shown ? text : "";
  }

  // Returns the text of the tooltip that Ctrl+F1 shows at the row; empty if there is none. Hides
  // the tooltip again.
  std::string tooltip_by_keyboard_at(const Gtk::TreePath& path)
  {
    found().grab_focus();
    found().set_cursor(path);
    let_draw(*window);
    press_key(*window, GDK_KEY_F1, GDK_CONTROL_MASK);
    std::string text = words_of_tooltips(true);
    press_key(*window, GDK_KEY_F1, GDK_CONTROL_MASK);
    return text;
  }

  // Returns the description of the cell that is announced when the cursor goes to the row.
  std::string description_at(const Gtk::TreePath& path) const
  {
    std::string description = "(nothing was announced)";
    AtkObject* const accessible = gtk_widget_get_accessible(GTK_WIDGET(found().gobj()));
    const auto note = +[](AtkObject*, gpointer cell, gpointer words) {
      const char* const text = atk_object_get_description(ATK_OBJECT(cell));
      *static_cast<std::string*>(words) = text ? text : "";
    };
    const gulong handler = g_signal_connect_after(accessible, "active-descendant-changed",
                                                  G_CALLBACK(note), &description);
    found().grab_focus();
    found().set_cursor(path);
    settle();
    g_signal_handler_disconnect(accessible, handler);
    return description;
  }
};

} // namespace

TEST_F(RarityNotes, AreOnlyInTheTooltipsOfShadedRows)
{
  EXPECT_EQ(very_rare, tooltip_at(first_row(true)));
  EXPECT_EQ("", tooltip_at(first_row(false)));
  EXPECT_EQ("", tooltip_at(Gtk::TreePath("0"))) << "a family";
}

TEST_F(RarityNotes, AppearByKeyboardOnShadedRowsOnly)
{
  EXPECT_EQ(very_rare, tooltip_by_keyboard_at(first_row(true)));
  EXPECT_EQ("", tooltip_by_keyboard_at(first_row(false)));
  EXPECT_EQ("", tooltip_by_keyboard_at(Gtk::TreePath("0"))) << "a family";
}

TEST_F(RarityNotes, AreReadByScreenReadersWithTheCellUnderTheCursor)
{
  EXPECT_EQ(very_rare, description_at(first_row(true)));
  EXPECT_EQ("", description_at(first_row(false)));
  EXPECT_EQ("", description_at(Gtk::TreePath("0"))) << "a family";
  EXPECT_EQ(very_rare, description_at(first_row(true))) << "again";
}

TEST_F(RarityNotes, AreInEveryTreeOfSpecies)
{
  for (auto* const view :
       {window->listed_panel->species_tree, window->unlisted_panel->found_species_tree,
        window->unlisted_panel->selected_species_tree, window->confirm_panel->conf_listed_tree,
        window->confirm_panel->conf_unlisted_tree})
    EXPECT_TRUE(view->get_has_tooltip());
}
