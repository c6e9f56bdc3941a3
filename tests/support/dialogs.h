#pragma once

#include <glibmm/ustring.h>

#include <functional>
#include <vector>

namespace Gtk {
class Dialog;
}

// A dialog as the user met it.
struct SeenDialog {
  Glib::ustring title;
  Glib::ustring text;                 // as shown: markup already parsed
  Glib::ustring markup;               // the same of a message dialog, not parsed
  std::vector<Glib::ustring> buttons; // labels or stock ids, in order
  std::vector<int> responses;         // of the buttons
  int message_type = -1;              // Gtk::MessageType of a message dialog
  bool has_icon = false;
};

SeenDialog describe(Gtk::Dialog& dialog);

// Runs `action` and answers each dialog that it opens with the next of
// `responses`. Fails the test if a dialog comes that has no answer (it is then
// closed) or if one that was expected does not. Returns what was seen.
std::vector<SeenDialog> answer_dialogs(const std::vector<int>& responses,
                                       const std::function<void()>& action);

// The same with one response for however many dialogs there are.
std::vector<SeenDialog> answer_all_dialogs(int response, const std::function<void()>& action);

// The same for exactly one dialog.
SeenDialog answer_next_dialog(int response, const std::function<void()>& action);

// Fails the test if `action` opens a dialog.
void expect_no_dialog(const std::function<void()>& action);

// Runs `action` and hands the next dialog that it opens to `meet`, which has to
// end it (by a response or by pressing one of its buttons).
void meet_next_dialog(const std::function<void(Gtk::Dialog&)>& meet,
                      const std::function<void()>& action);

// The same for so many dialogs, one after the other.
void meet_dialogs(int expected, const std::function<void(Gtk::Dialog&)>& meet,
                  const std::function<void()>& action);
