#include "core/link-opener.h"

#include "core/c-resource.h"
#include "core/markup.h"
#include "core/message-dialog.h"
#include "core/report.h"
#include "core/text.h"
#include "core/url-handlers.h"

#include <glibmm/convert.h>
#include <gtk/gtk.h>
#include <gtkmm/clipboard.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

struct ErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};

// Returns the address as people write it: a mail address without its scheme.
std::string readable_address(const std::string& uri)
{
  const std::string mail_scheme = "mailto:";
  return begins_with(uri, mail_scheme) ? uri.substr(mail_scheme.size()) : uri;
}

void show_address(const std::string& uri)
{
  constexpr int copy = 1;
  const std::string address = readable_address(uri);
  Message message;
  message.title = "Link Not Opened";
  message.text = "No program could be found that opens this address:\n\n<b>" +
                 escape_markup(address) +
                 "</b>\n\nClick Copy Address to paste it into another program.";
  message.type = Gtk::MESSAGE_WARNING;
  message.standard_buttons = Gtk::BUTTONS_CLOSE;
  message.buttons = {{"Copy _Address", copy}};
  if (run_message(message) != copy)
    return;
  const auto clipboard = Gtk::Clipboard::get();
  clipboard->set_text(address);
  clipboard->store(); // a clipboard manager, if one runs, keeps it after the program ends
}

// Starts the program that opens the address. Returns whether it could be started.
bool start_handler(const char* uri)
{
  const GMemory<char> scheme(g_uri_parse_scheme(uri));
  if (scheme && has_endless_handler(scheme.get()))
    return false;
  // With a window, the toolkit would start the program later and not report a failure.
  GError* failure = nullptr;
  gtk_show_uri_on_window(nullptr, uri, gtk_get_current_event_time(), &failure);
  const std::unique_ptr<GError, ErrorFree> owner(failure);
  if (failure && debug_level >= 0)
    printf("Failed to open %s: %s\n", uri, failure->message);
  return !failure;
}

// The "activate-link" handler of all labels and of the About dialog.
gboolean on_activate_link(GtkWidget*, const char* uri)
{
  if (!start_handler(uri))
    show_address(uri);
  return TRUE;
}

} // namespace

void install_link_opener()
{
  static bool installed = false;
  if (installed)
    return;
  installed = true;
  for (const GType type : {GTK_TYPE_LABEL, GTK_TYPE_ABOUT_DIALOG}) {
    g_type_class_unref(g_type_class_ref(type)); // creates the class and its signal
    g_signal_override_class_handler("activate-link", type, G_CALLBACK(on_activate_link));
  }
}
