#include "ui/name-finder.h"

#include "ui/name-match.h"
#include "ui/species-markup.h"
#include "ui/tree-rows.h"

#include <algorithm>
#include <array>

namespace {

bool is_search_shortcut(const GdkEventKey* event)
{
  return (event->state & gtk_accelerator_get_default_mod_mask()) == GDK_CONTROL_MASK &&
         gdk_keyval_to_lower(event->keyval) == GDK_KEY_f;
}

} // namespace

void NameFinder::attach(Gtk::TreeView& the_tree, const OpenRow& open_found_row)
{
  tree = &the_tree;
  open_row = open_found_row;
  tree->set_enable_search(false);
  tree->signal_key_press_event().connect(sigc::mem_fun(*this, &NameFinder::on_tree_key), false);
  tree->signal_unmap().connect(sigc::mem_fun(*this, &NameFinder::hide));
}

void NameFinder::set_names(const std::vector<const NameColumn*>& columns)
{
  names = columns;
}

void NameFinder::make_field()
{
  entry = Gtk::make_managed<Gtk::SearchEntry>();
  entry->get_accessible()->set_name("Find a name");
  entry->show();
  entry->signal_changed().connect([this] { go_to_match(0); });
  entry->signal_activate().connect(sigc::mem_fun(*this, &NameFinder::on_activate));
  entry->signal_key_press_event().connect(sigc::mem_fun(*this, &NameFinder::on_entry_key), false);
  entry->signal_focus_out_event().connect([this](GdkEventFocus*) {
    if (!entry->is_focus()) // otherwise the window lost the focus, for example to a menu
      hide();
    return false;
  });
  bubble = std::make_unique<Gtk::Popover>(*tree);
  bubble->set_modal(false); // the field grabs the focus itself
  bubble->set_position(Gtk::POS_TOP);
  bubble->set_transitions_enabled(false);
  bubble->add(*entry);
}

void NameFinder::hide()
{
  if (bubble)
    bubble->hide();
}

bool NameFinder::on_tree_key(GdkEventKey* event)
{
  const gunichar character = typed_character(event);
  if (!character && !is_search_shortcut(event))
    return false;
  start(character ? Glib::ustring(1, character) : Glib::ustring());
  return true;
}

bool NameFinder::on_entry_key(GdkEventKey* event)
{
  switch (event->keyval) {
  case GDK_KEY_Down:
  case GDK_KEY_KP_Down:
    go_to_match(1);
    return true;
  case GDK_KEY_Up:
  case GDK_KEY_KP_Up:
    go_to_match(-1);
    return true;
  case GDK_KEY_Escape:
    stop();
    return true;
  case GDK_KEY_Tab:
  case GDK_KEY_ISO_Left_Tab:
    stop(); // the tree then handles the key
    return false;
  default:
    return false;
  }
}

void NameFinder::on_activate()
{
  const Gtk::TreePath path = found;
  stop();
  if (!path.empty())
    open_row(path, gtk_get_current_event_time());
}

void NameFinder::start(const Glib::ustring& text)
{
  if (!entry)
    make_field();
  const int right = tree->get_allocated_width() - 1;
  const int bottom = tree->get_allocated_height() - 1;
  bubble->set_pointing_to(Gdk::Rectangle(right, bottom, 1, 1));
  own_family = Gtk::TreePath();
  entry->set_text("");
  bubble->show();
  entry->grab_focus();
  entry->set_text(text);
  entry->set_position(-1);
}

// Returns the focus to the tree unless another widget has it.
void NameFinder::stop()
{
  if (entry->is_focus())
    tree->grab_focus();
  hide();
}

void NameFinder::go_to_match(int step)
{
  found = Gtk::TreePath();
  const Glib::ustring text = entry->get_text();
  const auto all = matches(folded_name(text));
  const int count = static_cast<int>(all.size());
  current = step == 0 || count == 0 ? 0 : (current + step + count) % count;
  if (count != 0)
    show_row(all[static_cast<std::size_t>(current)]);
  show_whether_found(count != 0 || text.empty());
}

// Returns the best matches first. Among matches of the same quality, species come before
// families, because some families have the name of their species. Otherwise the order is that of
// the tree.
std::vector<Gtk::TreePath> NameFinder::matches(const std::string& text) const
{
  std::array<std::vector<Gtk::TreePath>, MATCHES_NOT + 1> by_quality;
  if (const auto model = tree->get_model(); model && !text.empty()) {
    model->foreach ([&](const Gtk::TreePath& path, const Gtk::TreeIter& row) {
      if (const int rank = quality(row, text); rank != MATCHES_NOT)
        by_quality[static_cast<std::size_t>(rank)].push_back(path);
      return false;
    });
  }
  for (auto& paths : by_quality)
    std::stable_partition(paths.begin(), paths.end(),
                          [](const Gtk::TreePath& path) { return path.size() > 1; });
  auto& best = by_quality[MATCHES_START];
  const auto& others = by_quality[MATCHES_WORD];
  best.insert(best.end(), others.begin(), others.end());
  return best;
}

int NameFinder::quality(const Gtk::TreeIter& row, const std::string& text) const
{
  int best = MATCHES_NOT;
  for (const auto* column : names) {
    const Glib::ustring words = words_of_markup(row->get_value(*column));
    best = std::min<int>(best, match_name(folded_name(words), text));
  }
  return best;
}

// Expands a family that is found, so that its species are visible. Of the families that a
// search expands, only the last one stays expanded.
void NameFinder::show_row(const Gtk::TreePath& path)
{
  found = path;
  Gtk::TreePath family = path;
  if (family.size() > 1)
    family.up();
  Gtk::TreePath left_family;
  if (own_family.empty() || family != own_family) {
    left_family = own_family;
    own_family = tree->row_expanded(family) ? Gtk::TreePath() : family;
  }
  tree->expand_row(family, false);
  tree->set_cursor(path);
  if (!left_family.empty())
    tree->collapse_row(left_family);
  tree->scroll_to_row(path, 0.5);
}

void NameFinder::show_whether_found(bool is_found)
{
  const auto style = entry->get_style_context();
  if (is_found)
    style->remove_class("error");
  else
    style->add_class("error");
  entry->get_accessible()->set_description(is_found ? "" : "No name begins with this");
}
