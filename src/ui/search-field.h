#pragma once

#include <gtkmm/entry.h>

#include <functional>

// Prepares a field that searches while the user types in it. A button and Escape clear the
// field. Return and Down call `go_to_results`, even if there is no result.
void prepare_search_field(Gtk::Entry& field, const std::function<void()>& go_to_results);
