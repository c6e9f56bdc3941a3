#include "ui/displayed-cell.h"

#include "core/c-resource.h"
#include "core/displayed-text.h"

#include <cstring>
#include <memory>

namespace {

struct AttributesUnref {
  void operator()(PangoAttrList* list) const { pango_attr_list_unref(list); }
};
using Attributes = std::unique_ptr<PangoAttrList, AttributesUnref>;

gboolean sets_size(PangoAttribute* attribute, gpointer)
{
  switch (attribute->klass->type) {
  case PANGO_ATTR_LANGUAGE:
  case PANGO_ATTR_FAMILY:
  case PANGO_ATTR_STYLE:
  case PANGO_ATTR_WEIGHT:
  case PANGO_ATTR_VARIANT:
  case PANGO_ATTR_FOREGROUND:
  case PANGO_ATTR_BACKGROUND:
  case PANGO_ATTR_FOREGROUND_ALPHA:
  case PANGO_ATTR_BACKGROUND_ALPHA:
  case PANGO_ATTR_UNDERLINE:
  case PANGO_ATTR_UNDERLINE_COLOR:
  case PANGO_ATTR_STRIKETHROUGH:
  case PANGO_ATTR_STRIKETHROUGH_COLOR:
    return FALSE;
  default:
    return TRUE;
  }
}

void limit_content(GtkCellRenderer* cell)
{
  char* read_text = nullptr;
  PangoAttrList* read_attributes = nullptr;
  g_object_get(cell, "text", &read_text, "attributes", &read_attributes, nullptr);
  const GMemory<char> text(read_text);
  const Attributes attributes(read_attributes);
  const Attributes sizes(attributes ? pango_attr_list_filter(attributes.get(), sets_size, nullptr)
                                    : nullptr);
  const bool is_long = text && std::strlen(text.get()) > longest_displayed_text;
  if (is_long) // setting the text also removes the attributes
    g_object_set(cell, "text", displayed_text(text.get()).c_str(), nullptr);
  if (sizes || is_long)
    g_object_set(cell, "attributes", attributes.get(), nullptr);
}

// A callback in C, because it runs for each row that is measured or drawn. The toolkit has
// set the row's text and attributes in the cell.
void limit_cell(GtkTreeViewColumn*, GtkCellRenderer* cell, GtkTreeModel*, GtkTreeIter*, gpointer)
{
  limit_content(cell);
}

} // namespace

void limit_displayed(Gtk::TreeViewColumn& column, Gtk::CellRendererText& cell)
{
  cell.property_single_paragraph_mode() = true;
  gtk_tree_view_column_set_cell_data_func(column.gobj(), GTK_CELL_RENDERER(cell.gobj()), limit_cell,
                                          nullptr, nullptr);
}

void limit_displayed(Gtk::CellRendererText& cell)
{
  limit_content(GTK_CELL_RENDERER(cell.gobj()));
}
