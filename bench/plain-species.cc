#include "plain-species.h"

#include <algorithm>
#include <tuple>

namespace {

// The columns of a store of species.
enum { ID, COMMON, SCIENTIFIC, BOTH, SPANISH, ABUNDANCE, LABEL, IN_VIEW };

std::string text_of(GtkTreeModel* model, GtkTreeIter* row, int column)
{
  char* text = nullptr;
  gtk_tree_model_get(model, row, column, &text, -1);
  std::string copy = text ? text : "";
  g_free(text);
  return copy;
}

gboolean add_row(GtkTreeModel* model, GtkTreePath*, GtkTreeIter* row, gpointer rows)
{
  int id = 0;
  int abundance = 0;
  gboolean in_view = FALSE;
  gtk_tree_model_get(model, row, ID, &id, ABUNDANCE, &abundance, IN_VIEW, &in_view, -1);
  static_cast<std::vector<PlainRow>*>(rows)->push_back(
      {id, text_of(model, row, COMMON), text_of(model, row, SCIENTIFIC), text_of(model, row, BOTH),
       text_of(model, row, SPANISH), abundance, text_of(model, row, LABEL), in_view != FALSE});
  return FALSE;
}

gboolean is_found(GtkTreeModel* model, GtkTreeIter* row, gpointer data)
{
  const auto& matches = *static_cast<const PlainSearch::Matches*>(data);
  int id = 0;
  gtk_tree_model_get(model, row, ID, &id, -1);
  if (id >= 0)
    return matches.species[static_cast<std::size_t>(id)];
  GtkTreePath* const path = gtk_tree_model_get_path(model, row);
  const int family = gtk_tree_path_get_indices(path)[0];
  gtk_tree_path_free(path);
  return matches.families[static_cast<std::size_t>(family)];
}

// Appends a column with a fixed size, so that the toolkit need not measure it.
void append_column(GtkTreeView* tree, const char* title, int width, int text_column)
{
  GtkCellRenderer* const cell = gtk_cell_renderer_text_new();
  GtkTreeViewColumn* const column =
      gtk_tree_view_column_new_with_attributes(title, cell, "text", text_column, nullptr);
  gtk_tree_view_column_set_sizing(column, GTK_TREE_VIEW_COLUMN_FIXED);
  gtk_tree_view_column_set_fixed_width(column, width);
  gtk_tree_view_append_column(tree, column);
}

} // namespace

bool PlainRow::operator==(const PlainRow& other) const
{
  const auto all = [](const PlainRow& row) {
    return std::tie(row.id, row.common, row.scientific, row.both, row.spanish, row.abundance,
                    row.label, row.in_view);
  };
  return all(*this) == all(other);
}

std::vector<PlainRow> rows_of(GtkTreeModel* model)
{
  std::vector<PlainRow> rows;
  gtk_tree_model_foreach(model, add_row, &rows);
  return rows;
}

void fill_plainly(GtkTreeStore* store, const std::vector<PlainRow>& rows)
{
  gtk_tree_store_clear(store);
  GtkTreeIter family;
  GtkTreeIter species;
  for (const auto& row : rows) {
    gtk_tree_store_insert_with_values(
        store, row.id < 0 ? &family : &species, row.id < 0 ? nullptr : &family, -1, ID, row.id,
        COMMON, row.common.c_str(), SCIENTIFIC, row.scientific.c_str(), BOTH, row.both.c_str(),
        SPANISH, row.spanish.c_str(), ABUNDANCE, row.abundance, LABEL, row.label.c_str(), IN_VIEW,
        static_cast<gboolean>(row.in_view), -1);
  }
}

PlainSearch::PlainSearch(GtkTreeModel* the_store)
    : store(the_store),
      window(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      entry(gtk_entry_new()),
      tree(GTK_TREE_VIEW(gtk_tree_view_new()))
{
  constexpr int id_width = 90;
  constexpr int name_width = 500;
  constexpr int label_width = 200;
  append_column(tree, "ID", id_width, ID);
  append_column(tree, "Common + Scientific Names", name_width, BOTH);
  append_column(tree, "Number seen", label_width, LABEL);
  gtk_tree_view_set_fixed_height_mode(tree, TRUE);
  gtk_window_set_default_size(GTK_WINDOW(window), 900, 600);
  GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  GtkWidget* const scrolled = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_container_add(GTK_CONTAINER(scrolled), GTK_WIDGET(tree));
  gtk_box_pack_start(GTK_BOX(box), entry, FALSE, FALSE, 0);
  gtk_box_pack_start(GTK_BOX(box), scrolled, TRUE, TRUE, 0);
  gtk_container_add(GTK_CONTAINER(window), box);
  const auto count = static_cast<std::size_t>(gtk_tree_model_iter_n_children(the_store, nullptr));
  matches.families.resize(count);
  create_filter();
  gtk_widget_show_all(window);
}

PlainSearch::~PlainSearch()
{
  gtk_widget_destroy(window);
  g_object_unref(filter);
}

void PlainSearch::create_filter()
{
  gtk_tree_view_set_model(tree, nullptr);
  g_clear_object(&filter);
  filter = gtk_tree_model_filter_new(store, nullptr);
  gtk_tree_model_filter_set_visible_func(GTK_TREE_MODEL_FILTER(filter), is_found, &matches,
                                         nullptr);
  gtk_tree_view_set_model(tree, filter);
}

PlainSearch::Matches PlainSearch::matches_of(const std::vector<PlainRow>& rows,
                                             const std::string& text)
{
  Matches found;
  found.text = text;
  for (const auto& row : rows) {
    const auto id = static_cast<std::size_t>(row.id);
    if (row.id < 0) {
      found.families.push_back(0);
      continue;
    }
    if (found.species.size() <= id)
      found.species.resize(id + 1);
    found.species[id] = row.both.find(text) != std::string::npos;
    found.families.back() |= found.species[id];
  }
  return found;
}

void PlainSearch::refilter(const Matches& found)
{
  gtk_entry_set_text(GTK_ENTRY(entry), found.text.c_str());
  matches = found;
  gtk_tree_model_filter_refilter(GTK_TREE_MODEL_FILTER(filter));
  gtk_tree_view_expand_all(tree);
}

void PlainSearch::replace_filter(const Matches& found)
{
  gtk_entry_set_text(GTK_ENTRY(entry), found.text.c_str());
  matches = found;
  create_filter();
  gtk_tree_view_expand_all(tree);
}

int PlainSearch::species_shown() const
{
  const auto rows = rows_of(filter);
  return static_cast<int>(
      std::count_if(rows.begin(), rows.end(), [](const PlainRow& row) { return row.id >= 0; }));
}
