#include "ui/tree-rows.h"

#include "core/report.h"

#include <gtkmm/treeview.h>

#include <cstdio>
#include <memory>

namespace {

struct EventFree {
  void operator()(GdkEvent* event) const { gdk_event_free(event); }
};

} // namespace

Gtk::TreePath clicked_row_path(Gtk::TreeView& tree, const GdkEventButton* event,
                               const char* tree_name, int cursor_column)
{
  if (event->type != GDK_BUTTON_PRESS || (event->button != 1 && event->button != 3))
    return {};
  GdkWindow* const rows = gtk_tree_view_get_bin_window(tree.gobj());
  if (event->window != rows) {
    printf("hmm, %s click in some other window? %p vs. %p\n", tree_name,
           static_cast<void*>(event->window), static_cast<void*>(rows));
    return {};
  }
  tree.grab_focus();
  Gtk::TreePath path;
  auto* column = tree.get_column(cursor_column);
  if (!column ||
      !tree.get_path_at_pos(static_cast<int>(event->x), static_cast<int>(event->y), path))
    return {};
  tree.set_cursor(path, *column, false);
  if (debug_level >= 10)
    printf("got path: %s\n", path.to_string().c_str());
  return path;
}

Gtk::TreePath key_row_path(Gtk::TreeView& tree, const GdkEventKey* event)
{
  if (event->type == GDK_KEY_PRESS &&
      (event->keyval == GDK_KEY_Return || event->keyval == GDK_KEY_Right))
    return cursor_path(tree);
  if (debug_level >= 40)
    printf("ignoring key %d\n", static_cast<int>(event->keyval));
  return {};
}

Gtk::TreePath cursor_path(Gtk::TreeView& tree)
{
  Gtk::TreePath path;
  Gtk::TreeViewColumn* column = nullptr;
  tree.get_cursor(path, column);
  return path;
}

gunichar typed_character(const GdkEventKey* event)
{
  constexpr guint command_keys = GDK_CONTROL_MASK | GDK_MOD1_MASK | GDK_SUPER_MASK;
  const gunichar character = gdk_keyval_to_unicode(event->keyval);
  const bool is_command = (event->state & command_keys) != 0;
  return !is_command && g_unichar_isalnum(character) ? character : 0;
}

bool comes_from_keyboard()
{
  const std::unique_ptr<GdkEvent, EventFree> event(gtk_get_current_event());
  return event && (event->type == GDK_KEY_PRESS || event->type == GDK_KEY_RELEASE ||
                   event->type == GDK_FOCUS_CHANGE);
}

void toggle_row(Gtk::TreeView& tree, const Gtk::TreePath& path)
{
  if (tree.row_expanded(path))
    tree.collapse_row(path);
  else
    tree.expand_row(path, false);
}
