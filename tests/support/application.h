#pragma once

#include <glibmm/refptr.h>

namespace Gtk {
class Application;
}

// Returns the registered application of a window test's process.
Glib::RefPtr<Gtk::Application> test_application();
