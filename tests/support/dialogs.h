#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <vector>

namespace Gtk {
class Dialog;
}

// The contents of a dialog that the user saw.
struct SeenDialog {
  Glib::ustring title;
  Glib::ustring text;                 // the visible text, without markup
  Glib::ustring markup;               // the markup of a message dialog's text
  std::vector<Glib::ustring> buttons; // labels or stock ids, in order
  std::vector<int> responses;         // of the buttons
  int message_type = -1;              // Gtk::MessageType of a message dialog
  bool has_icon = false;
};

// Returns the current contents of a dialog.
SeenDialog describe(Gtk::Dialog& dialog);

// Runs `action` and answers each dialog that it opens with the next of `responses`. Fails the
// test if there are more dialogs than responses (and closes them) or fewer. Returns the
// dialogs.
std::vector<SeenDialog> answer_dialogs(const std::vector<int>& responses,
                                       const std::function<void()>& action);

// Like answer_dialogs(), with the same response for any number of dialogs.
std::vector<SeenDialog> answer_all_dialogs(int response, const std::function<void()>& action);

// Like answer_dialogs(), for exactly one dialog.
SeenDialog answer_next_dialog(int response, const std::function<void()>& action);

// Fails the test if `action` opens a dialog.
void expect_no_dialog(const std::function<void()>& action);

// Runs `action` and calls `meet` with the next dialog that it opens. `meet` must end the dialog,
// by a response or by a click on one of its buttons.
void meet_next_dialog(const std::function<void(Gtk::Dialog&)>& meet,
                      const std::function<void()>& action);

// Like meet_next_dialog(), for `expected` dialogs, one after the other.
void meet_dialogs(int expected, const std::function<void(Gtk::Dialog&)>& meet,
                  const std::function<void()>& action);
