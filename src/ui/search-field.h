#pragma once

#include <gtkmm/entry.h>

#include <functional>

// What all fields have in common that search while somebody types in them: a button that
// clears them, Escape, which does so too, and Return and Down, which go to
// the first result if there is one.
void prepare_search_field(Gtk::Entry& field, const std::function<void()>& go_to_results);
