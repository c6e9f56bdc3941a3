#include "ui/species-tree.h"

#include "core/displayed-text.h"
#include "core/report.h"
#include "core/text.h"
#include "ui/displayed-cell.h"
#include "ui/species-columns.h"
#include "ui/species-markup.h"
#include "ui/style.h"
#include "ui/survey-window.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

const char* event_type_name(GdkEventType type)
{
  switch (type) {
  case GDK_BUTTON_PRESS:
    return "press";
  case GDK_2BUTTON_PRESS:
    return "double press";
  case GDK_3BUTTON_PRESS:
    return "triple press";
  case GDK_BUTTON_RELEASE:
    return "release";
  default:
    return "other";
  }
}

std::string source_name(GdkDevice* device)
{
  const GdkInputSource source = gdk_device_get_source(device);
  if (source == GDK_SOURCE_MOUSE)
    return "mouse";
  if (source == GDK_SOURCE_TOUCHSCREEN)
    return "touchscreen";
  return "src " + std::to_string(source);
}

struct NameColumn {
  Glib::ustring title;
  const Gtk::TreeModelColumn<Glib::ustring>& names;
};

NameColumn name_column(const SpeciesTreeColumns& columns, const NameDisplay& names)
{
  if (!names.common)
    return {"Scientific Name", columns.col_scientific};
  if (names.scientific)
    return {"Common + Scientific Names", columns.col_both};
  return {"Common Name", columns.col_common};
}

// Lets the column of names shrink, so that the last column, the abundance, stays visible.
void let_shrink(Gtk::TreeViewColumn& column, Gtk::CellRendererText& cell, int least_characters)
{
  cell.property_ellipsize() = Pango::ELLIPSIZE_END;
  cell.property_width_chars() = least_characters;
  column.set_expand();
  column.set_resizable();
  column.set_sizing(Gtk::TREE_VIEW_COLUMN_FIXED);
}

// The column shows plain text, so the tags of shaded names are visible. It is wide enough for
// the tags and a name.
void append_spanish_column(Gtk::TreeView& tree, const SpeciesTreeColumns& columns)
{
  auto* column = Gtk::make_managed<Gtk::TreeViewColumn>();
  auto* cell = Gtk::make_managed<Gtk::CellRendererText>();
  column->set_title("Spanish Name");
  column->pack_start(*cell);
  column->add_attribute(cell->property_text(), columns.col_spanish);
  let_shrink(*column, *cell, 44);
  limit_displayed(*column, *cell);
  tree.append_column(*column);
}

// Returns the minimum width of a column that shows `text` at the level `depth`. The toolkit
// cannot compute it for thousands of rows, because it only measures visible rows.
int width_for(Gtk::TreeView& tree, const Glib::ustring& text, int depth)
{
  constexpr int padding = 8; // in the cell and between columns
  int expander = 0;
  tree.get_style_property("expander-size", expander);
  int width = 0;
  int height = 0;
  tree.create_pango_layout(text)->get_pixel_size(width, height);
  return width + padding + depth * (expander + padding / 2);
}

void append_abundance_column(Gtk::TreeView& tree, const SpeciesTreeColumns& columns,
                             const Glib::ustring& title)
{
  auto* column = Gtk::make_managed<Gtk::TreeViewColumn>(title, columns.col_abundance_label);
  column->set_sizing(Gtk::TREE_VIEW_COLUMN_FIXED);
  int width = 0;
  if (columns.choices)
    for (const auto& choice : *columns.choices)
      width = std::max(width, width_for(tree, displayed_line(choice.label), 0));
  constexpr int widest = 400; // pixels; the names need room
  column->set_min_width(width > 0 ? std::min(width, widest) : -1);
  if (auto* const cell = dynamic_cast<Gtk::CellRendererText*>(column->get_first_cell())) {
    cell->property_ellipsize() = Pango::ELLIPSIZE_END;
    limit_displayed(*column, *cell);
  }
  tree.append_column(*column);
}

// Draws the names in colours that are readable in the theme. Replaces the markup that the
// column's attribute has set in the cell; the store keeps the colours of the data.
void draw_names_for_theme(SpeciesTreeParts& parts, const SpeciesTreeColumns& columns,
                          const Gtk::TreeModelColumn<Glib::ustring>& names)
{
  const auto draw = [&columns, &names](Gtk::CellRenderer* cell, const Gtk::TreeIter& row) {
    auto& name_cell = *static_cast<Gtk::CellRendererText*>(cell);
    const Glib::ustring stored = row->get_value(names);
    if (begins_with(stored, "<"))
      name_cell.property_markup() = drawn_markup(stored, has_dark_theme(*columns.window));
    limit_displayed(name_cell);
  };
  parts.name_column.set_cell_data_func(parts.name_cell, draw);
}

} // namespace

void trace_species_click(const GdkEventButton* event)
{
  if (debug_level < 10)
    return;
  GdkDevice* device = event->device;
  const bool has_axes = event->axes && device && gdk_device_get_n_axes(device) >= 2;
  printf("@%u: mw_species_tree button %d %s (type 0x%x), state 0x%x, (%g,%g) (%g,%g) (%g,%g) "
         "(%s: %s)\n",
         event->time, static_cast<int>(event->button), event_type_name(event->type),
         static_cast<unsigned int>(event->type), event->state, event->x, event->y,
         has_axes ? event->axes[0] : 0.0, has_axes ? event->axes[1] : 0.0, event->x_root,
         event->y_root, device ? source_name(device).c_str() : "no device",
         device ? gdk_device_get_name(device) : "");
}

Gtk::TreePath clicked_species_path(Gtk::TreeView& tree, const GdkEventButton* event,
                                   const char* tree_name)
{
  return clicked_row_path(tree, event, tree_name, 1);
}

bool trigger_species_line(SurveyWindow& window, Gtk::TreeView& tree,
                          const Glib::RefPtr<Gtk::TreeModel>& model, const Gtk::TreePath& path,
                          int button, guint32 time)
{
  if (path.empty())
    return false;
  const auto iter = model->get_iter(path);
  if (!iter)
    return false;

  const SpeciesTreeColumns& columns = window.species_columns;
  const int id = iter->get_value(columns.col_id);
  if (debug_level >= 30)
    printf("species selected: id %d: %s\n", id, iter->get_value(columns.col_common).c_str());
  if (id < 0) {
    if (button == 1)
      toggle_row(tree, path);
    return true;
  }
  if (window.survey.is_uploaded)
    return true;
  if (button == 0) // a key: the pointer may be anywhere
    window.popup_abundance_menu_beside(tree, path, id, time);
  else
    window.popup_abundance_menu(id, button, time);
  return true;
}

void render_id_cell(const SpeciesTreeColumns& columns, Gtk::CellRendererText& cell,
                    const Gtk::TreeIter& iter)
{
  static const Glib::ustring family_markup = "<span weight=\"bold\" fgcolor=\"blue\">Family</span>";
  if (!iter)
    return;
  const int id = iter->get_value(columns.col_id);
  cell.property_markup() =
      id < 0 ? drawn_markup(family_markup, has_dark_theme(*columns.window)) : species_id_markup(id);
}

void prepare_species_tree(Gtk::TreeView& tree, SpeciesTreeParts& parts,
                          const Gtk::TreeViewColumn::SlotCellData& render_id,
                          const NameFinder::OpenRow& open_found_row)
{
  parts.id_column.set_title("ID");
  parts.id_column.pack_start(parts.id_cell, true);
  parts.id_column.set_cell_data_func(parts.id_cell, render_id);
  parts.id_column.set_sizing(Gtk::TREE_VIEW_COLUMN_FIXED);
  parts.name_column.pack_start(parts.name_cell, true);
  let_shrink(parts.name_column, parts.name_cell, 24);
  limit_displayed(parts.name_column, parts.name_cell);
  parts.name_finder.attach(tree, open_found_row);
  // Otherwise the toolkit measures every row, which takes seconds for thousands of them.
  tree.set_fixed_height_mode();
}

void set_species_tree_columns(Gtk::TreeView& tree, SpeciesTreeParts& parts,
                              const SpeciesTreeColumns& columns, const NameDisplay& names,
                              const Glib::ustring& abundance_title)
{
  tree.remove_all_columns();
  parts.id_column.set_min_width(width_for(tree, species_id_markup(10'000), 2));
  tree.append_column(parts.id_column);

  const NameColumn shown = name_column(columns, names);
  parts.name_column.clear_attributes(parts.name_cell);
  parts.name_column.set_title(shown.title);
  parts.name_column.add_attribute(parts.name_cell.property_markup(), shown.names);
  draw_names_for_theme(parts, columns, shown.names);
  tree.append_column(parts.name_column);

  std::vector<const NameFinder::NameColumn*> searched{&shown.names};
  if (names.spanish) {
    append_spanish_column(tree, columns);
    searched.push_back(&columns.col_spanish);
  }
  parts.name_finder.set_names(searched);
  append_abundance_column(tree, columns, abundance_title);
}
